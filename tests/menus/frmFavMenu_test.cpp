#include "menus/frmFavMenu.h"

#include <gtest/gtest.h>

#include "menus/FavRig.h"

namespace {

void ExpectPlace(const Control& control, const Place& place) {
  EXPECT_EQ(control.Left, place.Left);
  EXPECT_EQ(control.Top, place.Top);
  EXPECT_EQ(control.Width, place.Width);
  EXPECT_EQ(control.Height, place.Height);
}

TEST(frmFavMenu, OpensBelowItsLabelWithTheFixedRows) {
  FavRig rig;
  rig.Folder("Zoo");
  rig.Folder("art");
  rig.Link("b");
  rig.Link("A");
  rig.Over(rig.bar().labFavs);
  EXPECT_EQ(rig.Windows(), 0u);
  rig.OpenFavourites();
  frmFavMenu& top = rig.top();
  ASSERT_TRUE(top.Visible);
  EXPECT_EQ(rig.state().OpenMenuName, "favourites");
  EXPECT_EQ(rig.state().FavOpenPath(), rig.Source());
  EXPECT_EQ(top.Top, rig.main().Top + 300 + 95 + 195);
  EXPECT_EQ(top.Left, rig.main().Left + 1680);
  EXPECT_EQ(rig.Captions(top.labFolder), "art,Zoo");
  EXPECT_EQ(rig.Captions(top.labMenuItem), "A,b");
  EXPECT_EQ(top.labAdd.Top, 120);
  EXPECT_EQ(top.labOrganise.Top, 345);
  EXPECT_EQ(top.picSpacer.Top, 570);
  EXPECT_EQ(top.labFolder(0).Top, 735);
  EXPECT_EQ(top.labMenuItem(1).Top, 735 + 3 * 225);
  EXPECT_EQ(top.picLink(1).Top, top.labMenuItem(1).Top);
  EXPECT_EQ(top.picArrow(1).Left, top.Width - 90 - 210);
  EXPECT_EQ(top.labFolder(1).Width, top.Width);
  EXPECT_EQ(top.Height, 735 + 4 * 225 + 120);
  EXPECT_FALSE(top.picScroll.Visible);
  ExpectPlace(top.frame.picBotRight, {top.Width - 30, top.Height - 30, 30, 30});
  // Nothing of the program is started by looking: no file is read.
  EXPECT_TRUE(rig.Asked().empty());
  // Over the label again the window stays the one that it is.
  rig.Over(rig.bar().labFavs, 45);
  EXPECT_EQ(&rig.top(), &top);
}

TEST(frmFavMenu, SizesToEveryMixtureOfRows) {
  FavRig rig;
  for (const bool as_top : {true, false})
    for (const int folders : {0, 1, 3})
      for (const int links : {0, 1, 4}) {
        const std::string name = std::to_string(folders) + "-" + std::to_string(links);
        rig.Folder(name);
        for (int i = 0; i < folders; ++i) rig.Folder(name + "/f" + std::to_string(i));
        for (int i = 0; i < links; ++i) rig.Link(name + "/l" + std::to_string(i));
        frmFavMenu& window = rig.Fill("\\" + name, as_top);
        // The unused row of either kind counts for one.
        const int rows = links > 0 ? folders + links : std::max(folders, 1);
        EXPECT_EQ(window.Height, (as_top ? 735 : 120) + 225 * rows + 120) << name << as_top;
        EXPECT_EQ(rig.Captions(window.labFolder), folders == 0 ? "" : folders == 1 ? "f0" : "f0,f1,f2");
        EXPECT_EQ(window.labAdd.Visible, as_top);
        EXPECT_FALSE(window.Visible);
      }
  // Alone, the two heights of a window with nothing in it.
  frmFavMenu& empty = rig.Fill("\\nowhere", false);
  EXPECT_EQ(empty.Height, 465);
  EXPECT_EQ(rig.Fill("\\nowhere", true).Height, 1080);
  EXPECT_EQ(rig.Captions(empty.labMenuItem), "[empty]");
  EXPECT_FALSE(empty.labMenuItem(0).Enabled);
  empty.Show();
  rig.Over(empty.labMenuItem(0));
  EXPECT_EQ(rig.Highlights(empty), "");
}

TEST(frmFavMenu, IsAsWideAsItsWidestCaption) {
  FavRig rig;
  rig.Link("x");
  rig.Folder("one/i");
  frmFavMenu& links = rig.Fill("", false);
  EXPECT_EQ(links.Width, 720 + std::max(300.0, links.TextWidth("one")));
  // A window without folders is no narrower than the text of the row that it doesn't show.
  frmFavMenu& folderless = rig.Fill("\\one\\i", false);
  EXPECT_EQ(folderless.Width, 720 + folderless.TextWidth("Folder List"));
  EXPECT_EQ(rig.Fill("\\one", false).Width, 1020);
  const std::string widest(200, 'W');
  rig.Link("one/i/" + widest);
  frmFavMenu& wide = rig.Fill("\\one\\i", true);
  EXPECT_EQ(wide.Width, 720 + wide.TextWidth(widest));
  EXPECT_EQ(wide.labAdd.Width, wide.Width - 720);
}

TEST(frmFavMenu, TakesItsArtAndColoursFromTheSkin) {
  FavRig rig;
  rig.Folder("f");
  rig.Link("l");
  rig.program.colours.MenuTextColour = 0x112233;
  rig.program.colours.MenuHiBackColour = 0x445566;
  frmFavMenu& window = rig.Fill("", true);
  const Skin& skin = rig.main().skin;
  EXPECT_EQ(window.picFolder(0).Picture(), skin.picFolder.Picture());
  EXPECT_EQ(window.picLink(0).Picture(), skin.picLink.Picture());
  EXPECT_EQ(window.picArrow(0).Picture(), skin.picArrow.Picture());
  EXPECT_EQ(window.picScrollUp.Picture(), skin.picScrollUp.Picture());
  EXPECT_EQ(window.labMenuItem(0).ForeColor, 0x112233);
  window.Show();
  rig.Over(window.labFolder(0));
  EXPECT_EQ(window.labFolder(0).BackColor, 0);
  EXPECT_EQ(window.labFolder(0).ForeColor, rig.program.colours.MenuHiTextColour);
  EXPECT_EQ(window.picArrow(0).Picture(), skin.picArrowHi.Picture());
  // The highlight reaches past the edge, and the frame lies over it.
  const Control& edge = window.At(window.Width - 15, window.labFolder(0).Top + 100);
  EXPECT_EQ(&edge, &window.frame.picRight);
}

TEST(frmFavMenu, EndsOnAWholeRowAboveTheScreensBottom) {
  FavRig rig;
  for (int i = 0; i < 100; ++i) rig.Link((i < 10 ? "0" : "") + std::to_string(i));
  // The screen's bottom is at 11550. 44 rows fit over the strip, and the strip's height comes back to them.
  frmFavMenu& top = rig.Fill("", true, 590);
  EXPECT_TRUE(top.picScroll.Visible);
  EXPECT_TRUE(top.labMenuItem(43).Visible);
  EXPECT_FALSE(top.labMenuItem(44).Visible);
  EXPECT_FALSE(top.picLink(44).Visible);
  EXPECT_EQ(top.Height, 735 + 44 * 225 + 120 + 210);
  ExpectPlace(top.labScroll, {0, top.Height - 30 - 210, top.Width, 210});
  EXPECT_EQ(top.picScroll.Left, top.Width / 2 - 105);
  frmFavMenu& deeper = rig.Fill("", false, 590);
  EXPECT_EQ(deeper.Height, 120 + 46 * 225 + 120 + 210);
  // With no room for a row: the two floors.
  EXPECT_EQ(rig.Fill("", true, 11500).Height, 1215);
  EXPECT_EQ(rig.Fill("", false, 11500).Height, 600);
  EXPECT_EQ(rig.Fill("", false, 99999).Height, 600);
  // By folders alone it is the same.
  for (int i = 0; i < 100; ++i) rig.Folder("folders/" + std::to_string(100 + i));
  EXPECT_EQ(rig.Fill("\\folders", true, 590).Height, top.Height);
}

TEST(frmFavMenu, ScrollsToBothEnds) {
  FavRig rig;
  for (int i = 0; i < 100; ++i) rig.Link((i < 10 ? "0" : "") + std::to_string(i));
  frmFavMenu& top = rig.Fill("", true, 590);
  top.Show();
  const Twips height = top.Height;
  rig.Over(top.labScroll);
  EXPECT_EQ(top.picMenuBack.Top, -225);
  EXPECT_EQ(top.picMenuBack.Height, height + 225);
  EXPECT_TRUE(top.picScrollUp.Visible);
  EXPECT_FALSE(top.labAdd.Visible);
  EXPECT_TRUE(top.labOrganise.Visible == (top.labOrganise.Top >= 225 + 210));
  EXPECT_EQ(top.frame.picTop.Top, 225);
  EXPECT_EQ(top.frame.picBottom.Top, height + 225 - 30);
  EXPECT_EQ(top.picScrollUp.Top, 255);
  int steps = 1;
  for (; top.picScroll.Visible && steps < 200; ++steps) rig.Click(top.picScroll);
  EXPECT_EQ(top.picMenuBack.Top, -225 * steps);
  EXPECT_FALSE(top.labScroll.Visible);
  EXPECT_TRUE(top.labMenuItem(99).Visible);
  EXPECT_EQ(top.Height, height);
  // The first row on view begins below the upper strip.
  for (int i = 0; i < 100; ++i) {
    if (!top.labMenuItem(i).Visible) continue;
    EXPECT_GE(top.labMenuItem(i).Top, 225 * steps + 210);
    EXPECT_LT(top.labMenuItem(i).Top, 225 * steps + 210 + 225);
    break;
  }
  // The wheel is as good as the strips, and stops at both ends.
  rig.desktop.Gate.Run([&] { top.MouseWheel(5); });
  EXPECT_EQ(top.picMenuBack.Top, -225 * steps);
  rig.desktop.Gate.Run([&] { top.MouseWheel(-2); });
  EXPECT_EQ(top.picMenuBack.Top, -225 * (steps - 2));
  EXPECT_TRUE(top.picScroll.Visible);
  rig.Over(top.picScrollUp);
  EXPECT_EQ(top.picMenuBack.Top, -225 * (steps - 3));
  rig.desktop.Gate.Run([&] { top.MouseWheel(-500); });
  EXPECT_EQ(top.picMenuBack.Top, 0);
  EXPECT_EQ(top.picMenuBack.Height, height);
  EXPECT_FALSE(top.picScrollUp.Visible);
  EXPECT_TRUE(top.labAdd.Visible);
  EXPECT_TRUE(top.labMenuItem(43).Visible);
  EXPECT_FALSE(top.labMenuItem(44).Visible);
  EXPECT_EQ(top.frame.picTop.Top, 0);
}

}  // namespace
