#include "platform/favourites/FavouritesFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "fakes/FakeDesktop.h"
#include "platform/Failure.h"
#include "platform/Text.h"
#include "platform/favourites/FileName.h"

namespace {

using Names = std::vector<std::string>;

TEST(FavouritesFolder, ListsFoldersAndShortcutsByName) {
  const TemporaryFolder folder;
  for (const char* name :
       {"b.url", "A.URL", "c.Url", "\xC3\xA9t\xC3\xA9.url", "note.txt", ".hidden.url", ".url",
        "bad\xFFname.url", "Zoo/x.url", "apple/y.url", ".git/z.url", "folder.url/x.txt"})
    folder.Write(name, "[InternetShortcut]\r\n");
  ASSERT_EQ(::symlink("apple", (folder.path + "/link").c_str()), 0);
  ASSERT_EQ(::symlink("b.url", (folder.path + "/linked.url").c_str()), 0);
  ASSERT_EQ(::symlink("nowhere", (folder.path + "/broken").c_str()), 0);
  ASSERT_EQ(::symlink("nowhere", (folder.path + "/broken.url").c_str()), 0);
  ASSERT_EQ(::mkfifo((folder.path + "/pipe.url").c_str(), 0600), 0);
  const Favourites::Listing listing = Favourites::List(folder.path);
  EXPECT_EQ(listing.Folders, (Names{"apple", "folder.url", "link", "Zoo"}));
  // Whatever the language, plain letters stand before others.
  EXPECT_EQ(listing.Shortcuts.size(), 6u);
  EXPECT_EQ(listing.Shortcuts[0], "A.URL");
  EXPECT_EQ(listing.Shortcuts[1], "b.url");
  EXPECT_EQ(Favourites::List(folder.path + "/nowhere").Folders, Names());
}

TEST(FavouritesFolder, WritesAShortcutWholeAndOverNothingUnasked) {
  const TemporaryFolder folder;
  const std::string path = folder.path + "/a.url";
  Favourites::WriteShortcut(path, "https://one.test/?a=b", Favourites::Taken::Refuse);
  EXPECT_EQ(folder.Read("a.url"), "[InternetShortcut]\r\nURL=https://one.test/?a=b\r\n");
  EXPECT_THROW(Favourites::WriteShortcut(path, "https://two.test/", Favourites::Taken::Refuse), Failure);
  EXPECT_EQ(folder.Read("a.url"), Favourites::ShortcutText("https://one.test/?a=b"));
  EXPECT_THROW(Favourites::WriteShortcut(path, "https://x.test/\r\nURL=evil", Favourites::Taken::Replace),
               Failure);
  Favourites::WriteShortcut(path, "https://two.test/", Favourites::Taken::Replace);
  EXPECT_EQ(folder.Read("a.url"), Favourites::ShortcutText("https://two.test/"));
  try {
    Favourites::WriteShortcut(folder.path + "/none/b.url", "https://x.test/", Favourites::Taken::Refuse);
    FAIL();
  } catch (const Failure& failure) {
    EXPECT_NE(std::string(failure.what()).find("/none/b.url\": No such file"), std::string::npos);
  }
}

TEST(FavouritesFolder, MovesRenamesAndDeletesOverNothing) {
  const TemporaryFolder folder;
  folder.Write("a/one.url", "1");
  folder.Write("b/one.url", "2");
  const std::string root = folder.path;
  EXPECT_THROW(Favourites::Move(root + "/a/one.url", root + "/b/one.url"), Failure);
  EXPECT_THROW(Favourites::Rename(root + "/a", root + "/b"), Failure);
  EXPECT_EQ(folder.Read("a/one.url"), "1");
  EXPECT_EQ(folder.Read("b/one.url"), "2");
  EXPECT_THROW(Favourites::Move(root + "/a", root + "/a/a"), Failure);
  Favourites::Move(root + "/a", root + "/b/a");
  EXPECT_EQ(folder.Read("b/a/one.url"), "1");
  // Of a link only the link goes.
  ASSERT_EQ(::symlink((root + "/b").c_str(), (root + "/link").c_str()), 0);
  Favourites::Remove(root + "/link");
  EXPECT_EQ(folder.Read("b/one.url"), "2");
  Favourites::Remove(root + "/b");
  EXPECT_FALSE(Favourites::Stands(root + "/b"));
}

TEST(FileName, IsLegalOnEverySystem) {
  const std::pair<const char*, const char*> cases[] = {
      {"Plain name", "Plain name"},
      {"../../etc/passwd", "_.-..-etc-passwd"},
      {"a/b\\c:d|e", "a-b-c-d-e"},
      {" What? <b>\"bold\"</b> * ", "What bbold-b"},
      {"line\r\nbreak\ttab\x7F", "line break tab"},
      {"...", "?"},
      {"ends...  ", "ends"},
      {".NET", "_NET"},
      {"con", "_con"},
      {"LPT1.txt", "_LPT1.txt"},
      {"console", "console"},
      {"", "?"},
      {"photo\xE2\x80\xAEgpj.exe", "photo gpj.exe"},
      {"bad\xFF", "bad\xEF\xBF\xBD"},
  };
  for (const auto& [text, name] : cases) EXPECT_EQ(FileName::Legal(text, "?"), name) << text;
  // Whole characters, and room for the extension.
  std::string umlauts;
  for (int i = 0; i < 10000; ++i) umlauts += "\xC3\xB6";
  const std::string cut = FileName::Legal("x" + umlauts, "?", 4);
  EXPECT_EQ(cut.size(), 195u);
  EXPECT_EQ(Text::Valid(cut), cut);
}

TEST(FileName, NumbersWhatIsTaken) {
  FileName::TakenNames taken;
  taken.Take("Home.url");
  EXPECT_EQ(taken.Free("home", ".url"), "home (2).url");
  EXPECT_EQ(taken.Free("HOME", ".url"), "HOME (3).url");
  EXPECT_EQ(taken.Free("home", ""), "home");
  const std::string longest = FileName::Legal(std::string(500, 'x'), "?", 4);
  EXPECT_EQ(taken.Free(longest, ".url").size(), 200u);
  EXPECT_EQ(taken.Free(longest, ".url").size(), 200u);
}

}  // namespace
