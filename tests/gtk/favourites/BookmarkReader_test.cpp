#include "gtk/favourites/BookmarkReader.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "fakes/FakeDesktop.h"
#include "platform/Failure.h"
#include "platform/Files.h"
#include "platform/favourites/FavouritesFolder.h"

namespace {

// "folder{link=address ...} ..."
std::string Told(const std::vector<Bookmark>& bookmarks) {
  std::string told;
  for (const Bookmark& bookmark : bookmarks) {
    if (!told.empty()) told += " ";
    told += bookmark.IsFolder ? bookmark.Name + "{" + Told(bookmark.Children) + "}"
                              : bookmark.Name + "=" + bookmark.Address;
  }
  return told;
}

Bookmarks Parsed(const std::string& html) {
  const TemporaryFolder folder;
  folder.Write("b.html", html);
  return ReadBookmarks(folder.path + "/b.html");
}

// Where the program looks for it: behind the first four characters of the second line.
std::string OwnAddress(const std::string& path) {
  FileSlot file;
  file.OpenExactly(path, FileSlot::Mode::Input);
  EXPECT_EQ(file.LineInput(), "[InternetShortcut]");
  return file.LineInput().substr(4);
}

void Import(const TemporaryFolder& favourites, const Bookmarks& bookmarks) {
  BookmarkImport import(favourites.path, "in", bookmarks);
  while (import.Step(7)) EXPECT_TRUE(Favourites::List(favourites.path).Folders.empty());
}

TEST(BookmarkReader, TakesWhatBrowsersWrite) {
  const std::string samples = std::string(MARLOWICK_SAMPLES_DIR) + "/";
  Bookmarks firefox = ReadBookmarks(samples + "firefox.html");
  EXPECT_EQ(
      Told(firefox.Top),
      "Guide & Tour=https://docs.bank.test/guide?a=1&copy=2&b=%22x%22 "
      "Reading{Caf' d\xC3\xA9j\xC3\xA0 vu \xE2\x80\x94 \xE6\x97\xA5\xE6\x9C\xAC=https://news.bank.test/ "
      "Empty{}} "
      "Bookmarks Toolbar{Shop=https://shop.bank.test/ shop=https://shop.bank.test/2 "
      "=https://unnamed.bank.test/path} Other Bookmarks{Named <b> \"x\" & y{It's \xE6\x97\xA5\xE6\x9C\xAC "
      "<&>=https://odd.bank.test/?a=%3Cb%3E&amp=1&copy=2#%C3%A9}}");
  EXPECT_EQ(firefox.Count(LeftOut::Place), 1u);
  EXPECT_EQ(firefox.Count(LeftOut::Script), 2u);
  EXPECT_EQ(Told(ReadBookmarks(samples + "chromium.html").Top),
            "Bookmarks bar{A <tag>=https://a.bank.test/?q=x&y=z Inner{Local=file:///home/me/a%20b.html}} "
            "Settings=chrome://settings/");
  const TemporaryFolder favourites;
  Import(favourites, firefox);
  EXPECT_EQ(favourites.Read("in/Bookmarks Toolbar/shop (2).url"),
            Favourites::ShortcutText("https://shop.bank.test/2"));
  EXPECT_EQ(favourites.Read("in/Bookmarks Toolbar/https---unnamed.bank.test-path.url"),
            Favourites::ShortcutText("https://unnamed.bank.test/path"));
  EXPECT_TRUE(std::filesystem::is_directory(favourites.path + "/in/Reading/Empty"));
}

TEST(BookmarkReader, TakesAnyEncodingAndLooseTags) {
  EXPECT_EQ(Told(Parsed("<dl><dt><a href=x.test>Caf\xE9 \x80</a></dl>").Top),
            "Caf\xC3\xA9 \xE2\x82\xAC=x.test");
  EXPECT_EQ(Told(Parsed("<meta charset=koi8-r><dl><a href='x'>\xC1").Top), "\xD0\xB0=x");
  EXPECT_EQ(Told(Parsed(std::string("\xFF\xFE<\0d\0l\0>\0<\0a\0 \0h\0r\0e\0f\0=\0x\0>\0y\0", 32)).Top),
            "y=x");
  EXPECT_EQ(Told(Parsed("<DL><DT><H3>a<DL><DT><A HREF=1>one<DT><A HREF=2>two<DD>text</DL><DT><H3>b</H3>"
                        "<DT><A HREF=3>three</A></DL></DL></DL><DL><A HREF=4>four</A></DL>")
                     .Top),
            "a{one=1 two=2} b{} three=3 four=4");
  // Browsers of former days left the ampersands as they were.
  EXPECT_EQ(
      Told(Parsed("<DL><DT><A HREF=\"x?a=1&copy=2&b\" ICON=\"data:x\" TAGS=\"a,b\">n</A><DD>d</DL>").Top),
      "n=x?a=1&copy=2&b");
  EXPECT_THROW(Parsed("<html><p>A page</p></html>"), Failure);
  EXPECT_THROW(Parsed(""), Failure);
  EXPECT_THROW(ReadBookmarks("/nowhere/b.html"), Failure);
}

TEST(BookmarkReader, KeepsHostileFilesInsideTheFolder) {
  std::string html =
      "<DL><p><DT><H3>../../out</H3><DL><p><DT><A HREF=\"https://x.test/&#10;[A]&#13;B\">../../../up</A>"
      "<DT><A HREF=\"\tjava\nscript:alert(1)\">s</A><DT><A HREF='PLACE:x'>p</A><DT><A>none</A>"
      "<DT><A HREF='  '>blank</A></DL><p>";
  html += "<DT><A HREF='https://long.test/'>" + std::string(10000, 'n') + "</A>";
  html += "<DT><A HREF='https://long.test/" + std::string(100000, 'a') + "'>address</A>";
  html += "<DT><A HREF='https://icon.test/' ICON='" + std::string(3000000, 'i') + "'>icon</A>";
  html += std::string(
      "<DT><A HREF='https://nul.test/'>a\0b\x01"
      "c</A>",
      41);
  for (int i = 0; i < 2000; ++i) html += "<DT><H3>deep</H3><DL><p>";
  html += "<DT><A HREF='https://deep.test/'>deep</A>";
  Bookmarks bookmarks = Parsed(html);
  EXPECT_EQ(bookmarks.Count(LeftOut::Script), 1u);
  EXPECT_EQ(bookmarks.Count(LeftOut::Place), 1u);
  EXPECT_EQ(bookmarks.Count(LeftOut::NoAddress), 2u);
  EXPECT_EQ(bookmarks.Count(LeftOut::TooLong), 1u);
  const TemporaryFolder outer;
  std::filesystem::create_directory(outer.path + "/favourites");
  BookmarkImport import(outer.path + "/favourites", "../../../in\n", bookmarks);
  while (import.Step(100)) {
  }
  EXPECT_EQ(import.Links(), 5u);
  size_t links = 0;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(outer.path)) {
    if (!entry.is_regular_file()) continue;
    ++links;
    EXPECT_TRUE(entry.path().string().starts_with(import.Folder() + "/")) << entry.path();
    EXPECT_TRUE(OwnAddress(entry.path().string()).starts_with("https://")) << entry.path();
  }
  EXPECT_EQ(links, 5u);
  EXPECT_TRUE(import.Folder().starts_with(outer.path + "/favourites/_.-"));
}

TEST(BookmarkReader, LeavesNothingOfABrokenOffImport) {
  const TemporaryFolder favourites;
  favourites.Write("in/old.url", "old");
  const Bookmarks bookmarks = Parsed("<DL><A HREF=1>one</A><A HREF=2>two</A></DL>");
  {
    BookmarkImport import(favourites.path, "in", bookmarks);
    EXPECT_TRUE(import.Step(1));
    EXPECT_EQ(import.Done(), 1u);
  }
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(favourites.path), {}), 1);
  {
    BookmarkImport import(favourites.path, "in", bookmarks);
    while (import.Step(1)) {
    }
    EXPECT_EQ(import.Folder(), favourites.path + "/in (2)");
  }
  EXPECT_EQ(favourites.Read("in/old.url"), "old");
  EXPECT_THROW(BookmarkImport(favourites.path + "/none", "in", bookmarks), Failure);
}

TEST(BookmarkReader, ReadsItsOwnExportWithoutLoss) {
  const TemporaryFolder first, second;
  const char* addresses[] = {"https://a.test/?x=\"1\"&y='2'<3>&amp;&lt;#\xC3\xA9 %41 end ", "about:blank",
                             " spaced", "a&copy;b"};
  for (int i = 0; i < 4; ++i)
    first.Write("in/A & B/" + std::to_string(i) + " <'\xC3\xA9'> .url",
                Favourites::ShortcutText(addresses[i]));
  std::filesystem::create_directories(first.path + "/in/Empty/Inner");
  ASSERT_EQ(::symlink((first.path + "/in").c_str(), (first.path + "/in/ring").c_str()), 0);
  const Bookmarks exported = ReadFavourites(first.path + "/in", OwnAddress);
  EXPECT_TRUE(Told(exported.Top).ends_with("ring{}"));
  const Bookmarks again = Parsed(BookmarkHtml(exported.Top));
  EXPECT_EQ(Told(again.Top), Told(exported.Top));
  std::filesystem::remove(first.path + "/in/ring");
  Import(second, Parsed(BookmarkHtml(ReadFavourites(first.path + "/in", OwnAddress).Top)));
  for (int i = 0; i < 4; ++i) {
    const std::string made = second.path + "/in/A & B/" + std::to_string(i) + " '\xC3\xA9'.url";
    EXPECT_EQ(OwnAddress(made), addresses[i]);
  }
}

TEST(BookmarkReader, TakesShortcutsOfOtherPrograms) {
  const TemporaryFolder folder;
  folder.Write("plain.url",
               "[DEFAULT]\nBASEURL=https://no.test/"
               "\n[{000214A0}]\nProp3=19,2\n[InternetShortcut]\nIDList=\nURL=https://plain.test/\n");
  folder.Write("bom.URL",
               "\xEF\xBB\xBF[InternetShortcut]\r\nIconIndex=0\r\nurl = https://bom.test/\xC3\xA9\r\n");
  folder.Write("latin.url", "[InternetShortcut]\rURL=https://latin.test/\xE9\r");
  std::string wide = "\xFF\xFE";
  for (const char c : std::string("[InternetShortcut]\r\nURL=https://wide.test/\r\n")) wide += {c, '\0'};
  folder.Write("sub/wide.url", wide);
  folder.Write("none.url", "[Other]\nURL=https://other.test/\n[InternetShortcut]\n");
  folder.Write("link.desktop",
               "[Desktop Entry]\nType=Link\nName=Named/Link\nURL=https://link.test/\nExec=touch x\n");
  folder.Write("app.desktop", "[Desktop Entry]\nType=Application\nExec=rm -rf /\nURL=https://app.test/\n");
  folder.Write("readme.txt", "URL=https://text.test/");
  ASSERT_EQ(::symlink(folder.path.c_str(), (folder.path + "/ring").c_str()), 0);
  Bookmarks bookmarks = ReadBookmarks(folder.path);
  EXPECT_EQ(Told(bookmarks.Top),
            "bom=https://bom.test/\xC3\xA9 latin=https://latin.test/\xC3\xA9 Named/Link=https://link.test/ "
            "plain=https://plain.test/ sub{wide=https://wide.test/}");
  EXPECT_EQ(bookmarks.Count(LeftOut::NoAddress), 1u);
  EXPECT_EQ(AddressInShortcut(folder.path + "/app.desktop"), "");
}

}  // namespace
