#include "gtk/page/text/SiteProcess.h"

#include <gtest/gtest.h>

#include <optional>

namespace {

constexpr const char *Bank = "https://bank.test", *Evil = "https://evil.test";

TEST(SiteProcess, IsSharedByPagesOfOneSite) {
  SiteProcess first;
  EXPECT_FALSE(first.IsFor(Bank));
  first.Came(Bank);
  EXPECT_TRUE(first.IsFor(Bank));
  EXPECT_FALSE(first.Shared());
  std::optional<SiteProcess> second;
  second.emplace().Join(first);
  EXPECT_TRUE(first.Shared() && second->Shared() && second->IsFor(Bank));
  // What has no site, such as a blank page, stays where it is.
  second->Came("");
  second->Came(Bank);
  EXPECT_TRUE(first.Shared() && first.IsFor(Bank));
  second.reset();
  EXPECT_FALSE(first.Shared());
}

TEST(SiteProcess, IsLeftForAnotherSite) {
  SiteProcess first, second;
  first.Came(Bank);
  second.Join(first);
  second.Came(Evil);
  EXPECT_TRUE(second.IsFor(Evil) && first.IsFor(Bank));
  EXPECT_FALSE(first.Shared() || second.Shared());
  // A process that has died is nobody's.
  second.Join(first);
  second.Begin();
  EXPECT_FALSE(second.IsFor(Bank) || first.Shared());
}

// The engine keeps the process, and so nobody else may come in, and nobody end it for the others.
TEST(SiteProcess, IsNotLeftForTheSameHostWithoutEncryption) {
  SiteProcess first, second;
  first.Came("http://bank.test");
  first.Came(Bank);
  EXPECT_TRUE(first.IsFor(Bank)) << "alone it is the new site's";
  second.Join(first);
  second.Came("http://bank.test");
  EXPECT_TRUE(first.Shared() && second.Shared());
  EXPECT_FALSE(first.IsFor(Bank) || first.IsFor("http://bank.test"));
}

TEST(SiteProcess, IsNoSitesWhereAPageHasOpenedAnother) {
  SiteProcess opener, sibling, window;
  opener.Came(Bank);
  sibling.Join(opener);
  window.Join(opener);
  opener.Tie();
  window.Tie();
  window.Came(Evil);
  opener.Came(Evil);
  for (const SiteProcess* one : {&opener, &sibling, &window}) {
    EXPECT_TRUE(one->Shared());
    EXPECT_FALSE(one->IsFor(Bank) || one->IsFor(Evil));
  }
  // Whoever isn't tied goes where it belongs, and those who stay know of each other.
  sibling.Came(Evil);
  EXPECT_TRUE(sibling.IsFor(Evil));
  EXPECT_TRUE(window.Shared());
  EXPECT_FALSE(sibling.Shared());
}

}  // namespace
