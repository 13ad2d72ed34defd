#include "gtk/page/text/Sites.h"

#include <gtest/gtest.h>

namespace {

TEST(Sites, NameNobodyWhoMayNotBeTheOne) {
  Sites sites;
  EXPECT_EQ(sites.Asker(), "This page");
  sites.MainAnswered();
  sites.Committed("bank.test");
  sites.FrameAnswered("bank.test");
  sites.FrameAnswered("");
  EXPECT_EQ(sites.Asker(), "bank.test");
  sites.FrameAnswered("ads.test");
  EXPECT_EQ(sites.Asker(), "bank.test, or a part of it from ads.test,");
  sites.FrameAnswered("more.test");
  EXPECT_EQ(sites.Asker(), "bank.test, or a part of it from 2 other sites,");
  EXPECT_EQ(sites.Site(), "bank.test");

  // The next page answers while this one still stands.
  sites.MainAnswered();
  EXPECT_EQ(sites.Site(), "bank.test");
  sites.Committed("news.test");
  EXPECT_EQ(sites.Asker(), "news.test");
  // A page that comes back from memory has its frames again, and nobody tells.
  sites.Committed("bank.test");
  EXPECT_EQ(sites.Asker(), "bank.test, or a part of it from 2 other sites,");
  // So it has where an answer came in between that there was no page in.
  sites.LoadStarted();
  sites.MainAnswered();
  sites.LoadStarted();
  sites.Committed("news.test");
  EXPECT_EQ(sites.Asker(), "news.test, or a part of it from 3 other sites,");
}

}  // namespace
