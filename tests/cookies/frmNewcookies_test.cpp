#include "cookies/frmNewcookies.h"

#include <gtest/gtest.h>

#include "cookies/CookieRig.h"

namespace {

// Two old cookies, and three of this run.
class NewCookies : public testing::Test {
 protected:
  NewCookies() {
    cache().Set({"Cookie:n1@x.test/", "Cookie:old1@x.test/", "Cookie:n2@x.test/", "Cookie:old2@x.test/",
                 "Cookie:n3@x.test/"});
    window().lstNewCookies.Fill(news);
  }

  frmNewcookies& window() { return rig.cookies().newcookies(); }
  FakeCookieCache& cache() { return rig.desktop.cookies; }
  void Expect(const Names& all, const Names& still_new, const Names& baseline) {
    EXPECT_EQ(cache().Names(), all);
    EXPECT_EQ(Rows(window().lstAllCookies), all);
    EXPECT_EQ(Rows(window().lstNewCookies), still_new);
    EXPECT_EQ(rig.cookies().lstCookies, baseline);
  }

  const Names old = {"Cookie:old1@x.test/", "Cookie:old2@x.test/"};
  const Names news = {"Cookie:n1@x.test/", "Cookie:n2@x.test/", "Cookie:n3@x.test/"};
  CookieRig rig{old};
};

TEST_F(NewCookies, RemoveAllOnTheNewPage) {
  EXPECT_EQ(Rows(window().lstAllCookies), old);  // the baseline at first
  rig.Press(window().Command2);
  EXPECT_EQ(cache().deleted, news);
  Expect(old, {}, old);
  rig.Press(window().Command2);  // nothing is left
  EXPECT_EQ(cache().deleted, news);
  Expect(old, {}, old);
}

TEST_F(NewCookies, RemoveSelectedOnTheNewPage) {
  const Names all = cache().Names();
  rig.Press(window().Command3);  // nothing selected
  EXPECT_EQ(cache().deleted, Names());
  Expect(all, news, old);

  window().lstNewCookies.SetSelected(0, true);
  window().lstNewCookies.SetSelected(2, true);
  rig.Press(window().Command3);
  EXPECT_EQ(cache().deleted, (Names{news[0], news[2]}));
  Expect({old[0], news[1], old[1]}, {news[1]}, old);

  window().lstNewCookies.SelectAll();
  rig.Do([this] { window().lstNewCookies.DeleteKey(); });
  Expect(old, {}, old);
}

// A new cookie that can't be deleted and was taken off the list counts as old from then on.
TEST_F(NewCookies, ShowWhatCannotGo) {
  cache().refused = {news[1]};
  rig.Press(window().Command2);
  Expect({old[0], news[1], old[1]}, {}, {old[0], news[1], old[1]});
}

TEST_F(NewCookies, RemoveAllOnThePageOfAll) {
  rig.Press(window().Command1);  // which shows the baseline still
  EXPECT_EQ(cache().deleted, old);
  Expect(news, {}, news);
  rig.Press(window().Command1);
  Expect({}, {}, {});
}

TEST_F(NewCookies, RemoveSelectedOnThePageOfAll) {
  rig.Press(window().Command4);
  EXPECT_EQ(cache().deleted, Names());
  window().lstAllCookies.SetSelected(0, true);
  window().lstAllCookies.SetSelected(1, true);
  rig.Press(window().Command4);
  EXPECT_EQ(cache().deleted, (Names{news[0], old[0]}));
  Expect({news[1], old[1], news[2]}, {news[1], news[2]}, {old[1]});
  window().lstAllCookies.SelectAll();
  rig.Press(window().Command4);
  Expect({}, {}, {});
}

TEST_F(NewCookies, FollowTheCacheWithoutRegardToCase) {
  cache().Set({"COOKIE:N2@X.TEST/", "Cookie:late@x.test/"});
  MousePointer during = MousePointer::Default;
  cache().during_walk = [&] { during = window().Pointer; };
  window().RefreshLists();
  // What came since isn't new to this list, but old.
  Expect({"COOKIE:N2@X.TEST/", "Cookie:late@x.test/"}, {news[1]}, {"Cookie:late@x.test/"});
  EXPECT_EQ(during, MousePointer::Hourglass);
  EXPECT_EQ(window().Pointer(), MousePointer::Default);
}

TEST_F(NewCookies, TrapOnlyInItsMode) {
  for (const int16_t mode : {0, 2, 3}) {
    rig.program.preferences.CookieTrapMode = mode;
    window().CheckTrap();
    EXPECT_EQ(cache().deleted, Names());
  }
  rig.program.preferences.CookieTrapMode = 1;
  window().CheckTrap();
  Expect(old, {}, old);
}

TEST_F(NewCookies, CloseEndsTheProgramOnlyAtItsEnd) {
  rig.Press(window().cmdClose);
  EXPECT_FALSE(rig.cookies().newcookies.Loaded());
  rig.program.Unloading = 1;
  EXPECT_THROW(rig.Press(window().cmdClose), ProcessEnded);
}

}  // namespace
