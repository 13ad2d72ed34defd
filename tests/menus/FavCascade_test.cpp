#include <gtest/gtest.h>

#include "core/frmDummy.h"
#include "menus/FavRig.h"

namespace {

// favourites: Art/Deep/x, Artist/y, Zoo/z, link
struct Tree : FavRig {
  Tree() {
    Link("Art/Deep/x", "https://x.test/");
    Link("Artist/y");
    Link("Zoo/z");
    Link("link", "https://link.test/?a=b");
    OpenFavourites();
  }
  void Hover(frmFavMenu& window, int folder, int milliseconds = 500) {
    Over(window.labFolder(folder));
    desktop.Advance(milliseconds);
  }
};

TEST(FavCascade, OpensAHoveredFolderBesideItsWindow) {
  Tree rig;
  frmFavMenu& top = rig.top();
  rig.Hover(top, 2, 499);
  EXPECT_EQ(rig.Windows(), 1u);
  rig.desktop.Advance(1);
  frmFavMenu* zoo = rig.Window("\\Zoo");
  ASSERT_TRUE(zoo && zoo->Visible);
  EXPECT_EQ(zoo->Left, top.Left + top.Width - 60);
  EXPECT_EQ(zoo->Top, top.Top + top.labFolder(2).Top - top.labAdd.Top);
  EXPECT_EQ(rig.state().FavOpenPath(), rig.Source("\\Zoo"));
  // The same folder again opens nothing anew.
  rig.Hover(top, 2, 2000);
  EXPECT_EQ(rig.Window("\\Zoo"), zoo);
  EXPECT_EQ(rig.Windows(), 2u);
  // A sibling takes its place.
  rig.Hover(top, 0, 510);
  EXPECT_TRUE(rig.Window("\\Art"));
  EXPECT_FALSE(rig.Window("\\Zoo"));
  // Deeper, level with its row; the rows of a child keep the path.
  frmFavMenu& art = *rig.Window("\\Art");
  rig.Hover(art, 0, 510);
  frmFavMenu* deep = rig.Window("\\Art\\Deep");
  ASSERT_TRUE(deep);
  EXPECT_EQ(deep->Top, art.Top);
  rig.Over(deep->labMenuItem(0));
  rig.desktop.Advance(50);
  EXPECT_EQ(rig.Windows(), 3u);
  // Back over the background of the one before: what is deeper goes.
  rig.Over(art, 45, 60);
  rig.desktop.Advance(10);
  EXPECT_EQ(rig.Windows(), 2u);
  rig.Over(top.labMenuItem(0));
  rig.desktop.Advance(10);
  EXPECT_EQ(rig.Windows(), 1u);
}

TEST(FavCascade, CountsTheDelayFromTheFirstFolderTouched) {
  Tree rig;
  frmFavMenu& top = rig.top();
  rig.Hover(top, 0, 300);
  rig.Hover(top, 2, 200);
  EXPECT_TRUE(rig.Window("\\Zoo"));
  EXPECT_FALSE(rig.Window("\\Art"));
  // Off the folders in time, nothing opens; but the fixed rows let the count go on.
  rig.Hover(top, 0, 300);
  rig.Over(top.labMenuItem(0));
  rig.desktop.Advance(2000);
  EXPECT_EQ(rig.Windows(), 1u);
  rig.Hover(top, 0, 300);
  rig.Over(top.labAdd);
  EXPECT_EQ(rig.Highlights(top), "add");
  rig.desktop.Advance(210);
  EXPECT_TRUE(rig.Window("\\Art"));
}

TEST(FavCascade, KeepsWhatThePathBeginsWith) {
  Tree rig;
  frmFavMenu& top = rig.top();
  rig.Hover(top, 0, 510);
  rig.Hover(top, 1, 510);
  // "Art" is the beginning of "Artist", so both stay.
  EXPECT_TRUE(rig.Window("\\Art"));
  EXPECT_TRUE(rig.Window("\\Artist"));
  // Letter case is the same to the path.
  rig.state().FavOpenPath = rig.Source("\\ARTIST");
  rig.desktop.Advance(10);
  EXPECT_EQ(rig.Windows(), 3u);
  rig.Hover(top, 1, 600);
  EXPECT_EQ(rig.Windows(), 3u);
  rig.state().FavOpenPath = rig.Source("\\ZOO");
  rig.desktop.Advance(10);
  EXPECT_EQ(rig.Windows(), 1u);
}

TEST(FavCascade, EndsWithTheMainWindow) {
  Tree rig;
  rig.Hover(rig.top(), 0, 510);
  rig.desktop.Gate.Run([&] { rig.main().Activate(); });
  rig.desktop.Advance(10);
  EXPECT_EQ(rig.Windows(), 0u);
  EXPECT_EQ(rig.state().MenuMode, 0);
  EXPECT_EQ(rig.Highlighted(), "");
  // What the desktop tells each window at a press elsewhere, and Escape, are the same.
  rig.OpenFavourites();
  rig.desktop.Gate.Run([&] { rig.top().Deactivate(); });
  rig.desktop.Advance(10);
  EXPECT_EQ(rig.Windows(), 0u);
  rig.OpenFavourites();
  rig.Hover(rig.top(), 0, 510);
  bool used = false;
  rig.desktop.Gate.Run([&] { used = rig.main().KeyDown({"Escape"}); });
  rig.desktop.Advance(10);
  EXPECT_TRUE(used);
  EXPECT_EQ(rig.Windows(), 0u);
  EXPECT_EQ(rig.state().MenuMode, 0);
}

TEST(FavCascade, GivesWayToAMenuOfTheBarAndBack) {
  Tree rig;
  rig.Hover(rig.top(), 0, 510);
  rig.Over(rig.bar().Label3);
  EXPECT_TRUE(rig.IsOpen());
  rig.desktop.Advance(10);
  EXPECT_EQ(rig.Windows(), 0u);
  EXPECT_EQ(rig.state().MenuMode, 1);
  EXPECT_EQ(rig.Highlighted(), "Launch");
  rig.Over(rig.bar().labFavs);
  EXPECT_TRUE(rig.top().Visible);
  EXPECT_FALSE(rig.program.popup_menu.Loaded());
  EXPECT_EQ(rig.state().OpenMenuName, "favourites");
  EXPECT_EQ(rig.state().MenuMode, 1);
  rig.desktop.Advance(100);
  EXPECT_EQ(rig.Windows(), 1u);
  EXPECT_EQ(rig.Highlighted(), "Favourites");
}

TEST(FavCascade, LetsNoTimerRunOn) {
  Tree rig;
  rig.Hover(rig.top(), 0, 510);
  rig.desktop.Advance(10);
  // Open and at rest, nothing ticks.
  EXPECT_FALSE(rig.top().Timer1.Enabled);
  EXPECT_FALSE(rig.Window("\\Art")->Timer1.Enabled);
  // The program ends with everything open.
  EXPECT_THROW(rig.desktop.Gate.Run([&] { rig.program.dummy.Unload(); }), ProcessEnded);
  EXPECT_EQ(rig.Windows(), 0u);
}

TEST(FavCascade, OpensAShortcutInTheTabOnShow) {
  Tree rig;
  rig.OpenFavourites();
  Label& row = rig.top().labMenuItem(0);
  rig.Over(row);
  EXPECT_EQ(row.ToolTipText(), "https://link.test/?a=b");
  // It isn't read a second time for the tip.
  rig.Link("link", "https://other.test/");
  rig.Over(row, 45);
  EXPECT_EQ(row.ToolTipText(), "https://link.test/?a=b");
  rig.Asked();
  rig.Click(row);
  EXPECT_EQ(rig.Asked().front(), "Navigate https://other.test/");
  EXPECT_EQ(rig.main().address.Combo1->Text(), "https://other.test/");
  EXPECT_TRUE(rig.main().tabs.Timer1(0).Enabled);
  EXPECT_EQ(rig.state().MenuMode, 0);
  rig.desktop.Advance(10);
  EXPECT_EQ(rig.Windows(), 0u);
}

TEST(FavCascade, AnswersForShortcutsThatAreNone) {
  const std::pair<const char*, const char*> cases[] = {
      {"", ""},
      {"[InternetShortcut]", ""},
      {"[InternetShortcut]\r\n", ""},
      {"[InternetShortcut]\r\nURL", ""},
      {"no section\r\nURL=https://x.test/\r\n", ""},
      {"[InternetShortcut]\r\nURL=", "Navigate "},
      {"[x]\r\n[INTERNETSHORTCUT]\nurl=https://x.test/\n", "Navigate https://x.test/"},
      // Whatever key comes first, four characters of it go.
      {"[InternetShortcut]\r\nIconIndex=0\r\nURL=https://x.test/\r\n", "Navigate Index=0"},
  };
  for (const auto& [content, asked] : cases) {
    FavRig rig;
    rig.folder.Write("favourites/link.url", content);
    rig.OpenFavourites();
    rig.Over(rig.top().labMenuItem(0));
    rig.Asked();
    rig.Click(rig.top().labMenuItem(0));
    const std::vector<std::string> done = rig.Asked();
    ASSERT_FALSE(done.empty()) << content;
    if (*asked)
      EXPECT_EQ(done[0], asked) << content;
    else
      EXPECT_NE(done[0].find("/favourites/link.url\" can't be opened: "), std::string::npos) << done[0];
    // The slot is free for whoever comes next.
    EXPECT_FALSE(rig.program.slot.IsOpen());
    rig.desktop.Advance(10);
    EXPECT_EQ(rig.Windows(), 0u);
  }
  // One that has gone meanwhile.
  Tree rig;
  std::filesystem::remove(rig.folder.path + "/favourites/link.url");
  rig.Over(rig.top().labMenuItem(0));
  EXPECT_EQ(rig.top().labMenuItem(0).ToolTipText(), "");
  rig.Click(rig.top().labMenuItem(0));
  EXPECT_NE(rig.Asked().back().find("No such file"), std::string::npos);
}

TEST(FavCascade, OpensFoldersOfAnyName) {
  FavRig rig;
  rig.Link("bad\xFFname/in\xFE", "https://bytes.test/");
  rig.OpenFavourites();
  EXPECT_EQ(rig.Captions(rig.top().labFolder), "bad\xEF\xBF\xBDname");
  rig.Over(rig.top().labFolder(0));
  rig.desktop.Advance(510);
  frmFavMenu* below = rig.Window("\\bad\xFFname");
  ASSERT_TRUE(below);
  EXPECT_EQ(rig.Captions(below->labMenuItem), "in\xEF\xBF\xBD");
  rig.Click(below->labMenuItem(0));
  EXPECT_EQ(rig.Asked().front(), "Navigate https://bytes.test/");
}

}  // namespace
