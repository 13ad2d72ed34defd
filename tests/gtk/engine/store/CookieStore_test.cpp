#include "gtk/engine/store/CookieStore.h"

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <set>

#include "fakes/FakeDesktop.h"
#include "gtk/engine/store/CookieName.h"
#include "platform/Failure.h"

namespace {

using Names = std::vector<std::string>;

TEST(CookieName, IsAsTheStoreHasIt) {
  EXPECT_EQ(CookieName("sid", ".site.test", "/"), "Cookie:sid@.site.test/");
  EXPECT_EQ(CookieName("sid", "site.test", "/shop/basket"), "Cookie:sid@site.test/shop/basket");
  EXPECT_EQ(CookieName("", "site.test", ""), "Cookie:@site.test/");
  EXPECT_EQ(CookieName("größe 日", "site.test", "/a@b c%20\"'<b>"),
            "Cookie:größe 日@site.test/a@b c%20\"'<b>");
}

TEST(CookieName, ForgesNoRow) {
  EXPECT_EQ(CookieName("a\r\nCookie:b", "x.test", "/\t"), "Cookie:a\\x0D\\x0ACookie:b@x.test/\\x09");
  EXPECT_EQ(CookieName("a\xE2\x80\xA8"
                       "b\xE2\x80\xAE",
                       "x.test", "/\x7F\xC2\x85"),
            "Cookie:a\\xE2\\x80\\xA8b\\xE2\\x80\\xAE@x.test/\\x7F\\xC2\\x85");
  EXPECT_EQ(CookieName("\xFF\xC3", "x.test", "/\xE2\x82"), "Cookie:\\xFF\\xC3@x.test/\\xE2\\x82");
  EXPECT_EQ(CookieName(std::string_view("a\0b", 3), "x.test", "/"), "Cookie:a\\x00b@x.test/");
}

// Every pair of pieces that could run into each other.
TEST(CookieName, IsAnotherForEachCookie) {
  const Names names = {"",  "a", "a@b.test", "a@b.test/",     "a/", "a/@b.test", "a@",
                       "@", "/", "\\x2F",    "a@b.test\\x2F", "\n", "\\x0A"};
  const Names domains = {"b.test", ".b.test", "c.test"};
  const Names paths = {"/", "/@b.test/", "/@c.test/", "//", "/x@c.test/", "/\n", "/\\x0A"};
  std::set<std::string> all;
  for (const std::string& name : names)
    for (const std::string& domain : domains)
      for (const std::string& path : paths) all.insert(CookieName(name, domain, path));
  EXPECT_EQ(all.size(), names.size() * domains.size() * paths.size());
}

class Store : public testing::Test {
 protected:
  ~Store() override { sqlite3_close(store); }

  void Open() {
    ASSERT_EQ(sqlite3_open(path().c_str(), &store), SQLITE_OK);
    Run("CREATE TABLE IF NOT EXISTS moz_cookies (id INTEGER PRIMARY KEY, name TEXT, value TEXT, host TEXT, "
        "path TEXT, "
        "expiry INTEGER, lastAccessed INTEGER, isSecure INTEGER, isHttpOnly INTEGER, sameSite INTEGER)");
  }
  void Run(const std::string& statement) {
    ASSERT_EQ(sqlite3_exec(store, statement.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
        << sqlite3_errmsg(store);
  }
  void Insert(const std::string& name, const std::string& expiry = "4102444800") {
    Run("INSERT INTO moz_cookies (name, host, path, expiry) VALUES ('" + name + "', '.site.test', '/', " +
        expiry + ")");
  }
  std::string path() const { return folder.path + "/cookies.sqlite"; }

  const TemporaryFolder folder;
  sqlite3* store = nullptr;
};

TEST_F(Store, GivesWhatItHolds) {
  EXPECT_EQ(CookiesOnDisk(path()), Names());
  EXPECT_FALSE(std::filesystem::exists(path()));
  Open();
  EXPECT_EQ(CookiesOnDisk(path()), Names());
  Insert("a");
  Insert("gone", "1");
  Insert("b");
  Run("INSERT INTO moz_cookies (name, host, path, expiry) VALUES (NULL, NULL, NULL, 4102444800)");
  EXPECT_EQ(CookiesOnDisk(path()), (Names{"Cookie:a@.site.test/", "Cookie:b@.site.test/", "Cookie:@/"}));
}

TEST_F(Store, FailsWhereItCannotBeRead) {
  folder.Write("cookies.sqlite",
               "This is no store, and longer than the head of one is. " + std::string(200, 'x'));
  EXPECT_THROW(CookiesOnDisk(path()), Failure);
  folder.Write("cookies.sqlite", "");
  EXPECT_THROW(CookiesOnDisk(path()), Failure);  // no table
  std::filesystem::remove(path());

  Open();
  Insert("a");
  Run("BEGIN EXCLUSIVE");
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_THROW(CookiesOnDisk(path()), Failure);
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(3));
  Run("COMMIT");
  EXPECT_EQ(CookiesOnDisk(path()).size(), 1u);

  // Half of a store.
  const auto size = std::filesystem::file_size(path());
  sqlite3_close(store);
  store = nullptr;
  std::filesystem::resize_file(path(), size / 2);
  EXPECT_THROW(CookiesOnDisk(path()), Failure);
}

// What was there before the change is the baseline: nothing of it may count as new.
TEST_F(Store, IsPutRightAfterAKill) {
  Open();
  Run("BEGIN");
  for (int i = 0; i < 500; ++i) Insert("old" + std::to_string(i));
  Run("COMMIT");
  sqlite3_close(store);
  store = nullptr;
  const pid_t child = fork();
  if (child == 0) {
    // Spills the unfinished change into the file, so that the journal beside it is needed.
    sqlite3_open(path().c_str(), &store);
    sqlite3_exec(store, "PRAGMA cache_size = 2; BEGIN; DELETE FROM moz_cookies", nullptr, nullptr, nullptr);
    sqlite3_exec(store,
                 "CREATE TABLE more (x); INSERT INTO more SELECT hex(randomblob(4000)) FROM (SELECT 1 UNION "
                 "SELECT 2 UNION SELECT 3)",
                 nullptr, nullptr, nullptr);
    _exit(0);
  }
  ASSERT_GT(child, 0);
  int status = 0;
  waitpid(child, &status, 0);
  ASSERT_TRUE(std::filesystem::exists(path() + "-journal"));
  EXPECT_EQ(CookiesOnDisk(path()).size(), 500u);
}

}  // namespace
