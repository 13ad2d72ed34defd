#include "menus/frmMenu.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>

#include "fakes/BmpFile.h"
#include "menus/MenuRig.h"

namespace {

void ExpectPlace(const Control& control, const Place& place) {
  EXPECT_EQ(control.Left, place.Left);
  EXPECT_EQ(control.Top, place.Top);
  EXPECT_EQ(control.Width, place.Width);
  EXPECT_EQ(control.Height, place.Height);
}

uint32_t PixelOf(MenuRig& rig, int x, int y) {
  const PixelRect whole = rig.menu().PixelBounds();
  std::vector<uint32_t> pixels(static_cast<size_t>(whole.Width * whole.Height));
  const PixelRect all{0, 0, whole.Width, whole.Height};
  rig.desktop.Draws().Compose({pixels.data(), whole.Width, whole.Height}, rig.menu().Describe(), {all});
  return pixels[static_cast<size_t>(y * whole.Width + x)];
}

TEST(frmMenu, FramesASingleRow) {
  MenuRig rig;
  rig.Open(rig.bar().Label4);
  frmMenu& menu = rig.menu();
  EXPECT_EQ(menu.Width, 1980);
  EXPECT_EQ(menu.Height, 465);
  ExpectPlace(menu.mnuText(0), {240, 120, 1500, 225});
  ExpectPlace(menu.frame.picTopLeft, {0, 0, 30, 30});
  ExpectPlace(menu.frame.picTop, {0, 0, 1980, 30});
  ExpectPlace(menu.frame.picTopRight, {1950, 0, 30, 30});
  ExpectPlace(menu.frame.picRight, {1950, 0, 30, 465});
  ExpectPlace(menu.frame.picBotRight, {1950, 435, 30, 30});
  ExpectPlace(menu.frame.picBottom, {0, 435, 1980, 30});
  ExpectPlace(menu.frame.picBotLeft, {0, 435, 30, 30});
  ExpectPlace(menu.frame.picLeft, {0, 0, 30, 465});
  EXPECT_FALSE(menu.picSpacer(0).Visible);
  // The skin's art, the corners over the edges.
  const Skin& skin = rig.main().skin;
  EXPECT_EQ(PixelOf(rig, 0, 0), skin.picMnuTopLeft.Picture()->Pixels[0]);
  EXPECT_EQ(PixelOf(rig, 4, 4), [&] {
    const Bitmap& back = *skin.picMnuBack.Picture();
    return back.Pixels[static_cast<size_t>(4 % back.Height * back.Width + 4 % back.Width)];
  }());
}

TEST(frmMenu, WearsEachPieceOfTheSkinInItsPlace) {
  MenuRig rig;
  // A colour of its own for each.
  const std::vector<std::string> art = {"topleft", "top",     "topright", "right",  "botright",
                                        "bottom",  "botleft", "left",     "spacer", "background"};
  const auto colour = [&art](const std::string& name) {
    return 0xFF102030 +
           0x151005 * static_cast<uint32_t>(std::find(art.begin(), art.end(), name) - art.begin());
  };
  for (const std::string& name : art)
    rig.folder.Write("skins/A/mnu" + name + ".bmp", BmpFile(3, 3, [&](int, int) { return colour(name); }));
  rig.main().skin.LoadSkin(rig.folder.path + "\\skins\\A");
  rig.desktop.Gate.Run([&] { rig.main().menus.ShowMenu(0, 0, "One,-,Two"); });
  // 132 pixels wide, 54 high; the line stands between the rows, 23 to 30 pixels down.
  const int right = 131, bottom = 53;
  ASSERT_EQ(rig.menu().PixelBounds(), (PixelRect{0, 0, right + 1, bottom + 1}));
  const std::vector<std::tuple<int, int, const char*>> points = {{0, 0, "topleft"},
                                                                 {1, 1, "topleft"},
                                                                 {2, 0, "top"},
                                                                 {right - 2, 1, "top"},
                                                                 {right, 0, "topright"},
                                                                 {right - 1, 1, "topright"},
                                                                 {right, 2, "right"},
                                                                 {right, bottom - 2, "right"},
                                                                 {right, bottom, "botright"},
                                                                 {2, bottom, "bottom"},
                                                                 {right - 2, bottom - 1, "bottom"},
                                                                 {0, bottom, "botleft"},
                                                                 {0, 2, "left"},
                                                                 {1, bottom - 2, "left"},
                                                                 {2, 2, "background"},
                                                                 {4, 23, "spacer"},
                                                                 {right - 4, 30, "spacer"},
                                                                 {3, 25, "background"},
                                                                 {60, 31, "background"}};
  for (const auto& [x, y, name] : points)
    EXPECT_EQ(PixelOf(rig, x, y), colour(name)) << name << x << " " << y;
}

TEST(frmMenu, StacksRowsAndSeparators) {
  MenuRig rig;
  rig.desktop.Gate.Run([&] { rig.main().menus.ShowMenu(15, 30, "-,Save,-,,-"); });
  frmMenu& menu = rig.menu();
  ASSERT_EQ(menu.mnuText.UBound(), 4);
  // The first row stays a row whatever it reads; an empty caption is a row like any other.
  const Twips tops[] = {120, 345, 570, 690, 915}, heights[] = {225, 225, 120, 225, 120};
  for (int i = 0; i < 5; ++i) {
    ExpectPlace(menu.mnuText(i), {240, tops[i], 1500, heights[i]});
    EXPECT_EQ(menu.mnuText(i).Visible, i != 2 && i != 4);
  }
  EXPECT_EQ(menu.Height, 915 + 120 + 120);
  ASSERT_EQ(menu.picSpacer.UBound(), 3);
  ExpectPlace(menu.picSpacer(0), {60, 120, 1860, 225});
  ExpectPlace(menu.picSpacer(2), {60, 915, 1860, 120});
  EXPECT_TRUE(menu.picSpacer(2).Visible);
  EXPECT_FALSE(menu.picSpacer(3).Visible);
  // A second menu doesn't open over the first.
  rig.desktop.Gate.Run([&] { rig.main().menus.ShowMenu(0, 0, "Other"); });
  EXPECT_EQ(rig.Rows(), "-,Save,-,,-");
  EXPECT_EQ(menu.Left, 15);
}

TEST(frmMenu, FollowsTheMouse) {
  MenuRig rig;
  rig.program.colours.MenuTextColour = 0x112233;
  rig.Open(rig.bar().mnuFile);
  frmMenu& menu = rig.menu();
  const auto highlighted = [&menu] {
    int found = -1;
    for (int i = 0; i <= menu.mnuText.UBound(); ++i)
      if (menu.mnuText(i).Opaque) found = found == -1 ? i : 99;
    return found;
  };
  EXPECT_EQ(menu.mnuText(3).ForeColor, 0x112233);
  rig.Over(menu.mnuText(3));
  EXPECT_EQ(highlighted(), 3);
  EXPECT_EQ(menu.mnuText(3).ForeColor, rig.program.colours.MenuHiTextColour);
  EXPECT_EQ(menu.mnuText(3).BackColor, rig.program.colours.MenuHiBackColour);
  rig.Over(menu.mnuText(7));
  EXPECT_EQ(highlighted(), 7);
  EXPECT_EQ(menu.mnuText(3).ForeColor, 0x112233);
  rig.Over(menu, 60, 200);
  EXPECT_EQ(highlighted(), -1);
  rig.Over(menu.mnuText(0));
  rig.Click(menu.picSpacer(0));
  EXPECT_EQ(highlighted(), -1);
  EXPECT_TRUE(rig.IsOpen());
  EXPECT_TRUE(rig.Asked().empty());
}

TEST(frmMenu, RunsARowWhileItIsStillOnTheScreen) {
  MenuRig rig;
  rig.Open(rig.bar().mnuFile);
  rig.main().toolbar.ResetButtons(3);
  rig.desktop.files = {""};
  rig.ClickRow(2);
  EXPECT_EQ(rig.Asked().front().substr(0, 8), "ShowOpen");
  EXPECT_FALSE(rig.program.popup_menu.Loaded());
  EXPECT_EQ(rig.state().MenuMode, 0);
  EXPECT_EQ(rig.state().MenuItemIndex, 2);
  EXPECT_EQ(rig.Highlighted(), "");
  EXPECT_TRUE(rig.ToolbarRests());

  // A command whose dialog takes the focus ends the menu under its own click.
  rig.Open(rig.bar().mnuFile);
  rig.desktop.during_events = [&] {
    EXPECT_TRUE(rig.IsOpen());
    rig.PressOutside();
  };
  rig.ClickRow(0);
  rig.desktop.during_events = nullptr;
  EXPECT_FALSE(rig.program.popup_menu.Loaded());
  EXPECT_EQ(rig.main().tabs.CurrentTab, 1);
}

TEST(frmMenu, TakesTitlesAndListsOfAnyLength) {
  MenuRig rig;
  rig.Page(0).title = std::string(100000, 'W') + "\n\xFF";
  rig.Open(rig.bar().Label5);
  ASSERT_TRUE(rig.IsOpen());
  EXPECT_LE(rig.menu().Width, 33300);
  rig.PressOutside();
  std::string launch;
  for (int i = 0; i < 40000; ++i) launch += "x\r\ny\r\n";
  rig.folder.Write("launch.dat", launch);
  rig.Open(rig.bar().Label3);
  ASSERT_TRUE(rig.IsOpen());
  EXPECT_GT(rig.menu().mnuText.UBound(), 2000);
  EXPECT_LE(rig.menu().PixelBounds().Height, 32767);
}

}  // namespace
