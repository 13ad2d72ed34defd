#include <gtest/gtest.h>

#include "core/Instances.h"
#include "platform/SharedValue.h"

namespace {

struct Level {
  explicit Level(std::vector<std::string>& log) : log(log) {}
  ~Level() { log.push_back("gone " + name); }
  void Form_Load() {
    if (fails) throw Failure("no");
  }
  void Form_Unload(bool& cancel) {
    log.push_back("unload " + name);
    cancel = refuses;
  }
  std::vector<std::string>& log;
  std::string name;
  bool Visible = true, refuses = false;
  static inline bool fails = false;
};

TEST(Instances, KeepEachWindowUntilItsOwnUnload) {
  Events gate;
  std::vector<std::string> log;
  Instances<Level> levels(gate, [&] { return std::make_shared<Level>(log); });
  levels.Add().name = "1";
  levels.Add().name = "2";
  levels.Add().name = "3";
  gate.Run([&] {
    Level& second = *levels.All()[1];
    levels.Unload(second);
    // Its own handler may still be running in it.
    EXPECT_EQ(second.name, "2");
    EXPECT_EQ(log, std::vector<std::string>{"unload 2"});
    EXPECT_FALSE(second.Visible);
    levels.Unload(second);
  });
  EXPECT_EQ(log, (std::vector<std::string>{"unload 2", "gone 2"}));
  log.clear();
  levels.All()[0]->refuses = true;
  gate.Run([&] { levels.UnloadAll(); });
  EXPECT_EQ(log, (std::vector<std::string>{"unload 3", "unload 1", "gone 3"}));
  ASSERT_EQ(levels.All().size(), 1u);
  EXPECT_TRUE(levels.All()[0]->Visible);

  Level::fails = true;
  EXPECT_THROW(levels.Add(), Failure);
  Level::fails = false;
  EXPECT_EQ(levels.All().size(), 1u);
}

TEST(SharedValue, TellsEachWatchOfEachChange) {
  SharedValue<std::string> path;
  int first = 0, second = 0;
  auto watch = path.WhenChanged([&] { ++first; });
  SharedValue<std::string>::Watch other;
  // What is told may end others.
  const auto ending = path.WhenChanged([&] { other.reset(); });
  other = path.WhenChanged([&] { ++second; });
  path = "";
  EXPECT_EQ(first, 0);
  path = "a";
  EXPECT_EQ(path(), "a");
  EXPECT_EQ(first, 1);
  EXPECT_EQ(second, 0);
  watch.reset();
  path = "b";
  EXPECT_EQ(first, 1);
}

}  // namespace
