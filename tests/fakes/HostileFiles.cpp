#include "fakes/HostileFiles.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "fakes/BmpFile.h"
#include "gtk/favourites/BookmarkReader.h"
#include "gtk/start/Request.h"
#include "menus/LaunchMenu.h"
#include "platform/Failure.h"
#include "platform/favourites/FavouritesFolder.h"

namespace {

constexpr int MostTabs = 8;
constexpr const char* Own = "\\skins\\Own";

const std::string Lines = "http://a.test/\r\nfile:///b c.html\r\n\r\n\xC3\xA4\xF0\x9F\x98\x80.test\r\n";

}  // namespace

HostileFiles::HostileFiles(uint32_t seed) : spoiler_(seed) {
  kinds_ = {{.name = "settings", .attempt = &HostileFiles::Settings},
            {.name = "skins' settings", .attempt = &HostileFiles::SkinSettings},
            {.name = "skins' pictures", .attempt = &HostileFiles::SkinPicture},
            {.name = "typed lists", .attempt = &HostileFiles::TypedList},
            {.name = "launch menus", .attempt = &HostileFiles::Launch},
            {.name = "templates", .attempt = &HostileFiles::Templates},
            {.name = "days of history", .attempt = &HostileFiles::DayPage},
            {.name = "layouts", .attempt = &HostileFiles::Layout},
            {.name = "shortcuts", .attempt = &HostileFiles::Shortcut},
            {.name = "bookmarks", .attempt = &HostileFiles::BookmarkFile},
            {.name = "requests", .attempt = &HostileFiles::HandedOver}};
  std::filesystem::create_directories(rig_.folder.path + "/skins/Own");
  std::filesystem::create_directories(rig_.folder.path + "/history");
  std::filesystem::create_directories(rig_.folder.path + "/favourites/sub");
}

void HostileFiles::TryOne() {
  current_ = &kinds_[spoiler_.Below(kinds_.size())];
  ++current_->tried;
  try {
    (this->*current_->attempt)();
  } catch (const Failure&) {
    ++current_->refused;
  }
  // A file that is refused may stay open.
  rig_.program.slot.Abandon();
  Check(rig_.main().tabs.WebBrowser1.Has(0));
}

void HostileFiles::Check(bool fine) const {
  if (fine) return;
  std::ofstream("hostile-input", std::ios::binary) << content_;
  throw std::logic_error(std::string("The program has lost its footing in ") + current_->name);
}

// Writes the spoilt file. After a crash it lies there still.
void HostileFiles::Read(const char* name, const std::string& good) {
  content_ = spoiler_.Spoil(good);
  rig_.folder.Write(name, content_);
}

void HostileFiles::Settings() {
  const ProgramFolder good;
  Read("browser.ini", good.Read("browser.ini"));
  const std::string whole = good.Read("browser.ini");
  try {
    rig_.program.preferences.LoadIni(rig_.program);
  } catch (const Failure&) {
    rig_.program.slot.Abandon();
    rig_.folder.Write("browser.ini", whole);
    throw;
  }
  rig_.folder.Write("browser.ini", whole);
}

void HostileFiles::SkinSettings() {
  Read("skins/Own/skin.ini",
       "[name]\r\nOwn\r\n\r\n[animation]\r\n100\r\n[menutext]\r\n&hFF00FF\r\n[title]\r\n0\r\n[tabtext]\r\n-"
       "1\r\n");
  rig_.main().skin.LoadSkin(rig_.program.AppPath + Own);
  rig_.main().ResizeForm();
}

void HostileFiles::SkinPicture() {
  const char* names[] = {"skins/Own/titlebar.bmp", "skins/Own/left.bmp", "skins/Own/1.bmp",
                         "skins/Own/preview.bmp"};
  Read(names[spoiler_.Below(std::size(names))],
       BmpFile(21, 13, [](int x, int y) { return static_cast<uint32_t>(x * y); }));
  rig_.main().skin.LoadSkin(rig_.program.AppPath + Own);
  rig_.main().ResizeForm();
}

void HostileFiles::TypedList() {
  Read("autocomplete.dat", Lines);
  rig_.main().skin.LoadSkin(rig_.program.AppPath + Own);
  rig_.main().address.Combo1->SetText("h");
  rig_.main().address.Combo1->KeyUp('H');
  rig_.main().address.SaveComplete();
}

void HostileFiles::Launch() {
  Read("launch.dat", "Editor\r\n/usr/bin/editor -x \"a b\"\r\nOther,one\r\n/bin/other\r\n");
  rig_.main().launch.FillMenu();
  Check(rig_.main().launch.lstLaunchNames.size() == rig_.main().launch.lstLaunchRun.size());
}

void HostileFiles::Templates() {
  const ProgramFolder good;
  Read("history.dat", good.Read("history.dat"));
  rig_.main().log.UpDateHistory(0);
  rig_.program.slot.Abandon();
  rig_.main().history.OpenHistory();
}

void HostileFiles::DayPage() {
  const ProgramFolder good;
  rig_.folder.Write("history.dat", good.Read("history.dat"));
  const std::string day = "history/" + DayPageName(rig_.desktop.now);
  Read(day.c_str(), "<h1>x</h1>\r\n<a href=\"http://a.test/\">A</a><br>\r\n" + Lines);
  rig_.main().log.UpDateHistory(0);
  rig_.program.slot.Abandon();
  rig_.main().history.OpenHistory();
}

void HostileFiles::Layout() {
  Read("mine.tab", "<Tab Layout File>\r\n" + Lines);
  rig_.main().layouts.RestoreTabLayout(rig_.folder.path + "/mine.tab");
  DropTabs();
}

void HostileFiles::DropTabs() {
  TabSet& tabs = rig_.tabs();
  while (tabs.WebBrowser1.UBound() > MostTabs) {
    tabs.CurrentTab = static_cast<int16_t>(tabs.WebBrowser1.UBound());
    tabs.DelTab();
  }
}

void HostileFiles::Shortcut() {
  Read("favourites/a.url",
       "[InternetShortcut]\r\nURL=http://a.test/\r\nIconIndex=1\r\n[{000214A0}]\r\nProp3=19,2\r\n");
  AddressInShortcut(rig_.folder.path + "/favourites/a.url");
  ReadBookmarks(rig_.folder.path + "/favourites");
}

void HostileFiles::BookmarkFile() {
  Read("bookmarks.html",
       "<!DOCTYPE NETSCAPE-Bookmark-file-1>\n<META CHARSET=UTF-8><DL><p><DT><H3>F</H3><DL><p><DT><A "
       "HREF=\"http://a.test/\" ICON=\"data:x\">A &amp; B</A></DL><p><DT><A HREF=javascript:x>C</A></DL>");
  ReadBookmarks(rig_.folder.path + "/bookmarks.html");
}

void HostileFiles::HandedOver() {
  const Request good{Request::What::Tab, "http://a.test/", "x_TIME1"};
  const std::optional<Request> read = Request::Unpack(spoiler_.Spoil(good.Packed()));
  if (!read) throw Failure("No request");
  rig_.Do([&] { Check(rig_.desktop.HandedOver(read->address)); });
  DropTabs();
}
