#include "cookies/CookieScanner.h"

#include <gtest/gtest.h>

#include "cookies/CookieRig.h"

namespace {

TEST(CookieScanner, TakesTheBaselineAtEveryStart) {
  CookieRig rig({"Cookie:a@x.test/", "Cookie:b@x.test/"});
  EXPECT_EQ(rig.cookies().lstCookies, (Names{"Cookie:a@x.test/", "Cookie:b@x.test/"}));
  EXPECT_EQ(rig.desktop.cookies.walks, 1);
}

TEST(CookieScanner, FindsCookiesAmongOtherEntries) {
  CookieRig rig;
  rig.desktop.cookies.entries = {
      {"Cookie:a@x.test/"},
      {"Visited: Cookie:b@x.test/"},
      {"COOKIE"},
      {"cOOkIe anything at all"},
      {"Cooki"},
      {""},
      {"Cookie:clear@x.test/", 0},
      {"Cookie:other bits@x.test/", 0xFFFFFFFE},
      {"Cookie:all bits@x.test/", 0xFFFFFFFF},
      {"\x03OOKIE"},  // what is a "C" but for one bit
      {"http://x.test/"},
      {"Cookie:a@x.test/"},
  };
  const Names found = {"Cookie:a@x.test/", "COOKIE", "cOOkIe anything at all", "Cookie:all bits@x.test/",
                       "Cookie:a@x.test/"};
  for (int scan = 0; scan < 2; ++scan) {
    rig.cookies().GetCookies();
    EXPECT_EQ(rig.cookies().lstCookies, found);
  }
}

TEST(CookieScanner, KeepsWhatItFoundUntilAFailure) {
  CookieRig rig;
  rig.desktop.cookies.Set(Numbered(10'000));
  rig.cookies().GetCookies();
  EXPECT_EQ(rig.cookies().lstCookies, Numbered(10'000));
  rig.desktop.cookies.fails_behind = 3;
  rig.cookies().GetCookies();
  EXPECT_EQ(rig.cookies().lstCookies, Numbered(3));
  rig.desktop.cookies.fails_behind = 0;
  rig.cookies().GetCookies();
  EXPECT_EQ(rig.cookies().lstCookies, Names());
}

}  // namespace
