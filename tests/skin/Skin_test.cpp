#include <gtest/gtest.h>

#include <algorithm>

#include "core/Program.h"
#include "core/frmMain.h"
#include "fakes/BmpFile.h"
#include "fakes/FakeDesktop.h"
#include "skin/TileBitmapModule.h"

namespace {

// Writes down what is asked for, and lets a test look on at that moment.
class WatchedDrawing : public Drawing {
 public:
  using Drawing::LoadPicture;
  Picture LoadPicture(const std::string& path, int64_t most) override {
    files.push_back(path.substr(path.rfind('\\') + 1));
    if (watch) watch(files.back());
    return real->LoadPicture(path, most);
  }
  Picture BuiltInPicture(const std::string& name) override { return real->BuiltInPicture(name); }
  double TextWidth(std::string_view text) override { return real->TextWidth(text); }
  double LineHeight() override { return real->LineHeight(); }
  void Compose(const Canvas& canvas, const DisplayList& list, const std::vector<PixelRect>& rects) override {
    real->Compose(canvas, list, rects);
  }

  std::vector<std::string> files;
  std::function<void(const std::string&)> watch;
  const std::unique_ptr<Drawing> real = MakeDrawing();
};

class SkinTest : public testing::Test {
 protected:
  SkinTest() {
    desktop.drawing = std::make_unique<WatchedDrawing>();
    program.Start();
    Watched().files.clear();
  }

  WatchedDrawing& Watched() { return static_cast<WatchedDrawing&>(*desktop.drawing); }
  void WriteBitmap(const std::string& file, int width) {
    folder.Write("skins/" + file, BmpFile(width, 1, [](int, int) { return 0u; }));
  }
  void Load(const std::string& name) { skin.LoadSkin(folder.path + "\\skins\\" + name); }
  void LoadIni(const std::string& text) {
    folder.Write("skins/Ini/skin.ini", text);
    Load("Ini");
  }
  static int WidthOf(const Surface& surface) { return surface.Picture() ? surface.Picture()->Width : 0; }

  const ProgramFolder folder;
  FakeDesktop desktop{folder.path};
  Program program{desktop};
  frmMain& main = program.main();
  Skin& skin = main.skin;
  Colours& colours = program.colours;
};

TEST_F(SkinTest, LoadsInOrderAndHandsOnWhatIsShown) {
  int width = 100;
  for (const Skin::Bitmap& row : Skin::Bitmaps) WriteBitmap(std::string("A/") + row.File, ++width);
  for (int i = 1; i <= 9; ++i) WriteBitmap("A/" + std::to_string(i) + ".bmp", i);
  folder.Write("skins/A/skin.ini", "");
  int arrow_at_row_47 = 0;
  Watched().watch = [&](const std::string& file) {
    if (file == "backbutton.bmp") arrow_at_row_47 = WidthOf(main.frame.picTabRight);
  };
  Load("A");

  const std::vector<std::string>& files = Watched().files;
  ASSERT_EQ(files.size(), 64u + 9u);
  EXPECT_EQ(files[0], "left.bmp");
  EXPECT_EQ(files[41], "Searchflat.bmp");
  EXPECT_EQ(files[45], "tabrighthi.bmp");
  EXPECT_EQ(files[46], "backbutton.bmp");
  EXPECT_EQ(files[63], "tabselected.bmp");
  EXPECT_EQ(files[64], "1.bmp");
  EXPECT_EQ(files[72], "9.bmp");

  EXPECT_EQ(arrow_at_row_47, 144);
  EXPECT_EQ(WidthOf(skin.picLeft), 101);
  EXPECT_EQ(skin.picLeft.Width, 101 * TwipsPerPixel);
  EXPECT_EQ(WidthOf(skin.picMaxButtonDown), 116);
  EXPECT_EQ(WidthOf(skin.picrefreshBut), 138);
  EXPECT_EQ(WidthOf(skin.picSearchDown), 162);
  EXPECT_EQ(WidthOf(skin.picTabNotSelected), 163);
  EXPECT_EQ(WidthOf(skin.PicStore(0)), 1);
  EXPECT_EQ(WidthOf(skin.PicStore(8)), 9);
  EXPECT_EQ(WidthOf(main.frame.picTabLeft), 143);
  EXPECT_EQ(WidthOf(main.frame.picMax), 113);
  EXPECT_EQ(WidthOf(main.frame.picMin), 114);
  EXPECT_EQ(WidthOf(main.frame.picClose), 115);
  EXPECT_EQ(WidthOf(main.toolbar.picButton(7)), 142);
}

TEST_F(SkinTest, WhatIsMissingOrBrokenKeepsItsPicture) {
  const Picture built_in = skin.picBottom.Picture;
  for (const char* file : {"A/left.bmp", "A/right.bmp", "A/menubar.bmp", "A/1.bmp"}) WriteBitmap(file, 7);
  WriteBitmap("B/left.bmp", 8);
  folder.Write("skins/B/right.bmp", "no picture");
  folder.Write("skins/B/menubar.bmp", BmpFile(9, 9, [](int, int) { return 0u; }).substr(0, 100));
  folder.Write("skins/B/bottom.bmp/folder", "");
  Load("A");
  Load("B");
  EXPECT_EQ(WidthOf(skin.picLeft), 8);
  EXPECT_EQ(WidthOf(skin.picRight), 7) << "the skin before, not the built-in one";
  EXPECT_EQ(WidthOf(skin.picMenuBar), 7);
  EXPECT_EQ(skin.picBottom.Picture(), built_in);
  EXPECT_NE(WidthOf(skin.PicStore(0)), 7) << "frames come with a skin.ini only";
  Load("nowhere");
  skin.LoadSkin(folder.path + "\\default");
  EXPECT_EQ(WidthOf(skin.picLeft), 8);
}

TEST_F(SkinTest, AllPicturesTogetherHaveRoomFor64Megapixels) {
  // One bit to the pixel: each is a file of 3 MB that takes 100 MB.
  const std::string large = BmpHeader{5000, 5000, 1, 0, 0, 62}.Text() + std::string(8 + 5000 * 628, '\0');
  for (const char* file : {"left.bmp", "right.bmp", "bottom.bmp"})
    folder.Write(std::string("skins/A/") + file, large);
  WriteBitmap("A/titlebar.bmp", 7);
  const Picture built_in = skin.picBottom.Picture;
  for (int round = 0; round < 2; ++round) {
    Load("A");
    EXPECT_EQ(WidthOf(skin.picRight), 5000);
    EXPECT_EQ(skin.picBottom.Picture(), built_in) << "the third one is past it";
    EXPECT_EQ(WidthOf(skin.picTitleBar), 7) << "a small one still has room";
  }
}

TEST_F(SkinTest, TheAnimationTakesItsIntervalFromTheIni) {
  const auto interval = [&](const std::string& value) {
    main.events.Timer2.Interval = 123;
    LoadIni("[Animation]\r\n" + value + "\r\n");
    return main.events.Timer2.Interval();
  };
  const std::pair<const char*, int> values[] = {{"150", 150},        {" 40 ms", 40}, {"2.5", 2},  {"3.5", 4},
                                                {"&h10 and on", 16}, {"fast", 0},    {"", 0},     {"0", 0},
                                                {"65535", 65535},    {"65536", 123}, {"-1", 123}, {"1e99", 1},
                                                {"&hFFFFFFFFF", 123}};
  for (const auto& [value, expected] : values) EXPECT_EQ(interval(value), expected) << value;
  LoadIni("[menutext]\r\n1\r\n");
  EXPECT_EQ(main.events.Timer2.Interval, 0) << "an ini without the key stops it";
  main.events.Timer2.Interval = 200;
  Load("nowhere");
  EXPECT_EQ(main.events.Timer2.Interval, 200) << "no ini leaves it";
}

TEST_F(SkinTest, ColoursComeInManyForms) {
  const std::pair<const char*, Colour> values[] = {{"&hFF", 255},
                                                   {"&HFF", 255},
                                                   {"255", 255},
                                                   {"  255\t", 255},
                                                   {" &hff0000 ", 0xFF0000},
                                                   {"-1", -1},
                                                   {"-2147483643", SystemColour(5)},
                                                   {"&h80000005", SystemColour(5)},
                                                   {"2.5", 2},
                                                   {"3.5", 4},
                                                   {"+7", 7}};
  for (const auto& [value, expected] : values) {
    LoadIni(std::string("[menutext]\r\n") + value + "\r\n");
    EXPECT_EQ(colours.MenuTextColour, expected) << value;
  }
  colours.MenuTextColour = 42;
  for (const char* value :
       {"", " ", "red", "255 red", "&h", "&hGG", "&h123456789", "2147483648", "2147483653", "- 1"})
    LoadIni(std::string("[menutext]\r\n") + value + "\r\n");
  LoadIni("[menutext] \r\n1\r\n");
  Load("nowhere");
  EXPECT_EQ(colours.MenuTextColour, 42) << "what is no number leaves the colour";
}

TEST_F(SkinTest, EachColourHasItsKeyAndItsMoment) {
  const Colour progress = main.frame.picProgress.BackColor;
  LoadIni(
      "[menuhighlight]\r\n1\r\n[menutext]\r\n99\r\n[menutexthighlight]\r\n3\r\n[tabtext]\r\n4\r\n"
      "[tabtextdisabled]\r\n5\r\n[statustext]\r\n6\r\n[progressbar]\r\n7\r\n[TITLE]\r\n8\r\n[menutext]\r\n2");
  EXPECT_EQ(colours.MenuHiBackColour, 1);
  EXPECT_EQ(colours.MenuTextColour, 2) << "the last one counts, also without a line end";
  EXPECT_EQ(colours.MenuHiTextColour, 3);
  EXPECT_EQ(colours.TabTextColour, 4);
  EXPECT_EQ(colours.TabTextDisabledColour, 5);
  EXPECT_EQ(colours.StatusTextColour, 6);
  EXPECT_EQ(main.frame.StatusBar1.ForeColor, 6);
  EXPECT_EQ(colours.ProgressBarColour, 7);
  EXPECT_EQ(main.frame.labCaption.ForeColor, 8);
  EXPECT_EQ(main.frame.picProgress.BackColor, progress) << "only at the next start";
}

TEST_F(SkinTest, AKeyOnTheLastLineTakesTheSlotFromAllLaterReads) {
  colours.TabTextColour = 42;
  LoadIni("[menuhighlight]\r\n1\r\n[tabtext]\r\n2\r\n[tabtextdisabled]\r\n3\r\n[menutext]");
  EXPECT_EQ(colours.MenuHiBackColour, 1) << "read before";
  EXPECT_EQ(colours.TabTextColour, 42);
  EXPECT_TRUE(program.slot.IsOpen());
  EXPECT_EQ(program.general.ReadIniKey(folder.path + "\\browser.ini", "popups"), "");
  WriteBitmap("A/left.bmp", 7);
  Load("A");
  EXPECT_EQ(WidthOf(skin.picLeft), 7) << "pictures need no slot";
  EXPECT_TRUE(program.slot.IsOpen()) << "whoever didn't open the file doesn't give it back";
}

TEST_F(SkinTest, AnAddressListThatBreaksOffKeepsWhatWasRead) {
  folder.Write("autocomplete.dat", "a.test\r\nb.test\r\nc.test\r\n");
  WriteBitmap("A/left.bmp", 7);
  auto& Combo1 = dynamic_cast<FakeComboBox&>(*main.address.Combo1);
  Combo1.list_changed = [&] {
    if (Combo1.ListCount() == 2) throw Failure("no more");
  };
  Load("A");
  Combo1.list_changed = nullptr;
  ASSERT_EQ(Combo1.ListCount(), 2u);
  EXPECT_EQ(Combo1.List(1), "b.test");
  EXPECT_FALSE(program.slot.IsOpen());
  EXPECT_EQ(WidthOf(skin.picLeft), 7);
}

TEST_F(SkinTest, TilesReplaceWhatWasOnTheSurface) {
  Window window(desktop, Window::Kind::Popup, {0, 0, 150, 60}, "");
  Surface surface(&window, {30, 15, 75, 30});
  Store store(nullptr);
  window.BackColor = 0x0000FF;
  surface.BackColor = 0x00FF00;
  auto bitmap = std::make_shared<Bitmap>(Bitmap{2, 1, {0xFF000001, 0xFF000002}});
  store.Picture = bitmap;
  std::vector<uint32_t> pixels(10 * 4);
  const auto row = [&](int y) {
    desktop.Draws().Compose({pixels.data(), 10, 4, 1}, window.Describe(), {{0, 0, 10, 4}});
    return std::vector<uint32_t>(pixels.begin() + 10 * y, pixels.begin() + 10 * (y + 1));
  };
  constexpr uint32_t red = 0xFFFF0000, green = 0xFF00FF00, one = 0xFF000001, two = 0xFF000002;
  surface.Print("W");
  TileBitmap(surface, store);
  const std::vector<uint32_t> tiled = {red, red, one, two, one, two, one, red, red, red};
  EXPECT_EQ(row(1), tiled);
  EXPECT_EQ(row(2), tiled);
  EXPECT_EQ(row(3), std::vector<uint32_t>(10, red));
  const int before = desktop.repaints;
  TileBitmap(surface, store);
  EXPECT_EQ(desktop.repaints, before) << "what is there already repaints nothing";
  surface.Cls();
  EXPECT_EQ(row(1)[2], green);
  TileBitmapForm(window, store);
  EXPECT_EQ(row(0)[9], two);
  TileBitmap(surface, Store(nullptr));
  EXPECT_EQ(row(1)[2], green) << "a store without a picture only clears";
}

}  // namespace
