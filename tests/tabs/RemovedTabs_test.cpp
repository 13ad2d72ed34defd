#include "tabs/RemovedTabs.h"

#include <gtest/gtest.h>

#include "fakes/Rig.h"

namespace {

using Log = std::vector<std::string>;

class Removed : public testing::Test, protected Rig {
 protected:
  void Remove(int index) {
    ShowTab(index);
    Do([this] { tabs().DelTab(); });
  }
  void Reopen() {
    Do([this] { EXPECT_TRUE(main().keys.Pressed({"T", true, true, false})); });
  }
};

TEST_F(Removed, ComeBackAtTheEndTheLastOneFirst) {
  OpenTabs(3);
  for (int i = 1; i <= 3; ++i) {
    Page(i).url = "http://" + std::to_string(i);
    Page(i).title = "Title " + std::to_string(i);
    Page(i).history = "history " + std::to_string(i);
  }
  Remove(1);
  Remove(2);
  Asked();
  Reopen();
  EXPECT_EQ(Asked(), (Log{"Restore http://2", "Wake http://2"}));
  EXPECT_EQ(tabs().CurrentTab, 4);
  EXPECT_EQ(Page(4).history, "history 2");
  EXPECT_EQ(tabs().picTab(4).AccessibleName, "Title 2");
  EXPECT_EQ(frame().Picture1.Children().back(), &Page(4));
  Reopen();
  EXPECT_EQ(Page(5).url, "http://1");
  Asked();
  Reopen();
  EXPECT_EQ(Asked(), Log{});
  EXPECT_EQ(frame().StatusBar1.Caption(), "There is no removed tab to reopen");
}

TEST_F(Removed, AreTwentyAndDeadOnesToo) {
  OpenTabs(22);
  for (int i = 1; i <= 22; ++i) Page(i).url = std::to_string(i);
  for (int i = 1; i <= 21; ++i) Remove(i);
  Page(22).dead = true;
  Do([this] { desktop.Advance(5); });
  ASSERT_FALSE(tabs().WebBrowser1.Has(22));
  for (int i = 0; i < 25; ++i) Reopen();
  std::string back;
  for (int i = 1; i <= tabs().WebBrowser1.UBound(); ++i) back += Page(i).url + " ";
  EXPECT_EQ(back, "22 21 20 19 18 17 16 15 14 13 12 11 10 9 8 7 6 5 4 3 ");
}

}  // namespace
