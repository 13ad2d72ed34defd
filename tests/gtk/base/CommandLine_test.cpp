#include "gtk/base/CommandLine.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace {

TEST(CommandLine, AnswersOptionsOnTheTerminal) {
  const CommandLine version = CommandLine::Read({"--version"});
  ASSERT_TRUE(version.answer);
  EXPECT_EQ(version.answer->status, 0);
  EXPECT_TRUE(version.answer->text.starts_with("Marlowick 0."));
  EXPECT_EQ(CommandLine::Read({"--help"}).answer->status, 0);
  const CommandLine unknown = CommandLine::Read({"--nonsense", "http://a.test/"});
  EXPECT_EQ(unknown.answer->status, 2);
  EXPECT_NE(unknown.answer->text.find("\"--nonsense\""), std::string::npos);
}

TEST(CommandLine, KnowsWhatTheDesktopAsksFor) {
  const CommandLine window = CommandLine::Read({"--new-window", "--", "--x"});
  EXPECT_TRUE(window.new_window);
  EXPECT_EQ(window.address, "--x");
  EXPECT_TRUE(CommandLine::Read({"--gapplication-service"}).service);
  EXPECT_EQ(CommandLine::Read({"http://a.test/", "--new-window"}).address, "http://a.test/ --new-window");
}

TEST(CommandLine, EverythingElseIsOneAddress) {
  EXPECT_EQ(CommandLine::Read({}).address, "");
  EXPECT_EQ(CommandLine::Read({"http://a.test/", "--help"}).address, "http://a.test/ --help");
  EXPECT_EQ(CommandLine::Read({"--", "--help"}).address, "--help");
  EXPECT_FALSE(CommandLine::Read({"--", "--help"}).answer);
  EXPECT_EQ(CommandLine::Read({"two", "words"}).address, "two words");
}

TEST(CommandLine, AFileIsTakenFromTheWorkingDirectory) {
  const auto before = std::filesystem::current_path();
  const auto folder = std::filesystem::path(testing::TempDir()) / "marlowick line";
  std::filesystem::create_directories(folder);
  std::filesystem::current_path(folder);
  std::ofstream("a page.html") << "x";
  const std::string address = CommandLine::Read({"a", "page.html"}).address;
  EXPECT_EQ(address, (folder / "a page.html").lexically_normal().string());
  EXPECT_EQ(CommandLine::Read({"nothing.html"}).address, "nothing.html");
  std::filesystem::current_path(before);
  std::filesystem::remove_all(folder);
}

TEST(CommandLine, IsDrivenByNothingBesides) {
  EXPECT_TRUE(CommandLine::Read({"--automation"}).automation);
  EXPECT_FALSE(CommandLine::Read({"--", "--automation"}).automation);
  for (const char* more : {"http://a.test/", "--", "--automation"})
    EXPECT_EQ(CommandLine::Read({"--automation", more}).answer.value().status, 2) << more;
}

}  // namespace
