#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "fakes/BmpFile.h"
#include "fakes/Rig.h"

// The whole window's pixels, under a skin of bitmaps of one colour each.

namespace {

constexpr uint32_t ProgressColour = 0xC0FFEE;  // 0xRRGGBB

// A colour of its own for each row of the catalogue and each frame of the animation behind it.
uint32_t ColourOf(size_t row) {
  const auto n = static_cast<uint32_t>(row);
  return (n * 3 + 20) << 16 | (250 - n * 2) << 8 | (n * 41 + 7) % 256;
}

uint32_t ColourOf(const std::string& file) {
  for (size_t row = 0; row < Skin::Bitmaps.size(); ++row)
    if (Skin::Bitmaps[row].File == file) return ColourOf(row);
  return ColourOf(Skin::Bitmaps.size() + static_cast<size_t>(std::stoi(file)));
}

class WindowPicture : public testing::Test, protected Rig {
 protected:
  // Each bitmap in the size of the built-in one.
  void WearFlatSkin() {
    const auto write = [this](const std::string& file) {
      const Picture size = desktop.Draws().BuiltInPicture(file);
      folder.Write("skins/flat/" + file,
                   BmpFile(size->Width, size->Height, [&](int, int) { return ColourOf(file); }));
    };
    for (const Skin::Bitmap& row : Skin::Bitmaps) write(row.File);
    for (int frame = 1; frame <= 9; ++frame) write(std::to_string(frame) + ".bmp");
    folder.Write("skins/flat/skin.ini", "[animation]\r\n50\r\n");
    skin().LoadSkin(folder.path + "\\skins\\flat");
    frame().picProgress.BackColor = 0xEEFFC0;  // the same, red in the low byte
    main().ResizeForm();
  }

  struct Point {
    int X, Y;
    std::string File;
  };
  void Expect(const std::vector<Point>& points) {
    const std::vector<uint32_t> pixels = Pixels();
    const int width = main().PixelBounds().Width;
    for (const auto& [x, y, file] : points) {
      const uint32_t pixel =
          pixels[static_cast<size_t>(y) * static_cast<size_t>(width) + static_cast<size_t>(x)];
      EXPECT_EQ(pixel & 0xFFFFFF, ColourOf(file)) << file << " at " << x << ", " << y;
    }
  }
  uint32_t At(int x, int y) {
    return Pixels()[static_cast<size_t>(y) * static_cast<size_t>(main().PixelBounds().Width) +
                    static_cast<size_t>(x)] &
           0xFFFFFF;
  }
};

TEST_F(WindowPicture, HasEachBitmapInItsPlace) {
  OpenTabs(1);
  ShowTab(0);
  WearFlatSkin();
  ASSERT_EQ(main().PixelBounds(), (PixelRect{0, 0, 707, 454}));
  Expect({// Corners over edges over bars.
          {0, 0, "topleft.bmp"},
          {4, 4, "topleft.bmp"},
          {5, 2, "titlebar.bmp"},
          {701, 2, "titlebar.bmp"},
          {702, 0, "topright.bmp"},
          {706, 4, "topright.bmp"},
          {0, 449, "botleft.bmp"},
          {4, 453, "botleft.bmp"},
          {5, 453, "bottom.bmp"},
          {687, 449, "bottom.bmp"},
          {688, 434, "botright.bmp"},
          {706, 453, "botright.bmp"},
          {706, 433, "right.bmp"},
          {702, 5, "right.bmp"},
          {701, 25, "9.bmp"},
          {0, 5, "left.bmp"},
          {4, 448, "left.bmp"},
          // Bars, from the top.
          {5, 19, "titlebar.bmp"},
          {500, 19, "titlebar.bmp"},
          {5, 20, "menubar.bmp"},
          {600, 43, "menubar.bmp"},
          {652, 30, "menubar.bmp"},
          {653, 20, "9.bmp"},
          {701, 43, "9.bmp"},
          {6, 44, "buttonbar.bmp"},
          {6, 78, "buttonbar.bmp"},
          {400, 80, "browsertop.bmp"},
          {701, 100, "browsertop.bmp"},
          {300, 434, "statusbar.bmp"},
          {687, 448, "statusbar.bmp"},
          // Title bar buttons: minimise touches maximise, close stands off.
          {654, 10, "titlebar.bmp"},
          {655, 5, "minbutton.bmp"},
          {669, 19, "minbutton.bmp"},
          {670, 5, "maxbutton.bmp"},
          {684, 19, "maxbutton.bmp"},
          {686, 10, "titlebar.bmp"},
          {687, 5, "closebutton.bmp"},
          {701, 19, "closebutton.bmp"},
          // Toolbar, with the odd steps before the last two buttons.
          {13, 45, "backflat.bmp"},
          {45, 77, "backflat.bmp"},
          {46, 61, "forwardflat.bmp"},
          {79, 61, "refreshflat.bmp"},
          {112, 61, "stopflat.bmp"},
          {145, 61, "newtabflat.bmp"},
          {178, 61, "deltabflat.bmp"},
          {211, 61, "historyflat.bmp"},
          {243, 61, "historyflat.bmp"},
          {244, 61, "Searchflat.bmp"},
          {276, 77, "Searchflat.bmp"},
          {278, 61, "buttonbar.bmp"},
          {645, 61, "buttonbar.bmp"},
          {646, 44, "tableft.bmp"},
          {670, 78, "tableft.bmp"},
          {671, 44, "tabright.bmp"},
          {695, 78, "tabright.bmp"},
          {696, 61, "buttonbar.bmp"},
          // Tabs.
          {5, 83, "tabselected.bmp"},
          {154, 84, "tabselected.bmp"},
          {156, 84, "tabnotselected.bmp"},
          {304, 84, "tabnotselected.bmp"},
          {306, 84, "browsertop.bmp"},
          {5, 81, "browsertop.bmp"}});
}

TEST_F(WindowPicture, FollowsTheMouseAndThePages) {
  OpenTabs(6);
  WearFlatSkin();
  Toolbar& toolbar = main().toolbar;
  const auto bounds = [](const Control& control) { return control.PixelBounds(); };
  const char* hover[] = {"backbutton.bmp",   "forwardbutton.bmp", "refreshbutton.bmp", "stopbutton.bmp",
                         "newtabbutton.bmp", "deltabbutton.bmp",  "historybutton.bmp", "searchbutton.bmp"};
  const char* down[] = {"backdown.bmp",   "forwarddown.bmp", "refreshdown.bmp", "stopdown.bmp",
                        "newtabdown.bmp", "deltabdown.bmp",  "historydown.bmp", "searchdown.bmp"};
  for (int i = 0; i < 8; ++i) {
    const PixelRect button = bounds(toolbar.picButton(i));
    Over(toolbar.picButton(i));
    Expect({{button.Left, button.Top, hover[i]}, {button.Left + 32, button.Top + 32, hover[i]}});
    Press(toolbar.picButton(i));
    Expect({{button.Left, button.Top, down[i]}});
    Release(toolbar.picButton(i), -30, -30);
  }
  Over(frame().picTabRight);
  Expect({{675, 50, "tabrighthi.bmp"}, {650, 50, "tableft.bmp"}});
  Click(frame().picTabRight);
  Over(frame().picTabLeft);
  Expect({{675, 50, "tabright.bmp"}, {650, 50, "tablefthi.bmp"}, {6, 84, "tabnotselected.bmp"}});
  for (const auto& [button, file] : {std::pair{&frame().picMin, "minbuttonDown.bmp"},
                                     {&frame().picMax, "maxbuttonDown.bmp"},
                                     {&frame().picClose, "closebuttonDown.bmp"}}) {
    Press(*button);
    Expect({{bounds(*button).Left + 7, 12, file}});
    Release(*button, -3000, 30);
  }
  desktop.Advance(5);
  Page(6).busy = true;
  Do([this] { Page(6).DownloadBegin(); });
  desktop.Advance(5);
  for (int step = 0; step < 10; ++step) {
    Expect({{670, 30, std::to_string(step == 0 ? 1 : (step - 1) % 8 + 1) + ".bmp"}});
    desktop.Advance(50);
  }
  EXPECT_EQ(At(600, 440), ColourOf("statusbar.bmp"));
  Do([this] { Page(6).ProgressChange(50, 100); });
  EXPECT_EQ(At(587, 436), ProgressColour);
  EXPECT_EQ(At(632, 447), ProgressColour);
  EXPECT_NE(At(632, 448), ProgressColour);
  // The rest of its place is a trough with an edge, neither the bar nor the colour of the progress.
  for (const int x : {633, 679}) {
    EXPECT_NE(At(x, 440), ColourOf("statusbar.bmp"));
    EXPECT_NE(At(x, 440), ProgressColour);
  }
  Do([this] { Page(6).ProgressChange(-1, 0); });
  EXPECT_EQ(At(633, 440), ColourOf("statusbar.bmp"));
}

// How far the colour of a text stands off what it may lie on: the picture's rows from `top` on, as high as a
// line and without the ends. 1 to 21.
double LeastContrast(Colour text, const Bitmap& ground, int top) {
  const auto light = [](uint32_t pixel) {
    const auto part = [pixel](int shift) { return std::pow((pixel >> shift & 255) / 255.0, 2.2); };
    return 0.2126 * part(16) + 0.7152 * part(8) + 0.0722 * part(0) + 0.05;
  };
  constexpr int LineHeight = 13, Ends = 8;  // pixels
  double least = 21;
  for (int y = top; y < std::min(top + LineHeight, ground.Height); ++y)
    for (int x = std::min(Ends, ground.Width - 1); x < std::max(ground.Width - Ends, 1); ++x) {
      const double a = light(ToPixel(text));
      const double b = light(ground.Pixels[static_cast<size_t>(y * ground.Width + x)]);
      least = std::min(least, std::max(a, b) / std::min(a, b));
    }
  return least;
}

TEST_F(WindowPicture, CanBeReadInTheBuiltInSkin) {
  const Colours& colours = program.colours;
  const Bitmap highlight{1, 1, {ToPixel(colours.MenuHiBackColour)}};
  EXPECT_GE(LeastContrast(colours.MenuHiTextColour, highlight, 0), 4.5);
  EXPECT_GE(LeastContrast(colours.MenuTextColour, *skin().picMenuBar.Picture(), 6), 4.5);
  EXPECT_GE(LeastContrast(colours.MenuTextColour, *skin().picMnuBack.Picture(), 0), 4.5);
  EXPECT_GE(LeastContrast(colours.TabTextColour, *skin().picTabSelected.Picture(), 2), 4.5);
  EXPECT_GE(LeastContrast(colours.TabTextDisabledColour, *skin().picTabNotSelected.Picture(), 6), 4.5);
  EXPECT_GE(LeastContrast(frame().StatusBar1.ForeColor, *skin().picStatusBar.Picture(), 1), 4.5);
  EXPECT_GE(LeastContrast(frame().labCaption.ForeColor, *skin().picTitleBar.Picture(), 5), 4.5);
  EXPECT_GE(LeastContrast(frame().picProgress.BackColor, *skin().picStatusBar.Picture(), 2), 3);
}

TEST_F(WindowPicture, FollowsTheSizeOfTheWindow) {
  WearFlatSkin();
  Do([this] { main().Sized(1001 * TwipsPerPixel, 333 * TwipsPerPixel); });
  Expect({{1000, 0, "topright.bmp"},
          {1000, 332, "botright.bmp"},
          {981, 332, "bottom.bmp"},
          {0, 332, "botleft.bmp"},
          {1000, 200, "right.bmp"},
          {981, 10, "closebutton.bmp"},
          {964, 10, "maxbutton.bmp"},
          {970, 60, "tabright.bmp"},
          {900, 320, "statusbar.bmp"},
          {500, 90, "browsertop.bmp"},
          {970, 30, "9.bmp"}});
}

TEST_F(WindowPicture, IsNotPaintedAnewWhereItLooksTheSame) {
  OpenTabs(3);
  Page(3).title = "On show";
  Page(1).title = "Behind";
  desktop.Advance(2000);
  Over(main().toolbar.picButton(2));
  Over(tabs().picTab(0));
  Do([this] { main().frame.Form_Resize(); });
  DisplayList shown = main().Describe();
  const auto damage = [&] {
    DisplayList wanted = main().Describe();
    const std::vector<PixelRect> rects = Damage(shown, wanted);
    shown = std::move(wanted);
    return rects;
  };
  desktop.Advance(2000);
  EXPECT_TRUE(damage().empty()) << "a tick of the strip's timer";
  for (const Twips x : {30, 300, 3000}) Over(frame().CoolBar1, x, 15);
  Over(tabs().picTab(1), 90, 90);
  EXPECT_TRUE(damage().empty()) << "moves of the mouse";
  for (int twice = 0; twice < 2; ++twice) Do([this] { main().toolbar.ResetButtons(-1); });
  Do([this] { tabs().UpdateBrowsers(); });
  Do([this] { main().ResizeForm(); });
  desktop.Advance(20000);
  EXPECT_TRUE(damage().empty());
  // And it is where it does not.
  Page(1).title = "Another";
  desktop.Advance(2000);
  const std::vector<PixelRect> changed = damage();
  EXPECT_FALSE(changed.empty());
  for (const PixelRect& rect : changed) EXPECT_TRUE(tabs().picTab(1).PixelBounds().Contains(rect));
}

}  // namespace
