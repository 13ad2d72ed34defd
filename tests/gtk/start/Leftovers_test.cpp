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
  const pid_t child = ::fork();
  if (child == 0) ::_exit(0);
  ::waitpid(child, nullptr, 0);
  const std::string dead = std::to_string(child), alive = std::to_string(::getpid());
  for (const std::string& name :
       {"autocomplete.dat.new-" + dead, "history/day.htm.new-" + dead,
        "skins.new-" + dead + "/Steel/skin.ini", "favourites/.importing-" + dead + "/a.url",
        "favourites/sub/.moving-" + dead, std::string("engine/engine.ini.X1Y2Z3"),
        "../home.new-" + dead + "/browser.ini"})
    Write(name);
  const std::set<std::string> kept = {
      "autocomplete.dat",  "autocomplete.dat.new-" + alive, "notes.new-", "x.new-1a", "favourites/a.url",
      "engine/engine.ini", "engine/engine.ini.mine"};
  for (const std::string& name : kept) Write(name);
  Leftovers::Clear(folder);
  EXPECT_EQ(All(), kept);
  EXPECT_FALSE(files::exists(folder.string() + ".new-" + dead));
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
