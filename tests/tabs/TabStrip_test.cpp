#include <gtest/gtest.h>

#include <cmath>

#include "fakes/Rig.h"
#include "platform/Text.h"

namespace {

std::string Repeat(const std::string& text, int times) {
  std::string all;
  while (times-- > 0) all += text;
  return all;
}

// What a drop carries: plain text, or something else.
class Dropped : public DataObject {
 public:
  explicit Dropped(const char* text) : text_(text) {}
  bool GetFormat(int format) const override { return text_ && format == 1; }
  std::string GetData(int format) const override {
    if (!GetFormat(format)) throw Failure("That format isn't there");
    return text_;
  }

 private:
  const char* text_;
};

class Strip : public testing::Test, protected Rig {
 protected:
  // The lines on a tab's button.
  std::vector<TextRun> Lines(int index, const std::string& title) {
    Page(index).title = title;
    Do([&] { Page(index).TitleChange(); });
    return Shown(tabs().picTab(index)).Texts;
  }
  std::string Caption(int index, const std::string& title) { return Lines(index, title).at(0).Text; }
  void Drop(int index, const char* text) {
    const Control& tab = tabs().picTab(index);
    Do([&] { main().Dropped(Dropped(text), tab.RootLeft() + 30, tab.RootTop() + 30); });
  }
  bool Lit(Surface& arrow, const Store& hover) {
    Over(arrow);
    return arrow.Picture() == hover.Picture();
  }
};

TEST_F(Strip, CutsCaptionsByCharacters) {
  OpenTabs(1);
  const int most = static_cast<int>((2250 - 180) / tabs().picTab(0).TextWidth("0"));
  ASSERT_GT(most, 10);
  for (const char* letter : {"a", "ä", "ש", "🙂", "\x01", "\xff"})
    for (const int index : {0, 1}) {
      EXPECT_EQ(Caption(index, Repeat(letter, most)), Repeat(letter, most));
      EXPECT_EQ(Caption(index, Repeat(letter, most + 1)), Repeat(letter, most - 3) + "...");
    }
}

TEST_F(Strip, CentresCaptionsAndRaisesTheTabOnShow) {
  OpenTabs(1);
  const std::string title = "A page with a title that is cut";
  const PixelRect resting = tabs().picTab(0).PixelBounds(), raised = tabs().picTab(1).PixelBounds();
  const auto centred = [&](const PixelRect& bounds, const std::string& caption) {
    return bounds.Left + 75 - tabs().picTab(0).TextWidth(caption) / TwipsPerPixel / 2;
  };
  const std::vector<TextRun> on_show = Lines(1, title);
  ASSERT_EQ(on_show.size(), 1u);
  EXPECT_DOUBLE_EQ(on_show[0].X, centred(raised, on_show[0].Text));
  EXPECT_EQ(on_show[0].Y, raised.Top + 2);
  EXPECT_EQ(on_show[0].Pixel, ToPixel(program.colours.TabTextColour));
  EXPECT_EQ(program.dummy().Caption(), title);
  EXPECT_EQ(frame().labCaption.Caption(), title);

  // The other tabs have the whole title once more at their foot.
  const std::vector<TextRun> behind = Lines(0, title);
  ASSERT_EQ(behind.size(), 2u);
  EXPECT_DOUBLE_EQ(behind[0].X, centred(resting, behind[0].Text));
  EXPECT_EQ(behind[0].Y, resting.Top + 6);
  EXPECT_EQ(behind[0].Pixel, ToPixel(program.colours.TabTextDisabledColour));
  EXPECT_EQ(behind[1].Text, title);
  EXPECT_EQ(behind[1].X, resting.Left);
  EXPECT_EQ(behind[1].Y, behind[0].Y + tabs().picTab(0).TextHeight() / TwipsPerPixel);
  EXPECT_LT(behind[1].Y, resting.Bottom());
}

TEST_F(Strip, DrawsNoTitleOutsideItsTab) {
  OpenTabs(1);
  Page(0).url = "http://a.test/";
  Lines(0, "");
  const std::vector<uint32_t> before = Pixels();
  const PixelRect tab = tabs().picTab(0).PixelBounds();
  const int width = main().PixelBounds().Width;
  for (const std::string& title : {std::string(10000, 'W'), Repeat("שלום עולם ", 50),
                                   "e" + Repeat("\xcc\x81", 300), Repeat("👩‍👩‍👧‍👦", 20),
                                   std::string("tab\there\r\nand a line\nanother\x01\x7f\0end", 34),
                                   Repeat("\xe2\x80\xae", 30) + "turned", std::string("\xff\xfe\xc3")}) {
    Lines(0, title);
    EXPECT_EQ(tabs().picTab(0).ToolTipText(), title + " (http://a.test/)");
    const std::vector<uint32_t> after = Pixels();
    int outside = 0;
    for (size_t i = 0; i < after.size(); ++i) {
      const int x = static_cast<int>(i) % width, y = static_cast<int>(i) / width;
      const bool inside = x >= tab.Left && x < tab.Right() && y >= tab.Top && y < tab.Bottom();
      outside += before[i] != after[i] && !inside;
    }
    EXPECT_EQ(outside, 0) << title.substr(0, 20);
  }
  Lines(0, "");
  EXPECT_EQ(tabs().picTab(0).ToolTipText(), " (http://a.test/)");
  EXPECT_EQ(Pixels(), before);
}

TEST_F(Strip, ScrollsFiftyTabsToBothEnds) {
  OpenTabs(49);
  Surface& Picture2 = frame().Picture2;
  EXPECT_EQ(Picture2.Left, 80) << "a new tab doesn't scroll the strip";
  const auto last_right = [this] { return tabs().picTab(49).RootLeft() + 2250; };
  int steps = 0;
  for (; Lit(frame().picTabRight, skin().TabRightHi); ++steps) {
    ASSERT_LT(steps, 60);
    EXPECT_GE(last_right(), main().Width);
    Click(frame().picTabRight);
    EXPECT_EQ(Picture2.Left, 80 - 2250 * (steps + 1));
    EXPECT_EQ(Picture2.Width, std::abs(Picture2.Left) + main().Width);
    EXPECT_EQ(Shown(Picture2).Tiles, skin().picBrowserTop.Picture());
  }
  EXPECT_LT(last_right(), main().Width);
  EXPECT_GE(last_right(), main().Width - 2250);
  const Twips end = Picture2.Left;
  Click(frame().picTabRight);
  EXPECT_EQ(Picture2.Left, end);
  // A removal doesn't scroll back, a new width of the window neither.
  Do([this] { tabs().DelTab(); });
  Do([this] { main().Width = 9000; });
  EXPECT_EQ(Picture2.Left, end);

  for (; Lit(frame().picTabLeft, skin().TabLeftHi); --steps) {
    ASSERT_GT(steps, 0);
    Click(frame().picTabLeft);
  }
  EXPECT_EQ(steps, 0);
  EXPECT_EQ(Picture2.Left, 80);
  Click(frame().picTabLeft);
  EXPECT_EQ(Picture2.Left, 80);
}

TEST_F(Strip, StaysWhereAllTabsAreInSight) {
  OpenTabs(2);
  EXPECT_FALSE(Lit(frame().picTabRight, skin().TabRightHi));
  Click(frame().picTabRight);
  EXPECT_EQ(frame().Picture2.Left, 80);
  // The last button's edge exactly on the window's still counts as out of sight.
  Do([this] { main().Width = 80 + 3 * 2250; });
  EXPECT_TRUE(Lit(frame().picTabRight, skin().TabRightHi));
  Do([this] { main().Width = main().Width + 15; });
  EXPECT_FALSE(Lit(frame().picTabRight, skin().TabRightHi));
}

TEST_F(Strip, TakesDroppedTextInTheBackground) {
  OpenTabs(2);
  Drop(1, "http://dropped.test/ as it is");
  EXPECT_EQ(Page(1).url, "http://dropped.test/ as it is");
  EXPECT_EQ(tabs().CurrentTab, 2);
  Drop(1, nullptr);
  EXPECT_EQ(Asked().size(), 1u);
  Page(1).fails = true;
  Drop(1, "http://to.a.dead.page/");
}

TEST_F(Strip, ShowsTheTabThatIsClicked) {
  OpenTabs(2);
  Page(0).url = "http://first.test/";
  Do([this] { main().menubar.ResetMenus(main().menubar.mnuFile); });
  Click(tabs().picTab(0));
  EXPECT_FALSE(main().menubar.mnuFile.Opaque);
  EXPECT_EQ(tabs().CurrentTab, 0);
  EXPECT_EQ(main().address.Combo1->Text(), "http://first.test/");
  Do([this] { main().toolbar.ResetButtons(3); });
  Over(tabs().picTab(1));
  EXPECT_EQ(main().toolbar.picButton(3).Picture(), skin().picStopBut.Picture());
}

}  // namespace
