#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "core/Program.h"
#include "core/frmMain.h"
#include "fakes/FakeDesktop.h"

namespace {

class Layouts : public testing::Test {
 protected:
  Layouts() { program.Start(); }

  TabSet& tabs() { return program.main().tabs; }
  std::string File(const std::string& name) const { return folder.path + "/" + name; }
  void Save(const std::string& name) { program.main().layouts.SaveTabLayout(File(name)); }
  void Restore(const std::string& name) { program.main().layouts.RestoreTabLayout(File(name)); }

  // The addresses of the live tabs with their indices.
  std::string Open() {
    std::string open;
    for (const int16_t i : tabs().ListLiveTabs())
      open += std::to_string(i) + " " + tabs().WebBrowser1(i).LocationURL() + "\n";
    return open;
  }

  const ProgramFolder folder;
  FakeDesktop desktop{folder.path};
  Program program{desktop};
};

TEST_F(Layouts, SaveAndRestoreClosesTheHoles) {
  tabs().WebBrowser1(0).Navigate("http://zero.test/");
  for (const char* address : {"about:blank", "http://two.test/", "http://ä.test/ 3"}) tabs().AddTab(address);
  tabs().CurrentTab = 2;
  tabs().DelTab();
  Save("a b.tab");
  EXPECT_EQ(folder.Read("a b.tab"),
            "<Tab Layout File>\r\nhttp://zero.test/\r\nabout:blank\r\nhttp://ä.test/ 3\r\n");
  tabs().AddTab("http://four.test/");
  Restore("a b.tab");
  EXPECT_EQ(Open(), "0 http://zero.test/\n1 about:blank\n2 http://ä.test/ 3\n");
  EXPECT_EQ(tabs().CurrentTab, 0);
  EXPECT_EQ(program.main().frame.Picture1.Children().back(), &tabs().WebBrowser1(0)) << "on show";
}

TEST_F(Layouts, AsksBeforeItReplacesAFile) {
  folder.Write("old.tab", "precious");
  desktop.answers = {Answer::No, Answer::Yes};
  Save("old.tab");
  EXPECT_EQ(desktop.log.back(), "MsgBox Overwrite file?|The File already exists.\n\nOverwrite?");
  EXPECT_EQ(folder.Read("old.tab"), "precious");
  Save("old.tab");
  EXPECT_EQ(folder.Read("old.tab"), "<Tab Layout File>\r\n\r\n");
}

TEST_F(Layouts, APathIsTakenAsItIsSpelt) {
  folder.Write("work.tab", "precious");
  tabs().WebBrowser1(0).Navigate("http://zero.test/");
  for (const char* name : {"Work.tab", "a\\b.tab"}) {
    Save(name);
    EXPECT_EQ(folder.Read(name), "<Tab Layout File>\r\nhttp://zero.test/\r\n");
    EXPECT_NE(desktop.log.back().substr(0, 6), "MsgBox") << name;
  }
  EXPECT_EQ(folder.Read("work.tab"), "precious");
  tabs().WebBrowser1(0).Navigate("http://other.test/");
  Restore("WORK.tab");
  EXPECT_EQ(Open(), "0 http://other.test/\n");
  Restore("a\\b.tab");
  EXPECT_EQ(Open(), "0 http://zero.test/\n");
}

TEST_F(Layouts, RestoreGoesOnWhereTheUserClosesATab) {
  folder.Write("four.tab", "<Tab Layout File>\na\nb\nc\nd\n");
  desktop.during_events = [&] {
    if (tabs().WebBrowser1.UBound() != 3) return;
    tabs().CurrentTab = 1;
    tabs().DelTab();
  };
  EXPECT_NO_THROW(Restore("four.tab"));
  EXPECT_EQ(Open(), "0 a\n2 c\n3 d\n");
  EXPECT_EQ(tabs().CurrentTab, 0);
}

TEST_F(Layouts, SaveEndsSilentlyWhereNothingCanBeWritten) {
  EXPECT_NO_THROW(Save("no such folder/x.tab"));
  std::filesystem::create_directory(File("folder.tab"));
  EXPECT_NO_THROW(Save("folder.tab"));
  EXPECT_FALSE(program.slot.IsOpen());
}

TEST_F(Layouts, RestoreLeavesTheTabsAloneWhereTheFileIsNoLayout) {
  tabs().AddTab("http://one.test/");
  tabs().AddTab("http://two.test/");
  const std::string open = Open();
  folder.Write("other.tab", "<Tab Layout File> \r\nhttp://x.test/\r\n");
  folder.Write("binary.tab", std::string("\0\xFF\x80<Tab", 7));
  for (const char* name : {"missing.tab", "other.tab", "binary.tab", "history"}) Restore(name);
  EXPECT_EQ(Open(), open);
  EXPECT_EQ(tabs().CurrentTab, 2);
  EXPECT_FALSE(program.slot.IsOpen());

  // A file of no bytes keeps the slot, and with it every other file from being read.
  folder.Write("empty.tab", "");
  Restore("empty.tab");
  EXPECT_EQ(Open(), open);
  EXPECT_TRUE(program.slot.IsOpen());
  EXPECT_EQ(program.general.ReadIniKey(program.AppPath + "\\browser.ini", "popups"), "");
}

TEST_F(Layouts, RestoreTakesAHeaderAloneAndOneAddressAndManyOnes) {
  tabs().WebBrowser1(0).Navigate("http://zero.test/");
  tabs().AddTab("http://one.test/");
  folder.Write("header.tab", "<TAB LAYOUT FILE>");
  Restore("header.tab");
  EXPECT_EQ(Open(), "0 http://zero.test/\n");
  folder.Write("one.tab", "<tab layout file>\nhttp://one.test/");
  Restore("one.tab");
  EXPECT_EQ(Open(), "0 http://one.test/\n");

  std::string many = "<Tab Layout File>\r\n", open;
  for (int i = 0; i < 200; ++i) {
    // Empty lines are addresses too.
    const std::string address = i % 50 ? "http://test/" + std::to_string(i) : "";
    many += address + "\r\n";
    open += std::to_string(i) + " " + address + "\n";
  }
  folder.Write("many.tab", many);
  for (int round = 0; round < 2; ++round) {
    Restore("many.tab");
    EXPECT_EQ(Open(), open);
    EXPECT_EQ(tabs().CurrentTab, 0);
  }
}

}  // namespace
