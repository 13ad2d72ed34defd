#include <gtest/gtest.h>

#include "fakes/Rig.h"

namespace {

using Log = std::vector<std::string>;

class Tabs : public testing::Test, protected Rig {
 protected:
  void DelTab(int index) {
    ShowTab(index);
    Do([this] { tabs().DelTab(); });
  }
  void Quit(int index) {
    Do([&] { Page(index).OnQuit(); });
  }
  // The live tabs with their buttons' places, in tab widths; "-" for a tab without button.
  std::string Strip() {
    std::string strip;
    for (const int16_t i : tabs().ListLiveTabs()) {
      strip += std::to_string(i) + "@";
      strip += tabs().picTab.Has(i) ? std::to_string(static_cast<int>(tabs().picTab(i).Left / 2250)) : "-";
      strip += " ";
    }
    return strip;
  }
  bool InFront(int index) { return frame().Picture1.Children().back() == &Page(index); }
};

TEST_F(Tabs, AreAddedAtTheEndAndShownAtOnce) {
  desktop.during_events = [this] {
    EXPECT_EQ(tabs().CurrentTab, 0);
    EXPECT_EQ(tabs().WebBrowser1.UBound(), 1);
    EXPECT_TRUE(tabs().Timer1(1).Enabled);
    EXPECT_TRUE(tabs().picTab(1).Visible);
    EXPECT_TRUE(Page(1).Visible);
    // The new page may report before it is on show, and its timer may tick.
    Page(1).ProgressChange(10, 100);
    Page(1).TitleChange();
    desktop.Advance(5);
  };
  Do([this] { tabs().AddTab("HOME"); });
  EXPECT_EQ(Asked(), (Log{"GoHome", "DoEvents"}));
  desktop.during_events = nullptr;
  EXPECT_EQ(tabs().CurrentTab, 1);
  EXPECT_EQ(tabs().picTab(1).Top, 60);
  EXPECT_EQ(tabs().picTab(1).Left, 2250);
  EXPECT_EQ(Page(1).Width, 10455);
  EXPECT_EQ(Page(1).Height, 4960);
  EXPECT_TRUE(InFront(1));
  Do([this] { tabs().AddTab(""); });
  EXPECT_EQ(Asked(), (Log{"Navigate ", "DoEvents"}));
}

TEST_F(Tabs, OpenBehindForALinkThatTheUserChose) {
  OpenTabs(3);
  ShowTab(1);
  Quit(3);
  Do([this] { Page(1).LinkChosen("http://a.test/", false); });
  EXPECT_EQ(Asked(), Log{"Navigate http://a.test/"});
  EXPECT_EQ(tabs().CurrentTab, 1);
  EXPECT_TRUE(InFront(1));
  // Beside the last button that there is, at its full size, and watched.
  EXPECT_EQ(tabs().picTab(4).Left, 3 * 2250);
  EXPECT_EQ(Page(4).Width, 10455);
  EXPECT_TRUE(tabs().Timer1(4).Enabled);
  Do([this] { tabs().WebBrowser1.Unload(4); });
  Do([this] { tabs().picTab.Unload(4); });
  Do([this] { tabs().WebBrowser1.Unload(3); });
  Do([this] { desktop.LinkChosen("http://b.test/", true); });
  EXPECT_EQ(tabs().CurrentTab, 3);
  EXPECT_TRUE(InFront(3));
}

TEST_F(Tabs, OpenInFrontForALinkBesideAPageThatClosedItself) {
  OpenTabs(3);
  Quit(3);
  Do([this] { Page(1).LinkChosen("http://a.test/", true); });
  EXPECT_EQ(tabs().CurrentTab, 4);
  EXPECT_TRUE(InFront(4));
  EXPECT_EQ(tabs().picTab(4).Left, 3 * 2250);
}

TEST_F(Tabs, AreRemovedByTheMiddleButtonUnlessTheirPageMinds) {
  OpenTabs(3);
  const auto press = [this](int tab) {
    Press(tabs().picTab(tab), 30, 30, 4);
    Release(tabs().picTab(tab), 30, 30, 4);
  };
  press(1);  // from behind: the one on show stays
  EXPECT_EQ(Strip(), "0@0 2@1 3@2 ");
  EXPECT_EQ(tabs().CurrentTab, 3);
  press(0);
  Page(2).agrees = false;
  press(2);
  EXPECT_EQ(Strip(), "0@0 2@1 3@2 ");
  // Its question is to be seen.
  Do([this] { Page(2).QuestionUp(); });
  EXPECT_EQ(tabs().CurrentTab, 2);
  Page(2).agrees = true;
  press(2);
  EXPECT_EQ(Strip(), "0@0 3@1 ");
  EXPECT_EQ(tabs().CurrentTab, 3);
}

TEST_F(Tabs, LeaveTheWholeScreenWhenAnotherIsShown) {
  OpenTabs(1);
  Page(1).SwitchFullScreen();
  ShowTab(0);
  EXPECT_FALSE(Page(1).full_screen);
}

// The tip that is written last stands: the strip's has the address as it is, the address field's has blanks.
TEST_F(Tabs, TellTheirAddressInTheOrderOfTheirNews) {
  Page(0).title = "Title";
  Page(0).url = "file:///a%20b/";
  for (const auto& news : {Page(0).DocumentComplete, Page(0).TitleChange}) {
    Do(news);
    EXPECT_EQ(tabs().picTab(0).ToolTipText(), "Title (file:///a%20b/)");
  }
  Do([this] { tabs().UpdateBrowsers(); });
  EXPECT_EQ(tabs().picTab(0).ToolTipText(), "Title (file:///a b/)");
}

TEST_F(Tabs, LeaveHolesThatAreNotFilled) {
  OpenTabs(3);
  DelTab(2);
  EXPECT_EQ(Strip(), "0@0 1@1 3@2 ");
  EXPECT_EQ(tabs().CurrentTab, 3);
  EXPECT_TRUE(InFront(3));
  OpenTabs(4);
  EXPECT_EQ(Strip(), "0@0 1@1 3@2 4@3 ");
  DelTab(1);
  EXPECT_EQ(Strip(), "0@0 3@1 4@2 ");
  EXPECT_EQ(tabs().CurrentTab, 4);
}

TEST_F(Tabs, TakeTheHighestIndexAgainOnceItIsFree) {
  OpenTabs(2);
  DelTab(2);
  EXPECT_EQ(tabs().CurrentTab, 1);
  EXPECT_EQ(tabs().WebBrowser1.UBound(), 1);
  OpenTabs(3);
  DelTab(2);
  DelTab(3);
  EXPECT_EQ(tabs().WebBrowser1.UBound(), 1) << "the hole below goes with the last tab";
  OpenTabs(2);
  EXPECT_EQ(Strip(), "0@0 1@1 2@2 ");
}

TEST_F(Tabs, KeepTheFirst) {
  OpenTabs(2);
  DelTab(0);
  EXPECT_EQ(Strip(), "0@0 1@1 2@2 ");
  EXPECT_EQ(tabs().CurrentTab, 0);
  DelTab(2);
  DelTab(1);
  DelTab(0);
  EXPECT_EQ(Strip(), "0@0 ");
  Do([this] { tabs().RemoveAllTabs(); });
  EXPECT_EQ(Strip(), "0@0 ");
}

TEST_F(Tabs, EndAtTheHighestIndex) {
  Do([this] { tabs().WebBrowser1.Load(INT16_MAX); });
  EXPECT_THROW(tabs().AddTab("about:blank"), Failure);
  Do([this] { main().toolbar.ClickBar("New Tab"); });
  EXPECT_EQ(tabs().WebBrowser1.UBound(), INT16_MAX);
  EXPECT_EQ(tabs().CurrentTab, 0);
}

TEST_F(Tabs, AreSizedWhenTheyComeToTheFront) {
  OpenTabs(1);
  Do([this] { main().Width = 12000; });
  EXPECT_EQ(Page(1).Width, 11850);
  EXPECT_EQ(Page(0).Width, 10455);
  ShowTab(0);
  EXPECT_EQ(Page(0).Width, 11850);
  EXPECT_TRUE(InFront(0));
}

TEST_F(Tabs, AreAllRemovedAtTheEnd) {
  OpenTabs(4);
  DelTab(2);
  Quit(3);
  Do([this] { tabs().RemoveAllTabs(); });
  EXPECT_EQ(Strip(), "0@0 ");
  EXPECT_EQ(tabs().Timer1.UBound() + tabs().picTab.UBound(), 0);
  EXPECT_EQ(tabs().CurrentTab, 4);
}

// A page that closes itself loses its button and its timer and lives on.
TEST_F(Tabs, GoOnWithoutAButton) {
  OpenTabs(3);
  ShowTab(1);
  for (int twice = 0; twice < 2; ++twice) Quit(2);
  Quit(0);
  EXPECT_EQ(Strip(), "0@0 1@1 2@- 3@3 ");
  EXPECT_TRUE(tabs().Timer1.Has(0));
  EXPECT_FALSE(tabs().Timer1.Has(2));
  for (const int shown : {1, 2}) {
    tabs().CurrentTab = static_cast<int16_t>(shown);
    Do([this] {
      Page(2).DownloadBegin();
      Page(2).ProgressChange(50, 100);
      Page(2).StatusTextChange("still here");
      Page(2).TitleChange();
      Page(2).DocumentComplete();
      tabs().UpdateBrowsers();
    });
    EXPECT_TRUE(InFront(shown));
  }
  EXPECT_EQ(frame().Picture3.Picture(), skin().PicStore(8).Picture()) << "nobody would end the animation";
}

TEST_F(Tabs, CantBeAddedBesideAPageWithoutAButton) {
  OpenTabs(2);
  Quit(2);
  EXPECT_THROW(tabs().AddTab("about:blank"), Failure);
  EXPECT_EQ(tabs().CurrentTab, 2);
  Do([this] { main().toolbar.ClickBar("New Tab"); });
  EXPECT_EQ(tabs().CurrentTab, 4) << "the half of a tab below stands in for the missing button";
}

// Removing a tab without button takes its page and then fails, so that no page at all is on show.
TEST_F(Tabs, GoOnWithoutAPageOnShow) {
  OpenTabs(3);
  ShowTab(2);
  Quit(2);
  Do([this] { tabs().DelTab(); });
  EXPECT_EQ(tabs().CurrentTab, 2);
  EXPECT_FALSE(tabs().WebBrowser1.Has(2));
  for (const char* word : {"Back", "Forward", "Refresh", "Home", "Stop", "Search"})
    Do([&] { main().toolbar.ClickBar(word); });
  EXPECT_EQ(Asked(), Log{});
  Do([this] {
    main().Width = 12000;
    Page(1).ProgressChange(50, 100);
    Page(1).TitleChange();
    Page(1).StatusTextChange("elsewhere");
    tabs().DelTab();
    desktop.Advance(2000);
  });
  ShowTab(1);
  EXPECT_TRUE(InFront(1));
  Do([this] { tabs().AddTab("about:blank"); });
  EXPECT_EQ(Strip(), "0@0 1@1 3@3 4@4 ");
}

}  // namespace
