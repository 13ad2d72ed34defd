#include "menus/MenuBar.h"

#include <gtest/gtest.h>

#include "menus/MenuRig.h"

namespace {

TEST(MenuBar, HighlightsUnderTheMouseAndOpensNothingBeforeAClick) {
  MenuRig rig;
  EXPECT_EQ(rig.Highlighted(), "");
  for (Label* label : rig.Labels()) {
    EXPECT_LE(rig.main().TextWidth(label->Caption()), label->Width) << label->Caption();
    rig.Over(*label);
    EXPECT_EQ(rig.Highlighted(), label->Caption());
    EXPECT_EQ(label->ForeColor, rig.program.colours.MenuHiTextColour);
  }
  EXPECT_EQ(rig.bar().mnuFile.ForeColor, rig.program.colours.MenuTextColour);
  EXPECT_FALSE(rig.program.popup_menu.Loaded());
  rig.Click(rig.bar().Label1);
  EXPECT_FALSE(rig.program.popup_menu.Loaded());
  rig.Over(rig.bar().Label1);
  EXPECT_TRUE(rig.IsOpen());
  EXPECT_EQ(rig.state().OpenMenuName, "edit");
  EXPECT_EQ(rig.state().MenuLoaded, 1);
}

TEST(MenuBar, SlidesFromMenuToMenuInOneMove) {
  MenuRig rig;
  rig.folder.Write("launch.dat", "Editor\r\nedit\r\n");
  rig.Page(0).title = "News";
  rig.main().Move(150, 75);
  rig.Open(rig.bar().mnuFile);
  const std::vector<std::string> rows = {
      "New Tab,New Window,Open...,Save as...,-,Remove Tab,-,Print...,-,Work Offline,Close",
      "Cut,Copy,Paste,-,Select All,-,Find (on this page) ...",
      "Forward,Back,Stop,Refresh,-,History,Search,-,Source,-,Cookies...,-,Browser Options...,Internet "
      "Options...",
      "",
      "Customise,-,Editor",
      "Save Tab Layout...,Restore Tab Layout...,-,1. News",
      "About..."};
  const std::vector<std::string> names = {"file", "edit", "view", "favourites", "launch", "tabs", "help"};
  // There and back again.
  for (const size_t i : {0, 1, 2, 3, 4, 5, 6, 5, 4, 3, 2, 1, 0}) {
    Label& label = *rig.Labels()[i];
    rig.Over(label);
    EXPECT_EQ(rig.state().OpenMenuName, names[i]);
    EXPECT_EQ(rig.state().MenuMode, 1);
    EXPECT_EQ(rig.Highlighted(), label.Caption());
    EXPECT_EQ(rig.IsOpen(), names[i] != "favourites");
    EXPECT_EQ(rig.state().MenuLoaded, rig.IsOpen());
    if (!rig.IsOpen()) continue;
    EXPECT_EQ(rig.Rows(), rows[i]);
    EXPECT_EQ(rig.menu().Left, 150 + label.Left);
    EXPECT_EQ(rig.menu().Top, 75 + 300 + label.Top + label.Height);
    // Further moves leave the window alone.
    rig.menu().ToolTipText = "this one";
    rig.Over(label, 45, 45);
    EXPECT_EQ(rig.menu().ToolTipText(), "this one");
  }
}

TEST(MenuBar, HasItsLabelsWhereTheyBelong) {
  MenuRig rig;
  const int lefts[] = {8, 40, 72, 112, 176, 224, 264}, widths[] = {24, 25, 31, 57, 44, 32, 30};
  const PixelRect strip = rig.main().frame.Picture9.PixelBounds();
  for (size_t i = 0; i < 7; ++i) {
    const Label& label = *rig.Labels()[i];
    const PixelRect place = label.PixelBounds();
    EXPECT_EQ(place.Left - strip.Left, lefts[i]) << label.Caption();
    EXPECT_EQ(place.Width, widths[i]) << label.Caption();
    EXPECT_EQ(label.Height, 195) << label.Caption();
    EXPECT_EQ(label.Top, &label == &rig.bar().labFavs ? 95 : 90) << "one stands a little lower";
    // The text is in the middle.
    const DisplayList list = rig.main().Describe();
    const auto item = std::find_if(list.begin(), list.end(),
                                   [&](const DrawItem& drawn) { return drawn.Control == &label; });
    ASSERT_NE(item, list.end());
    const double text = rig.main().TextWidth(label.Caption()) / TwipsPerPixel;
    EXPECT_NEAR(item->Texts.at(0).X - place.Left, (place.Width - text) / 2, 1) << label.Caption();
  }
}

TEST(MenuBar, EndsAsTheDesktopReportsIt) {
  MenuRig rig;
  rig.state().FavOpenPath = "somewhere";
  rig.Open(rig.bar().mnuFile);
  EXPECT_EQ(rig.state().FavOpenPath(), "") << "the favourites give way";
  rig.main().toolbar.ResetButtons(3);
  rig.PressOutside();
  EXPECT_TRUE(rig.ToolbarRests());
  EXPECT_FALSE(rig.program.popup_menu.Loaded());
  EXPECT_EQ(rig.state().MenuMode, 0);
  EXPECT_EQ(rig.state().OpenMenuName, "");
  EXPECT_EQ(rig.Highlighted(), "");
  rig.Over(rig.bar().mnuFile);
  EXPECT_FALSE(rig.program.popup_menu.Loaded());

  // A click on the open menu's own label: the press ends the menu, the click brings it back at the next move.
  rig.Open(rig.bar().mnuFile);
  rig.PressOutside();
  rig.Click(rig.bar().mnuFile);
  EXPECT_FALSE(rig.program.popup_menu.Loaded());
  rig.Over(rig.bar().mnuFile);
  EXPECT_TRUE(rig.IsOpen());

  // The lost focus alone keeps the menu mode.
  rig.desktop.Gate.Run([&] { rig.menu().LostFocus(); });
  EXPECT_FALSE(rig.program.popup_menu.Loaded());
  EXPECT_EQ(rig.state().MenuLoaded, 0);
  EXPECT_EQ(rig.state().OpenMenuName, "");
  EXPECT_EQ(rig.state().MenuMode, 1);
  rig.Over(rig.bar().Label1);
  EXPECT_TRUE(rig.IsOpen());
}

TEST(MenuBar, WhatIsReportedOfAMenuThatHasGoneEndsNoOther) {
  MenuRig rig;
  rig.Open(rig.bar().mnuFile);
  rig.desktop.Gate.Run([&] {
    frmMenu& gone = rig.menu();
    rig.Over(rig.bar().Label1);
    gone.Deactivate();
    gone.LostFocus();
  });
  EXPECT_TRUE(rig.IsOpen());
  EXPECT_EQ(rig.state().OpenMenuName, "edit");
  EXPECT_EQ(rig.state().MenuMode, 1);
}

TEST(MenuBar, SweepsItsHighlightWithinTenSeconds) {
  MenuRig rig;
  rig.desktop.Advance(10000);
  EXPECT_FALSE(rig.main().toolbar.TimerMenus.Enabled);
  rig.Over(rig.bar().Label4);
  rig.desktop.Advance(9000);
  rig.Over(rig.bar().Label4);
  EXPECT_EQ(rig.Highlighted(), "Help");
  rig.desktop.Advance(1000);
  EXPECT_EQ(rig.Highlighted(), "");
  EXPECT_FALSE(rig.main().toolbar.TimerMenus.Enabled);
  rig.Over(rig.bar().Label4);
  rig.Over(rig.main().frame.Picture9, 6000, 100);
  EXPECT_EQ(rig.Highlighted(), "");
  EXPECT_TRUE(rig.main().toolbar.TimerMenus.Enabled);
  // The favourites stand by themselves: no sweep while they are open.
  rig.Open(rig.bar().labFavs);
  EXPECT_FALSE(rig.main().toolbar.TimerMenus.Enabled);
}

TEST(MenuBar, OpensOnAWideDesktopAndOverADeadPage) {
  MenuRig rig;
  rig.main().Move(60000, -300);
  rig.Page(0).offline = true;
  rig.Open(rig.bar().mnuFile);
  EXPECT_EQ(rig.menu().Left, 60120);
  EXPECT_NE(rig.Rows().find("Work Online"), std::string::npos);
  rig.PressOutside();
  rig.main().tabs.CurrentTab = 7;
  rig.Open(rig.bar().mnuFile);
  EXPECT_NE(rig.Rows().find("Work Offline"), std::string::npos);
}

TEST(MenuBar, OpensByName) {
  MenuRig rig;
  for (Label* label : rig.Labels()) {
    EXPECT_EQ(label->AccessibleRole, Role::MenuLabel);
    EXPECT_EQ(label->AccessibleName, label->Caption());
  }
  rig.desktop.Gate.Run([&] { rig.bar().Label4.PressByName(); });
  ASSERT_TRUE(rig.IsOpen());
  EXPECT_EQ(rig.menu().mnuText(0).AccessibleName, "About...");
  rig.desktop.Gate.Run([&] { rig.menu().mnuText(0).PressByName(); });
  EXPECT_FALSE(rig.program.popup_menu.Loaded());
  EXPECT_EQ(rig.Asked().at(0), "Show frmAbout");
}

}  // namespace
