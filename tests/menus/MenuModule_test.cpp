#include "menus/MenuModule.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "menus/MenuRig.h"

namespace {

using Texts = std::vector<std::string>;

TEST(MenuCommand, AsksThePageOnShow) {
  MenuRig rig;
  rig.desktop.Gate.Run([&] { rig.main().tabs.AddTab("http://page.test/"); });
  rig.Asked();
  const std::vector<std::pair<std::string, Texts>> expected = {
      {"new window", {"OpenWindow"}},
      {"save as...", {"ExecWB 4 0"}},
      {"page setup...", {}},
      {"print...", {"ShowPrint"}},
      {"properties", {"ShowProperties"}},
      {"work offline", {"Offline"}},
      {"work online", {"Online"}},
      {"cut", {"ExecWB 11 2"}},
      {"copy", {"ExecWB 12 2"}},
      {"paste", {"ExecWB 13 2"}},
      {"select all", {"ExecWB 17 2"}},
      {"find (on this page) ...", {"ShowFind"}},
      {"forward", {"GoForward"}},
      {"back", {"GoBack"}},
      {"stop", {"Stop"}},
      {"refresh", {"Refresh"}},
      {"search", {"Navigate http://search.test/"}},
      {"source", {"Navigate view-source:http://search.test/"}},
      {"internet options...", {"ShowInternetOptions"}},
      {"Cut", {}},
      {"", {}},
  };
  for (const auto& [command, asked] : expected) {
    rig.Command(command);
    EXPECT_EQ(rig.Asked(), asked) << command;
  }
  // The window comes to the front before the page's own dialogs do, and the page has the keyboard.
  for (const char* command : {"print...", "find (on this page) ...", "properties", "new window"}) {
    const int before = rig.desktop.focused;
    rig.desktop.keyboard = nullptr;
    rig.Command(command);
    EXPECT_EQ(rig.desktop.focused, before + 1) << command;
    EXPECT_EQ(rig.desktop.keyboard, &rig.Page(1)) << command;
  }
  rig.Asked();
  rig.Page(1).url = "";
  rig.Command("source");
  EXPECT_EQ(rig.Asked(), Texts{"Navigate view-source:"});

  // A page that has gone costs a notice, not the program; the toolbar's words fail without one.
  for (const bool missing : {false, true}) {
    rig.Page(1).fails = rig.Page(1).dead = true;
    rig.main().tabs.CurrentTab = missing ? 9 : 1;
    for (const auto& [command, asked] : expected) {
      const bool page = !asked.empty() && command != "internet options...";
      const bool word = command == "forward" || command == "back" || command == "stop" ||
                        command == "refresh" || command == "search";
      ASSERT_NO_THROW(rig.Command(command)) << command;
      const Texts log = rig.Asked();
      const auto notices = std::count_if(log.begin(), log.end(),
                                         [](const std::string& line) { return line.starts_with("MsgBox"); });
      EXPECT_EQ(notices, page && !word ? 1 : 0) << command;
    }
  }
}

TEST(MenuCommand, OpensTabsAndFiles) {
  MenuRig rig;
  rig.program.preferences.NewTabMode = 1;
  rig.Command("new tab");
  EXPECT_EQ(rig.Asked(), (Texts{"GoHome", "DoEvents"}));
  EXPECT_EQ(rig.main().tabs.CurrentTab, 1);
  // Into the first tab, while another stays on show.
  rig.desktop.files = {"/tmp/page.html"};
  rig.Command("open...");
  EXPECT_EQ(rig.Asked(),
            (Texts{"ShowOpen Open Local Web Page|Web Pages (*.htm;*.html)|*.htm;*.html|All files "
                   "(*.*)|*.*",
                   "Navigate /tmp/page.html"}));
  EXPECT_EQ(rig.Page(0).url, "/tmp/page.html");
  EXPECT_EQ(rig.main().tabs.CurrentTab, 1);
  for (const char* command : {"open...", "restore tab layout...", "save tab layout..."}) {
    EXPECT_NO_THROW(rig.Command(command));
    EXPECT_EQ(rig.Asked().size(), 1u) << command;
  }
  rig.desktop.files = {"/tmp/page.html"};
  rig.Page(0).fails = true;
  EXPECT_NO_THROW(rig.Command("open..."));
  rig.Command("remove tab");
  EXPECT_EQ(rig.main().tabs.WebBrowser1.UBound(), 0);
}

TEST(MenuCommand, NewTabBesideAPageWithoutItsButtonGoesOn) {
  MenuRig rig;
  rig.Command("new tab");
  rig.main().tabs.picTab.Unload(1);
  rig.Asked();
  EXPECT_NO_THROW(rig.Command("new tab"));
  EXPECT_EQ(rig.Asked().back().substr(0, 6), "MsgBox");
}

TEST(MenuCommand, CloseEndsTheProgram) {
  MenuRig rig;
  rig.Open(rig.bar().mnuFile);
  EXPECT_THROW(rig.ClickRow(10), ProcessEnded);
}

TEST(MenuCommand, OptionsComeUpOverASavedAddressList) {
  MenuRig rig;
  rig.main().address.AddItem("typed.test");
  rig.Command("browser options...");
  EXPECT_EQ(rig.folder.Read("autocomplete.dat"), "typed.test\r\n");
}

TEST(MenuCommand, DialogsStandAndComeToTheFront) {
  MenuRig rig;
  for (const auto& [command, name] :
       {std::pair("browser options...", "frmOptions"), {"about...", "frmAbout"}}) {
    rig.Command(command);
    EXPECT_EQ(rig.Asked().at(0), "Show " + std::string(name));
    rig.Command(command);
    EXPECT_EQ(rig.Asked(), Texts{"SetFocus " + std::string(name)});
  }
}

// Tabs 0, 1, 3 and 4, of which 4 has no title yet, and 5 is dead.
class TabsMenu : public ::testing::Test {
 protected:
  TabsMenu() {
    TabSet& tabs = rig.main().tabs;
    for (int i = 1; i <= 5; ++i) rig.desktop.Gate.Run([&] { tabs.AddTab("http://page.test/"); });
    for (int i = 0; i <= 4; ++i) rig.Page(i).title = i < 4 ? "Page, " + std::to_string(i) : "";
    rig.desktop.Gate.Run([&] { tabs.WebBrowser1.Unload(2); });
    rig.Page(5).dead = true;
    tabs.CurrentTab = 0;
    rig.Open(rig.bar().Label5);
  }
  MenuRig rig;
};

TEST_F(TabsMenu, NumbersTheLiveTabs) {
  EXPECT_EQ(rig.Rows(), "Save Tab Layout...,Restore Tab Layout...,-,1. Page  0,2. Page  1,3. Page  3,4. ");
}

TEST_F(TabsMenu, CountsNoDeadTabBelow) {
  rig.PressOutside();
  rig.Page(1).dead = true;
  rig.Open(rig.bar().Label5);
  EXPECT_EQ(rig.Rows(), "Save Tab Layout...,Restore Tab Layout...,-,1. Page  0,2. Page  3,3. ");
  rig.ClickRow(4);
  EXPECT_EQ(rig.main().tabs.CurrentTab, 3);
}

TEST_F(TabsMenu, ShowsTheTabOfARow) {
  rig.ClickRow(5);
  EXPECT_EQ(rig.main().tabs.CurrentTab, 3);
  rig.Open(rig.bar().Label5);
  rig.ClickRow(6);
  EXPECT_EQ(rig.main().tabs.CurrentTab, 4);
}

TEST_F(TabsMenu, TakesATabThatWentMeanwhileAndNumbersOutOfAnyRange) {
  rig.desktop.Gate.Run([&] { rig.main().tabs.WebBrowser1.Unload(5); });
  rig.desktop.Gate.Run([&] { rig.main().tabs.WebBrowser1.Unload(4); });
  EXPECT_NO_THROW(rig.ClickRow(6));
  rig.state().OpenMenuName = "tabs";
  for (const char* command : {"99999999999. x", "0. x", "-1. x", "no number", "", "."}) rig.Command(command);
  EXPECT_EQ(rig.main().tabs.CurrentTab, 0);
  EXPECT_TRUE(std::none_of(rig.desktop.log.begin(), rig.desktop.log.end(),
                           [](const std::string& line) { return line.starts_with("MsgBox"); }));
}

class LaunchRows : public ::testing::Test {
 protected:
  void Open(const std::string& launch) {
    rig.folder.Write("launch.dat", launch);
    rig.Open(rig.bar().Label3);
  }
  MenuRig rig;
};

TEST_F(LaunchRows, RunTheirCommandAsItStands) {
  Open("Editor\r\n/usr/bin/edit --new \"a b\"\r\n-\r\nnothing\r\nMail\r\nmail\r\n");
  EXPECT_EQ(rig.Rows(), "Customise,-,Editor,-,Mail");
  rig.ClickRow(2);
  EXPECT_EQ(rig.Asked(), Texts{"Shell /usr/bin/edit --new \"a b\""});
  rig.Open(rig.bar().Label3);
  rig.ClickRow(4);
  EXPECT_EQ(rig.Asked(), Texts{"Shell mail"});
  // A file changed meanwhile shows at the next opening.
  Open("Game\r\ngame\r\n");
  EXPECT_EQ(rig.Rows(), "Customise,-,Game");
}

TEST_F(LaunchRows, GiveWayToTheProgramsOwnCommands) {
  Open("Cut\r\nscissors\r\nCustomise\r\ntailor\r\nA,B\r\nfirst\r\n");
  rig.ClickRow(2);
  EXPECT_EQ(rig.Asked(), Texts{"ExecWB 11 2"});
  rig.Open(rig.bar().Label3);
  rig.ClickRow(3);
  EXPECT_EQ(rig.Asked().at(0), "Show frmLaunch");
  // A comma makes two rows of one entry: the first has its command, the second has none left.
  rig.Open(rig.bar().Label3);
  rig.ClickRow(4);
  EXPECT_EQ(rig.Asked(), Texts{"Shell first"});
  rig.Open(rig.bar().Label3);
  EXPECT_NO_THROW(rig.ClickRow(5));
  EXPECT_EQ(rig.Asked().back().substr(0, 6), "MsgBox");
}

TEST_F(LaunchRows, NameTheProgramThatCannotBeStarted) {
  Open("Ghost\r\n/no/such\r\n");
  rig.desktop.no_program = "/no/such";
  try {
    rig.ClickRow(2);
    FAIL();
  } catch (const Failure& failure) {
    const std::string text = failure.what();
    EXPECT_NE(text.find("/no/such"), std::string::npos);
    EXPECT_NE(text.find("/launch.dat"), std::string::npos);
  }
}

TEST_F(LaunchRows, DontOpenFromABrokenFile) {
  Open("Editor\r\nedit\r\nhalf an entry");
  EXPECT_FALSE(rig.program.popup_menu.Loaded());
  EXPECT_FALSE(rig.program.slot.IsOpen());
  EXPECT_EQ(rig.state().OpenMenuName, "launch");
  // The file isn't read again while the mouse stays; a neighbour opens as ever.
  rig.folder.Write("launch.dat", "");
  rig.Over(rig.bar().Label3);
  EXPECT_FALSE(rig.program.popup_menu.Loaded());
  rig.Over(rig.bar().Label5);
  rig.Over(rig.bar().Label3);
  EXPECT_EQ(rig.Rows(), "Customise,-");
  rig.PressOutside();
  std::filesystem::remove(rig.folder.path + "/launch.dat");
  rig.Open(rig.bar().Label3);
  EXPECT_FALSE(rig.program.popup_menu.Loaded());
}

}  // namespace
