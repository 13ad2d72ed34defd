#include "gtk/start/SandboxCheck.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace {

namespace files = std::filesystem;

// A stand-in for the sandbox's program that counts its calls.
class SandboxCheckTest : public testing::Test {
 protected:
  SandboxCheckTest() { files::create_directories(folder_); }
  ~SandboxCheckTest() override { files::remove_all(folder_); }

  void Become(const std::string& last_line) {
    std::ofstream(program_) << "#!/bin/sh\necho x >>" << Path("calls") << "\n" << last_line << "\n";
    ::chmod(program_.c_str(), 0755);
  }
  std::string WhyNot() { return SandboxCheck(folder_.string(), program_, "/bin/true").WhyNot(); }
  long Calls() {
    std::ifstream file(Path("calls"));
    return std::count(std::istreambuf_iterator<char>(file), {}, 'x');
  }
  std::string Path(const char* name) const { return (folder_ / name).string(); }

  const files::path folder_ =
      files::path(testing::TempDir()) / ("marlowick-sandbox-" + std::to_string(::getpid()));
  const std::string program_ = Path("program");
};

TEST_F(SandboxCheckTest, NobodyWaitsForOneThatHangs) {
  Become("exec sleep 1000");
  EXPECT_NE(SandboxCheck(folder_.string(), program_, "/bin/true", 300).WhyNot(), "");
  // It is no answer to be kept.
  Become("exit 0");
  EXPECT_EQ(WhyNot(), "");
}

TEST_F(SandboxCheckTest, AGoodAnswerIsKeptUntilSomethingChanges) {
  Become("exit 0");
  EXPECT_EQ(WhyNot(), "");
  EXPECT_EQ(WhyNot(), "");
  EXPECT_EQ(Calls(), 1);
  // Another program, such as an upgrade's.
  files::remove(program_);
  Become("echo 'No permissions' >&2; exit 1");
  EXPECT_EQ(WhyNot(), "No permissions");
  EXPECT_EQ(Calls(), 2);
  // A bad answer isn't: the user may have mended it.
  EXPECT_EQ(WhyNot(), "No permissions");
  EXPECT_EQ(Calls(), 3);
}

TEST_F(SandboxCheckTest, AnotherBootAsksAgain) {
  Become("exit 0");
  EXPECT_EQ(WhyNot(), "");
  std::ostringstream kept;
  kept << std::ifstream(Path("sandbox")).rdbuf();
  std::string other = kept.str();
  ASSERT_FALSE(other.empty());
  other[0] = other[0] == '0' ? '1' : '0';
  std::ofstream(Path("sandbox")) << other;
  EXPECT_EQ(WhyNot(), "");
  EXPECT_EQ(Calls(), 2);
}

TEST_F(SandboxCheckTest, NamesWhatIsMissing) {
  EXPECT_NE(WhyNot().find(program_), std::string::npos);
  Become("exit 0");
  const std::string why = SandboxCheck(folder_.string(), program_, Path("nothing")).WhyNot();
  EXPECT_NE(why.find(Path("nothing")), std::string::npos) << why;
  Become("kill -9 $$");
  EXPECT_NE(WhyNot().find(program_), std::string::npos);
}

}  // namespace
