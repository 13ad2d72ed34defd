#include "gtk/start/Leftovers.h"

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <set>
#include <sstream>

namespace {

namespace files = std::filesystem;

class LeftoversTest : public testing::Test {
 protected:
  LeftoversTest() { files::create_directories(folder / "engine" / "data" / "site"); }
  ~LeftoversTest() override { files::remove_all(folder.parent_path()); }

  void Write(const std::string& name, const std::string& content = "x") {
    files::create_directories((folder / name).parent_path());
    std::ofstream(folder / name, std::ios::binary) << content;
  }
  std::string Read(const files::path& path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
  }
  // A database with a few pages.
  void Fill(const std::string& name) {
    sqlite3* store = nullptr;
    sqlite3_open((folder / name).c_str(), &store);
    sqlite3_exec(
        store,
        "CREATE TABLE moz_cookies (name TEXT, host TEXT); WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL "
        "SELECT i + 1 FROM n WHERE i < 2000) INSERT INTO moz_cookies SELECT 'name' || i, 'a.test' FROM n",
        nullptr, nullptr, nullptr);
    sqlite3_close(store);
  }
  // The number of a process that there is no more.
  static std::string Dead() {
    const pid_t child = ::fork();
    if (child == 0) ::_exit(0);
    ::waitpid(child, nullptr, 0);
    return std::to_string(child);
  }
  std::set<std::string> All() {
    std::set<std::string> names;
    for (const auto& entry : files::recursive_directory_iterator(folder))
      if (!entry.is_directory()) names.insert(entry.path().lexically_relative(folder).string());
    return names;
  }
  std::vector<files::path> PutAside() {
    std::vector<files::path> stores;
    for (const Leftovers::Damaged& one : Leftovers::PutAside(folder / "engine")) {
      EXPECT_TRUE(files::exists(one.aside)) << one.aside;
      stores.push_back(one.store.lexically_relative(folder));
      asides.push_back(one.aside);
    }
    return stores;
  }

  const files::path folder =
      files::path(testing::TempDir()) / ("marlowick-left-" + std::to_string(::getpid())) / "home";
  std::vector<files::path> asides;
};

TEST_F(LeftoversTest, ClearsWhatDeadProcessesLeftAndNothingElse) {
  const std::string dead = Dead(), alive = std::to_string(::getpid());
  for (const std::string& name :
       {"autocomplete.dat.new-" + dead, "history/day.htm.new-" + dead,
        "skins.new-" + dead + "/Steel/skin.ini", "favourites/.importing-" + dead + "/a.url",
        "favourites/sub/.moving-" + dead, "favourites/sub/a.url.new-" + dead,
        std::string("engine/engine.ini.X1Y2Z3"), std::string("downloads.dat.X1Y2Z3"),
        std::string("engine/source-0b5a7f0e-43a4-4f09-9a39-111111111111"),
        "../home.new-" + dead + "/.installing", "../home.new-" + dead + "/history/day.htm"})
    Write(name);
  const std::set<std::string> kept = {
      "autocomplete.dat", "autocomplete.dat.new-" + alive, "notes.new-", "x.new-1a", "favourites/a.url",
      "engine/engine.ini", "engine/engine.ini.mine",
      // The user's own.
      "x.new-" + dead + "/letter", "letter.new-" + dead, "favourites/x.new-" + dead + "/a.url",
      "engine/source-mine", "favourites/sub/.importing-" + dead + "/a.url",
      "browser.ini.new-" + dead + "/letter"};
  for (const std::string& name : kept) Write(name);
  Leftovers::Clear(folder);
  EXPECT_EQ(All(), kept);
  EXPECT_FALSE(files::exists(folder.string() + ".new-" + dead));
  Write("../home.new-" + dead + "/letter");
  Leftovers::Clear(folder);
  EXPECT_TRUE(files::exists(folder.string() + ".new-" + dead + "/letter")) << "no first start made it";
}

TEST_F(LeftoversTest, GoesThroughNoLink) {
  const std::string dead = Dead();
  for (const std::string& name :
       {"../away/day.htm.new-" + dead, "../away/.moving-" + dead + "/a.url",
        std::string("../away/engine.ini.X1Y2Z3"), std::string("../away/WebKitCache/a")})
    Write(name);
  const files::path away = folder.parent_path() / "away";
  files::remove_all(folder / "engine");
  files::create_directories(folder / "favourites");
  for (const char* link : {"history", "engine", "favourites/sub"})
    files::create_directory_symlink(away, folder / link);
  const std::string named = "autocomplete.dat.new-" + dead;
  files::create_symlink(away / "engine.ini.X1Y2Z3", folder / named);
  Leftovers::Clear(folder);
  files::create_directory_symlink(away, away / "cache");
  Leftovers::ClearOldCache(away);
  for (const std::string& name : {"day.htm.new-" + dead, ".moving-" + dead, std::string("engine.ini.X1Y2Z3"),
                                  std::string("WebKitCache/a")})
    EXPECT_TRUE(files::exists(away / name)) << name;
  EXPECT_TRUE(files::is_symlink(folder / named));
}

TEST_F(LeftoversTest, ClearsTheCacheOfAnEarlierVersionAndNoPromise) {
  for (const char* name : {"engine/cache/WebKitCache/Version 17/a", "engine/cache/hsts-storage.sqlite"})
    Write(name);
  Leftovers::ClearOldCache(folder / "engine");
  EXPECT_EQ(All(), std::set<std::string>{"engine/cache/hsts-storage.sqlite"});
}

TEST_F(LeftoversTest, PutsDamagedStoresAsideWhole) {
  Fill("engine/cookies.sqlite");
  Fill("engine/data/site/good.sqlite3");
  Write("engine/data/site/empty.sqlite3", "");
  Write("engine/data/site/salt", "no database");
  EXPECT_TRUE(PutAside().empty());

  // In the middle, where only a look at all of it finds it.
  std::string whole = Read(folder / "engine/cookies.sqlite"), broken = whole;
  broken.replace(8192, 4096, std::string(4096, '\xFF'));
  for (const std::string& content :
       {broken, std::string("no database at all"), whole.substr(0, whole.size() / 2)}) {
    Write("engine/cookies.sqlite", content);
    EXPECT_EQ(PutAside(), std::vector<files::path>{"engine/cookies.sqlite"}) << content.size();
    EXPECT_EQ(Read(asides.back()), content);
    EXPECT_FALSE(files::exists(folder / "engine/cookies.sqlite"));
  }
  EXPECT_EQ(std::set(asides.begin(), asides.end()).size(), 3U) << "each has a name of its own";

  Write("engine/data/site/bad.db", "nonsense, but long enough");
  EXPECT_EQ(PutAside(), std::vector<files::path>{"engine/data/site/bad.db"});
  files::remove_all(folder / "engine/data");
  Write("engine/data", "a file");
  files::create_directory(folder / "engine/cookies.sqlite");
  EXPECT_EQ(PutAside().size(), 2U);
  EXPECT_TRUE(PutAside().empty()) << "once";
}

}  // namespace
