#include "gtk/engine/store/PromisedHttps.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include "fakes/FakeDesktop.h"

namespace {

TEST(PromisedHttps, HoldsForTheHostAndForThoseBelowWhereThatWasSaid) {
  const TemporaryFolder folder;
  const std::string file = folder.path + "/store";
  EXPECT_FALSE(PromisedHttps(file, "bank.test")) << "no store yet";
  sqlite3* store = nullptr;
  ASSERT_EQ(sqlite3_open(file.c_str(), &store), SQLITE_OK);
  EXPECT_EQ(sqlite3_exec(store,
                         "CREATE TABLE soup_hsts_policies (id INTEGER PRIMARY KEY, host TEXT UNIQUE, max_age "
                         "INTEGER, expiry INTEGER, include_subdomains INTEGER);"
                         "INSERT INTO soup_hsts_policies VALUES (1, 'all.test', 9, 99999999999, 1),"
                         "(2, 'one.test', 9, 99999999999, 0), (3, 'over.test', 9, 1, 1);",
                         nullptr, nullptr, nullptr),
            SQLITE_OK);
  sqlite3_close(store);
  for (const char* host : {"all.test", "www.all.test", "a.b.all.test", "one.test"})
    EXPECT_TRUE(PromisedHttps(file, host)) << host;
  for (const char* host :
       {"small.test", "www.one.test", "over.test", "test", ".test", "", "all.test.evil.test"})
    EXPECT_FALSE(PromisedHttps(file, host)) << host;
  folder.Write("store", "no store at all, but long enough to be looked at as one");
  EXPECT_FALSE(PromisedHttps(file, "all.test"));
}

}  // namespace
