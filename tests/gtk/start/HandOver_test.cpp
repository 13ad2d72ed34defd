#include "gtk/start/HandOver.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <thread>

#include "gtk/start/Door.h"
#include "platform/Failure.h"

namespace {

using std::chrono::milliseconds;
using Outcome = HandOver::Outcome;

// A folder whose name is longer than a socket's may be.
class Folder {
 public:
  Folder() { std::filesystem::create_directories(path); }
  ~Folder() { std::filesystem::remove_all(root_); }

 private:
  const std::filesystem::path root_ =
      std::filesystem::path(testing::TempDir()) / ("marlowick-start-" + std::to_string(::getpid()));

 public:
  const std::filesystem::path path = root_ / std::string(120, 'x') / "home";
};

const Request Wanted = {Request::What::PlainWindow, "http://a.test/\n\"x\"", "id_TIME77"};

TEST(Request, ComesBackAsItWas) {
  const std::optional<Request> back = Request::Unpack(Wanted.Packed());
  ASSERT_TRUE(back);
  EXPECT_EQ(back->what, Wanted.what);
  EXPECT_EQ(back->address, Wanted.address);
  EXPECT_EQ(back->startup_id, Wanted.startup_id);
  const std::string packed = Wanted.Packed();
  for (size_t length = 0; length < packed.size(); ++length)
    EXPECT_FALSE(Request::Unpack(packed.substr(0, length))) << length;
  EXPECT_FALSE(Request::Unpack(packed + "x"));
}

TEST(HandOver, OneHasTheFolderAndTakesWhatOthersBring) {
  const Folder folder;
  FolderLock lock(folder.path), other(folder.path);
  ASSERT_EQ(HandOver(lock, {}).Try(milliseconds(0)), Outcome::FolderIsOurs);
  HandOver further(other, Wanted);
  EXPECT_EQ(further.Try(milliseconds(0)), Outcome::NoAnswer);
  EXPECT_EQ(other.Owner(), ::getpid());

  Door door(lock);
  EXPECT_EQ(further.Try(milliseconds(30)), Outcome::NoAnswer) << "nobody opens yet";
  std::vector<std::string> came;
  door.Open([&came](const Request& request) {
    came.push_back(request.address);
    // A bad moment first.
    return came.size() == 1 ? Reception::Later : Reception::Taken;
  });
  Outcome outcome = Outcome::NoAnswer;
  std::atomic<bool> over = false;
  std::thread start([&] {
    outcome = further.Try(milliseconds(20000));
    over = true;
    g_main_context_wakeup(nullptr);
  });
  while (!over) g_main_context_iteration(nullptr, TRUE);
  start.join();
  EXPECT_EQ(outcome, Outcome::TakenOver);
  EXPECT_EQ(came, (std::vector<std::string>{Wanted.address, Wanted.address}));
}

TEST(HandOver, WhoIsSentAwayGetsTheFolderOnceItIsFree) {
  const Folder folder;
  auto lock = std::make_unique<FolderLock>(folder.path);
  FolderLock other(folder.path);
  ASSERT_TRUE(lock->Take());
  auto door = std::make_unique<Door>(*lock);
  int came = 0;
  door->Open([&came](const Request&) {
    ++came;
    return Reception::Closing;
  });
  HandOver further(other, Wanted);
  Outcome outcome = Outcome::NoAnswer;
  std::thread start([&] { outcome = further.Try(milliseconds(20000)); });
  while (came < 2) g_main_context_iteration(nullptr, TRUE);
  door.reset();
  lock.reset();
  start.join();
  EXPECT_EQ(outcome, Outcome::FolderIsOurs);
}

TEST(HandOver, AKilledOwnerLeavesASocketThatIsInNobodysWay) {
  const Folder folder;
  const pid_t child = ::fork();
  if (child == 0) {
    FolderLock lock(folder.path);
    lock.Take();
    const Door door(lock);
    ::kill(::getpid(), SIGKILL);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  FolderLock lock(folder.path);
  EXPECT_TRUE(std::filesystem::exists(folder.path / ".socket"));
  EXPECT_EQ(HandOver(lock, Wanted).Try(milliseconds(0)), Outcome::FolderIsOurs);
  const Door door(lock);
  EXPECT_EQ(std::filesystem::status(folder.path / ".socket").permissions() & std::filesystem::perms::mask,
            std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
}

TEST(FolderLock, FailsByName) {
  const Folder folder;
  std::filesystem::create_directory(folder.path / ".lock");
  try {
    FolderLock lock(folder.path);
    FAIL();
  } catch (const Failure& failure) {
    EXPECT_NE(std::string(failure.what()).find(folder.path.string()), std::string::npos) << failure.what();
  }
}

}  // namespace
