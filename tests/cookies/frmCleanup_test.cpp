#include "cookies/frmCleanup.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "cookies/CookieRig.h"

namespace {

size_t Place(const Names& log, const std::string& line) {
  return static_cast<size_t>(std::find(log.begin(), log.end(), line) - log.begin());
}

const Names Old = {"Cookie:Old@x.test/", "Cookie:bank@x.test/"};

class CleanUp : public testing::Test {
 protected:
  FakeCookieCache& cache() { return rig.desktop.cookies; }
  frmNewcookies& list() { return rig.cookies().newcookies(); }
  bool Logged(const std::string& line) { return Place(rig.desktop.log, line) < rig.desktop.log.size(); }

  CookieRig rig{Old};
};

TEST_F(CleanUp, IsNoneInModeZero) {
  cache().Set({"Cookie:new@x.test/"});
  EXPECT_EQ(rig.CloseIn(0), 0);
  EXPECT_EQ(cache().walks, 1);
  EXPECT_EQ(cache().deleted, Names());
  EXPECT_FALSE(Logged("Show frmCleanup"));
}

// Changed, set again, in another case: not new. Gone: no harm.
TEST_F(CleanUp, RemovesWhatIsNewAndNothingElse) {
  cache().Set(
      {"cookie:OLD@x.test/", "Cookie:n1@x.test/", "Cookie:old@y.test/", "Cookie:N1@x.test/", "no cookie"});
  EXPECT_EQ(rig.CloseIn(1), 0);
  EXPECT_EQ(cache().deleted, (Names{"Cookie:n1@x.test/", "Cookie:old@y.test/", "Cookie:N1@x.test/"}));
  EXPECT_EQ(cache().Names(), (Names{"cookie:OLD@x.test/", "no cookie"}));
  const Names& log = rig.desktop.log;
  EXPECT_LT(Place(log, "ClosePages"), Place(log, "Show frmCleanup"));
  EXPECT_LT(Place(log, "Show frmCleanup"), Place(log, "End 0"));
}

TEST_F(CleanUp, AsksNothingWhereNothingIsNew) {
  for (const int16_t mode : {1, 2}) {
    CookieRig same(Old);
    EXPECT_EQ(same.CloseIn(mode), 0);
    EXPECT_EQ(same.desktop.cookies.Names(), Old);
    EXPECT_EQ(same.desktop.cookies.walks, 2);
  }
}

TEST_F(CleanUp, LetsTheUserConfirm) {
  cache().Set({"Cookie:n@x.test/", "Cookie:old@x.test/"});
  bool seen = false;
  rig.desktop.acts = {[&](Dialog& dialog) {
    seen = true;
    EXPECT_EQ(dialog.Name, "frmNewcookies");
    EXPECT_FALSE(rig.cookies().cleanup.Loaded());
    EXPECT_FALSE(rig.program.main().Visible);
    EXPECT_EQ(Rows(list().lstNewCookies), Names{"Cookie:n@x.test/"});
    EXPECT_EQ(Rows(list().lstAllCookies), Old);  // the baseline at first
    list().cmdClose.Click();
  }};
  EXPECT_EQ(rig.CloseIn(2), 0);
  EXPECT_TRUE(seen);
  EXPECT_EQ(cache().deleted, Names());
}

// Without a baseline the window is loaded by the scan's first cookie, and so shows the scan.
TEST_F(CleanUp, ShowsTheScanWhereNothingWasOld) {
  CookieRig empty;
  empty.desktop.cookies.Set({"Cookie:n@x.test/"});
  empty.desktop.acts = {[&](Dialog&) {
    EXPECT_EQ(Rows(empty.cookies().newcookies().lstAllCookies), Names{"Cookie:n@x.test/"});
    empty.cookies().newcookies().Command2.Click();
    empty.cookies().newcookies().cmdClose.Click();
  }};
  EXPECT_EQ(empty.CloseIn(2), 0);
  EXPECT_EQ(empty.desktop.cookies.Names(), Names());
}

TEST_F(CleanUp, RemovesByWordsOldOnesToo) {
  cache().Set({"Cookie:Old@x.test/", "Cookie:bank@x.test/", "Cookie:n@BANK.test/", "Cookie:n@y.test/",
               "Cookie:a b@y.test/", "Cookie:ab@y.test/"});
  rig.program.preferences.SetFilters({"Bank", "bank.TEST", "A B", ""});
  EXPECT_EQ(rig.CloseIn(3), 0);
  EXPECT_EQ(cache().deleted, (Names{"Cookie:bank@x.test/", "Cookie:n@BANK.test/", "Cookie:a b@y.test/"}));
  EXPECT_EQ(cache().Names(), (Names{"Cookie:Old@x.test/", "Cookie:n@y.test/", "Cookie:ab@y.test/"}));
}

TEST_F(CleanUp, RemovesNothingWithoutWords) {
  EXPECT_EQ(rig.CloseIn(3), 0);
  EXPECT_EQ(cache().deleted, Names());
}

TEST_F(CleanUp, EndsWhateverTheCacheDoes) {
  for (const int16_t mode : {1, 2, 3}) {
    CookieRig broken(Old);
    broken.desktop.cookies.Set(Numbered(5));
    broken.desktop.cookies.fails_behind = 0;
    EXPECT_EQ(broken.CloseIn(mode), 0);
    EXPECT_EQ(broken.desktop.cookies.deleted, Names());
  }
  cache().Set(Numbered(4));
  cache().fails_behind = 2;
  EXPECT_EQ(rig.CloseIn(1), 0);
  EXPECT_EQ(cache().deleted, Numbered(2));
}

// The windows that the user left open go with the rest, and what was typed there counts.
TEST_F(CleanUp, TakesTheOpenWindowsDown) {
  rig.cookies().manager().Show();
  rig.cookies().filter().Text1.Text = "bank";
  rig.Press(rig.cookies().filter().Command2);
  EXPECT_EQ(rig.CloseIn(3), 0);
  EXPECT_FALSE(rig.cookies().manager.Loaded());
  EXPECT_EQ(cache().deleted, Names{"Cookie:bank@x.test/"});
}

TEST_F(CleanUp, RemovesTenThousand) {
  cache().Set(Numbered(10'000));
  EXPECT_EQ(rig.CloseIn(1), 0);
  EXPECT_EQ(cache().Names(), Names());
}

class LogOut : public CleanUp {
 protected:
  bool Ends(CookieRig& of) {
    try {
      of.Do([&of] { of.desktop.SessionEnding(); });
    } catch (const ProcessEnded& end) {
      return end.status == 0;
    }
    return false;
  }
};

TEST_F(LogOut, CleansUpWithoutAQuestion) {
  for (const int16_t mode : {0, 1, 2, 3}) {
    CookieRig rig(Old);
    rig.desktop.cookies.Set({"Cookie:Old@x.test/", "Cookie:bank@x.test/", "Cookie:n@x.test/"});
    rig.program.preferences.CookieTrapMode = mode;
    rig.program.preferences.SetFilters({"bank"});
    EXPECT_TRUE(Ends(rig));
    const std::vector<Names> deleted = {{}, {"Cookie:n@x.test/"}, {}, {"Cookie:bank@x.test/"}};
    EXPECT_EQ(rig.desktop.cookies.deleted, deleted[static_cast<size_t>(mode)]);
  }
}

// While the user is asked, it ends the waiting, and keeps what isn't confirmed.
TEST_F(LogOut, EndsTheQuestion) {
  cache().Set({"Cookie:n@x.test/"});
  rig.desktop.acts = {[&](Dialog&) { rig.desktop.SessionEnding(); }};
  EXPECT_EQ(rig.CloseIn(2), 0);
  EXPECT_EQ(cache().deleted, Names());
}

// While the cookies are removed, it lets that come to its end.
TEST_F(LogOut, WaitsForTheCleanUp) {
  cache().Set({"Cookie:n@x.test/"});
  rig.desktop.during_events = [&] { rig.desktop.SessionEnding(); };
  EXPECT_EQ(rig.CloseIn(1), 0);
  EXPECT_EQ(cache().deleted, Names{"Cookie:n@x.test/"});
}

// While the program restarts for a skin, its main window's end does nothing at all.
TEST_F(LogOut, EndsTheProgramThatWaitsForARestart) {
  rig.program.SkinRestartNeeded = 1;
  EXPECT_TRUE(Ends(rig));
}

}  // namespace
