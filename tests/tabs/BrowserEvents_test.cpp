#include <gtest/gtest.h>

#include <climits>

#include "fakes/Rig.h"

namespace {

class PageEvents : public testing::Test, protected Rig {
 protected:
  // The page begins to load, or has ended it; its timer sees that 5 ms later.
  void Load(int index) {
    Page(index).busy = true;
    Do([&] { Page(index).DownloadBegin(); });
  }
  void Progress(int index, long progress, long maximum) {
    Do([&] { Page(index).ProgressChange(progress, maximum); });
  }
  std::string Status(int index, const std::string& text) {
    Do([&] { Page(index).StatusTextChange(text); });
    return frame().StatusBar1.Caption;
  }
  // The frame on show, -1 for none of them.
  int Frame() {
    for (int i = 0; i <= 8; ++i)
      if (frame().Picture3.Picture() == skin().PicStore(i).Picture()) return i;
    return -1;
  }
};

TEST_F(PageEvents, AnimateWhileAPageIsBusy) {
  desktop.Advance(5);
  EXPECT_FALSE(tabs().Timer1(0).Enabled);
  Load(0);
  EXPECT_EQ(Frame(), 0);
  desktop.Advance(5);
  for (const int frame : {0, 1, 2, 3, 4, 5, 6, 7, 0, 1}) {
    desktop.Advance(200);
    EXPECT_EQ(Frame(), frame);
  }
  Page(0).busy = false;
  desktop.Advance(5);
  EXPECT_EQ(Frame(), 8);
  EXPECT_FALSE(main().events.Timer2.Enabled);
  Load(0);
  desktop.Advance(205);
  EXPECT_EQ(Frame(), 2) << "goes on where it was";
  main().ResizeForm();
  EXPECT_EQ(Frame(), 8);
  desktop.Advance(200);
  EXPECT_EQ(Frame(), 0);
}

TEST_F(PageEvents, StopTheAnimationForAllAndTakeItUpAgain) {
  OpenTabs(1);
  for (const int index : {0, 1}) Load(index);
  desktop.Advance(5);
  desktop.Advance(200);
  Page(1).busy = false;
  Do([this] { main().events.Timer1_Timer(1); });
  EXPECT_EQ(Frame(), 8);
  EXPECT_FALSE(main().events.Timer2.Enabled);
  desktop.Advance(5);
  EXPECT_TRUE(main().events.Timer2.Enabled);
  EXPECT_TRUE(tabs().Timer1(0).Enabled);
  EXPECT_FALSE(tabs().Timer1(1).Enabled);
}

TEST_F(PageEvents, TellTheLogOfTheEndOfALoad) {
  const auto recorded = [this](const char* address) {
    return folder.Read("history/22 November 2026.htm").find(address) != std::string::npos;
  };
  for (const char* address : {"http://one.test/", "http://two.test/"}) {
    Load(0);
    Page(0).url = address;
    Do([this] { Page(0).DocumentComplete(); });
    desktop.Advance(100);
    EXPECT_FALSE(recorded(address));
    Page(0).busy = false;
    desktop.Advance(5);
    EXPECT_TRUE(recorded(address));
  }
}

TEST_F(PageEvents, LogAPageBehindUnderItsOwnAddress) {
  OpenTabs(1);
  desktop.Advance(5);
  Page(0).url = "http://behind.test/";
  Page(1).url = "http://shown.test/";
  Load(0);
  Page(0).busy = false;
  desktop.Advance(5);
  const std::string day = folder.Read("history/22 November 2026.htm");
  EXPECT_NE(day.find("\"http://behind.test/\""), day.npos);
  EXPECT_EQ(day.find("http://shown.test/"), day.npos);
}

TEST_F(PageEvents, SweepADeadPageAway) {
  OpenTabs(3);
  ShowTab(1);
  for (const int index : {2, 1}) {
    Load(index);
    Page(index).dead = true;
    desktop.Advance(5);
    EXPECT_FALSE(tabs().WebBrowser1.Has(index) || tabs().picTab.Has(index) || tabs().Timer1.Has(index));
    EXPECT_EQ(tabs().CurrentTab, index == 1 ? 3 : 1);
  }
  desktop.Advance(4000);
  EXPECT_EQ(tabs().WebBrowser1.UBound(), 3);
  // The only page left besides the first, without a button: what can go, goes.
  Do([this] { Page(3).OnQuit(); });
  Page(3).dead = true;
  Do([this] { main().events.Timer1_Timer(3); });
  EXPECT_EQ(tabs().CurrentTab, 0);
  EXPECT_EQ(tabs().WebBrowser1.UBound(), 0);
}

TEST_F(PageEvents, NeverLoseTheFirstTab) {
  OpenTabs(1);
  ShowTab(0);
  Load(0);
  Page(0).dead = true;
  desktop.Advance(220);
  EXPECT_TRUE(tabs().picTab.Has(0) && tabs().Timer1.Has(0));
  EXPECT_EQ(tabs().CurrentTab, 0) << "it is still the one on show";
  EXPECT_FALSE(tabs().Timer1(0).Enabled || main().events.Timer2.Enabled) << "nothing is left to watch";
  EXPECT_EQ(Frame(), 8);
  // The element is usable again: the end of its next load is seen as ever.
  Page(0).dead = false;
  Load(0);
  desktop.Advance(5);
  EXPECT_TRUE(tabs().Timer1(0).Enabled);
  Page(0).busy = false;
  desktop.Advance(5);
  EXPECT_FALSE(tabs().Timer1(0).Enabled);
  EXPECT_EQ(Frame(), 8);
}

TEST_F(PageEvents, ShowProgressOfAnyKind) {
  struct Case {
    long progress, maximum;
    bool visible;
    Twips width;
  };
  for (const auto& [progress, maximum, visible, width] :
       {Case{50, 100, true, 690}, Case{0, 100, false, 690}, Case{1, 3, true, 460}, Case{200, 100, true, 1380},
        Case{-1, 0, false, 1380}, Case{1, 3, true, 460}, Case{-1, 100, false, 460}, Case{7, 0, false, 460},
        Case{LONG_MAX, 1, true, 1380}, Case{LONG_MIN, 1, false, 1380}, Case{0, 0, false, 1380},
        Case{-1, -10, true, 138}, Case{100, 100, true, 1380}}) {
    Progress(0, progress, maximum);
    EXPECT_EQ(frame().picProgress.Visible, visible) << progress << " of " << maximum;
    EXPECT_DOUBLE_EQ(frame().picProgress.Width, width) << progress << " of " << maximum;
  }
}

TEST_F(PageEvents, RepairThePageOnShowForTheProgressOfAnother) {
  OpenTabs(1);
  Progress(1, 50, 100);
  Page(1).Width = 100;
  Page(0).Height = 100;
  Progress(0, 90, 100);
  EXPECT_EQ(Page(1).Width, 10455);
  EXPECT_EQ(Page(0).Height, 100);
  EXPECT_EQ(frame().picProgress.Width, 690);
  Progress(0, 0, 100);
  EXPECT_TRUE(frame().picProgress.Visible);
}

TEST_F(PageEvents, CutAStatusTextThatIsTooWide) {
  OpenTabs(1);
  const Twips W = main().TextWidth("W");
  const std::string text = "Opening a page with a long name: äöü 🙂🙂🙂🙂";
  frame().StatusBar1.Width = main().TextWidth(text);
  EXPECT_EQ(Status(1, text), text);
  // Halves go to the even number of characters.
  frame().StatusBar1.Width = W * 6.5;
  EXPECT_EQ(Status(1, text), "Openin...");
  frame().StatusBar1.Width = W * 7.5;
  EXPECT_EQ(Status(1, text), "Opening ...");
  EXPECT_EQ(Status(0, "from behind"), "Opening ...");
  EXPECT_EQ(Status(1, "🙂🙂🙂🙂🙂🙂🙂🙂🙂🙂🙂🙂🙂🙂🙂🙂"),
            "🙂🙂🙂🙂🙂🙂🙂🙂...");
  EXPECT_EQ(Status(1, ""), "");
}

}  // namespace
