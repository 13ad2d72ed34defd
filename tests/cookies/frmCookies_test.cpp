#include "cookies/frmCookies.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "cookies/CookieRig.h"

namespace {

const Names Old = {"Cookie:b@x.test/", "Cookie:A@x.test/", "Cookie:c@x.test/"};
const Names Sorted = {"Cookie:A@x.test/", "Cookie:b@x.test/", "Cookie:c@x.test/"};

class Manager : public testing::Test {
 protected:
  Manager() {
    rig.Do([this] { rig.program.main().menus.MenuCommand("cookies..."); });
    rig.desktop.log.clear();
  }

  frmCookies& window() { return rig.cookies().manager(); }
  FakeCookieCache& cache() { return rig.desktop.cookies; }
  // What was asked of the user since the last time.
  Names Asked() {
    Names asked = std::exchange(rig.desktop.log, {});
    std::erase_if(asked, [](const std::string& line) { return !line.starts_with("MsgBox"); });
    return asked;
  }

  CookieRig rig{Old};
};

TEST_F(Manager, ShowsAllAndLeavesTheBaseline) {
  EXPECT_TRUE(window().Visible);
  EXPECT_EQ(Rows(window().lstAllCookies), Sorted);
  EXPECT_EQ(rig.cookies().lstCookies, Old);

  cache().Set({"Cookie:new@x.test/"});
  MousePointer during = MousePointer::Default;
  cache().during_walk = [&] { during = window().Pointer; };
  window().RefreshTheList();
  EXPECT_EQ(Rows(window().lstAllCookies), Names{"Cookie:new@x.test/"});
  EXPECT_EQ(rig.cookies().lstCookies, Old);
  EXPECT_EQ(during, MousePointer::Hourglass);
  EXPECT_EQ(window().Pointer(), MousePointer::Default);
}

TEST_F(Manager, RemovesWhatIsSelectedAfterAYes) {
  const Names question = {"MsgBox Delete Cookies?|Are you sure you want to remove the selected cookies?"};
  window().lstAllCookies.SetSelected(0, true);
  window().lstAllCookies.SetSelected(2, true);
  rig.desktop.answers = {Answer::No};
  rig.Press(window().Command1);
  EXPECT_EQ(Asked(), question);
  EXPECT_EQ(cache().deleted, Names());
  EXPECT_EQ(window().lstAllCookies.Selection(), (std::vector<int>{0, 2}));

  rig.desktop.answers = {Answer::Yes};
  rig.Press(window().Command1);
  EXPECT_EQ(Asked(), question);
  EXPECT_EQ(cache().deleted, (Names{"Cookie:A@x.test/", "Cookie:c@x.test/"}));
  EXPECT_EQ(Rows(window().lstAllCookies), Names{"Cookie:b@x.test/"});
  EXPECT_EQ(rig.cookies().lstCookies, Old);

  // Nothing selected.
  rig.desktop.answers = {Answer::Yes};
  rig.Do([this] { window().lstAllCookies.DeleteKey(); });
  EXPECT_EQ(Asked(), question);
  EXPECT_EQ(cache().deleted.size(), 2u);
  EXPECT_EQ(Rows(window().lstAllCookies), Names{"Cookie:b@x.test/"});
}

TEST_F(Manager, RemovesAllAfterAYesAndShowsWhatCannotGo) {
  const Names question = {"MsgBox Delete Cookies?|Are you sure you want to remove ALL of your cookies?"};
  rig.desktop.answers = {Answer::No, Answer::Yes, Answer::Yes};
  rig.Press(window().Command2);
  EXPECT_EQ(Asked(), question);
  EXPECT_EQ(cache().deleted, Names());

  cache().refused = {"Cookie:b@x.test/"};
  rig.Press(window().Command2);
  EXPECT_EQ(cache().deleted, Sorted);
  EXPECT_EQ(Rows(window().lstAllCookies), Names{"Cookie:b@x.test/"});

  cache().Set({});
  window().RefreshTheList();
  cache().deleted.clear();
  Asked();
  rig.Press(window().Command2);
  EXPECT_EQ(Asked(), question);
  EXPECT_EQ(cache().deleted, Names());
}

// What was old stays old, whoever removes it: set again, it isn't new at the end.
TEST_F(Manager, RemovingMakesNothingNew) {
  rig.desktop.answers = {Answer::Yes};
  rig.Press(window().Command2);
  cache().Set({"cookie:B@X.test/"});
  EXPECT_EQ(rig.CloseIn(1), 0);
  EXPECT_EQ(cache().Names(), Names{"cookie:B@X.test/"});
}

TEST_F(Manager, LaysItselfOutAndKeepsItsLeastSize) {
  rig.Do([this] { window().Resized(9000, 6000); });
  EXPECT_EQ(window().Frame1.Width, 8640);
  EXPECT_EQ(window().Frame1.Height, 4905);
  EXPECT_EQ(window().lstAllCookies.Width, 8160);
  EXPECT_EQ(window().lstAllCookies.Height, 3630);
  EXPECT_EQ(window().Command1.Left, 5385);
  EXPECT_EQ(window().Command1.Top, 4410);
  EXPECT_EQ(window().Command2.Left, 6945);
  EXPECT_EQ(window().Command2.Top, 4410);
  EXPECT_EQ(window().Command3.Left, 7545);
  EXPECT_EQ(window().Command3.Top, 5130);

  rig.Do([this] { window().Resized(5174, 3509); });
  EXPECT_EQ(window().Width, 5175);
  EXPECT_EQ(window().Height, 3510);
  EXPECT_EQ(window().Command3.Top, 2640);
}

TEST_F(Manager, TakesTheFocusBackUntilItIsClosed) {
  rig.Do([this] { window().Deactivated(); });
  EXPECT_TRUE(std::count(rig.desktop.log.begin(), rig.desktop.log.end(), "SetFocus frmCookies"));
  rig.Press(window().Command3);
  EXPECT_FALSE(rig.cookies().manager.Loaded());
}

TEST_F(Manager, ShowsTenThousand) {
  cache().Set(Numbered(10'000));
  window().RefreshTheList();
  EXPECT_EQ(window().lstAllCookies.ListCount(), 10'000);
  window().lstAllCookies.SelectAll();
  rig.desktop.answers = {Answer::Yes};
  rig.Press(window().Command1);
  EXPECT_EQ(window().lstAllCookies.ListCount(), 0);
}

}  // namespace
