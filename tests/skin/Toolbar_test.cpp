#include <gtest/gtest.h>

#include "fakes/Rig.h"

namespace {

using Log = std::vector<std::string>;

class Bar : public testing::Test, protected Rig {
 protected:
  // Which pictures the eight buttons and the two tab arrows show: r at rest, h hover, d pressed.
  std::string Looks() {
    struct Row {
      Store Skin::*Rest;
      Store Skin::*Hover;
      Store Skin::*Pressed;
    };
    static constexpr Row Rows[] = {{&Skin::picBackBut, &Skin::picBackHiBut, &Skin::picBackDown},
                                   {&Skin::picForwardBut, &Skin::picForwardHiBut, &Skin::picForwardDown},
                                   {&Skin::picrefreshBut, &Skin::picRefreshHiBut, &Skin::picRefreshDown},
                                   {&Skin::picStopBut, &Skin::picStopHiBut, &Skin::picStopDown},
                                   {&Skin::picNewTabBut, &Skin::picNewTabHiBut, &Skin::picNewTabDown},
                                   {&Skin::picDelTabBut, &Skin::picDelTabHiBut, &Skin::picDelTabDown},
                                   {&Skin::picHistoryBut, &Skin::picHistoryHiBut, &Skin::picHistoryDown},
                                   {&Skin::picSearchBut, &Skin::picSearchHiBut, &Skin::picSearchDown}};
    const auto look = [](const Picture& shown, const Picture& rest, const Picture& hover,
                         const Picture& down) {
      return shown == rest ? 'r' : shown == hover ? 'h' : shown == down ? 'd' : '?';
    };
    std::string looks;
    for (int i = 0; i < 8; ++i)
      looks += look(Button(i).Picture, (skin().*Rows[i].Rest).Picture, (skin().*Rows[i].Hover).Picture,
                    (skin().*Rows[i].Pressed).Picture);
    looks += ' ';
    looks += look(frame().picTabLeft.Picture, skin().TabLeft.Picture, skin().TabLeftHi.Picture, nullptr);
    looks += look(frame().picTabRight.Picture, skin().TabRight.Picture, skin().TabRightHi.Picture, nullptr);
    return looks;
  }
  std::string Reset(int16_t index) {
    Do([&] { main().toolbar.ResetButtons(index); });
    return Looks();
  }
  Log Command(const char* word) {
    desktop.log.clear();
    Do([&] { main().toolbar.ClickBar(word); });
    return Asked();
  }
  Surface& Button(int index) { return main().toolbar.picButton(index); }
};

TEST_F(Bar, ShowsWhatIsUnderTheMouse) {
  for (int16_t i = 0; i < 8; ++i) {
    std::string expected = "rrrrrrrr rr";
    expected[static_cast<size_t>(i)] = 'h';
    EXPECT_EQ(Reset(i), expected);
  }
  EXPECT_EQ(Reset(-2), "rrrrrrrr hr");
  EXPECT_EQ(Reset(-3), "rrrrrrrr rh");
  Do([this] { main().toolbar.ButtonDown(4); });
  EXPECT_EQ(Looks(), "rrrrdrrr rh") << "a press leaves the arrows alone";
  EXPECT_EQ(Reset(-1), "rrrrrrrr rr");
  EXPECT_EQ(Reset(99), "rrrrrrrr rr");
}

TEST_F(Bar, SweepsHighlightsAwayLate) {
  desktop.Advance(10000);
  EXPECT_FALSE(main().toolbar.TimerMenus.Enabled);
  Do([this] { main().menubar.ResetMenus(main().menubar.mnuFile); });
  Reset(7);
  EXPECT_TRUE(main().toolbar.TimerMenus.Enabled);
  desktop.Advance(9999);
  EXPECT_EQ(Looks(), "rrrrrrrh rr");
  desktop.Advance(1);
  EXPECT_EQ(Looks(), "rrrrrrrr rr");
  EXPECT_FALSE(main().menubar.mnuFile.Opaque);
  EXPECT_FALSE(main().toolbar.TimerMenus.Enabled);
}

TEST_F(Bar, FollowsTheMouse) {
  const Twips lefts[] = {120, 615, 1110, 1605, 2100, 2595, 3085, 3585};
  for (int i = 0; i < 8; ++i) EXPECT_EQ(Button(i).Left, lefts[i]);
  EXPECT_EQ(Button(5).ToolTipText(), "Remove Tab");

  Do([this] { main().menubar.ResetMenus(main().menubar.mnuFile); });
  Over(Button(1));
  EXPECT_EQ(Looks(), "rhrrrrrr rr");
  EXPECT_FALSE(main().menubar.mnuFile.Opaque);
  Click(Button(1));
  EXPECT_EQ(Asked(), Log{"GoForward"});
  EXPECT_EQ(Looks(), "rdrrrrrr rr") << "stays until the mouse moves";
  Over(Button(1));
  EXPECT_EQ(Looks(), "rhrrrrrr rr");

  Press(Button(3));
  Over(Button(3), 30, 3000, 1);
  EXPECT_EQ(Looks(), "rrrdrrrr rr") << "held, it stays pressed outside";
  Release(Button(3), 30, 3000);
  EXPECT_EQ(Asked(), Log{});
  Over(Button(1), 30, 30, 2);
  EXPECT_EQ(Looks(), "rdrrrrrr rr") << "by whichever button of the mouse";
  for (Surface* strip : {&frame().CoolBar1, &frame().Picture9, &frame().Picture2}) {
    Reset(2);
    Do([this] { main().menubar.ResetMenus(main().menubar.mnuFile); });
    Over(*strip, 9000, 15);
    EXPECT_EQ(Looks(), "rrrrrrrr rr");
    EXPECT_FALSE(main().menubar.mnuFile.Opaque);
  }
}

TEST_F(Bar, CarriesOutItsWords) {
  EXPECT_EQ(Command("Back"), Log{"GoBack"});
  EXPECT_EQ(Command("Forward"), Log{"GoForward"});
  EXPECT_EQ(Command("Refresh"), Log{"Refresh"});
  EXPECT_EQ(Command("Home"), Log{"GoHome"});
  EXPECT_EQ(Command("Stop"), Log{"Stop"});
  for (const char* unknown : {"back", "BACK", "Remove Tab", "", "Back "}) EXPECT_EQ(Command(unknown), Log{});

  EXPECT_EQ(Command("Search"), Log{"Navigate http://search.test/"});
  program.preferences.SearchInTab = 2;
  EXPECT_EQ(Command("Search"), Log{"Navigate http://search.test/"});
  program.preferences.SearchInTab = 1;
  EXPECT_EQ(Command("Search"), (Log{"Navigate http://search.test/", "DoEvents"}));
  EXPECT_EQ(tabs().CurrentTab, 1);

  EXPECT_EQ(Command("New Tab"), (Log{"GoHome", "DoEvents"}));
  program.preferences.NewTabMode = -1;
  Page(2).url = "http://here.test/";
  EXPECT_EQ(Command("New Tab"), (Log{"Navigate http://here.test/", "DoEvents"}));
  EXPECT_EQ(tabs().CurrentTab, 3);
  EXPECT_EQ(Command("Del Tab"), Log{});
  EXPECT_EQ(tabs().CurrentTab, 2);
  desktop.Advance(5);  // the log begins its first page
  EXPECT_EQ(Command("History"), Log{"Navigate " + program.AppPath + "\\History.htm"});
}

TEST_F(Bar, EndsACommandThatFailsWithoutAWord) {
  OpenTabs(1);
  Page(1).fails = Page(1).dead = true;
  for (const char* word : {"Back", "Forward", "Refresh", "Home", "Stop", "Search"}) Command(word);
  program.preferences.NewTabMode = 1;
  Command("New Tab");
  EXPECT_EQ(tabs().WebBrowser1.UBound(), 1) << "there is no address to copy";
  for (int i = 0; i < 4; ++i) Click(Button(i));
  Command("Del Tab");
  EXPECT_EQ(tabs().CurrentTab, 0);
}

TEST_F(Bar, IsPalerWhereThereIsNowhereToGo) {
  const auto shown = [this](int button) { return main().toolbar.picButton(button).Picture(); };
  const Picture strong = skin().picBackBut.Picture();
  EXPECT_EQ(shown(0), strong);
  Page(0).back = false;
  Do([this] { Page(0).TitleChange(); });
  const Picture pale = shown(0);
  ASSERT_NE(pale, strong);
  EXPECT_EQ(shown(1), skin().picForwardBut.Picture());
  // Everywhere nearer to what lies behind the button, or as near.
  const auto width = static_cast<size_t>(strong->Width);
  for (size_t at = 0; at < strong->Pixels.size(); ++at) {
    const auto distance = [&](uint32_t pixel) {
      const uint32_t behind = strong->Pixels[at / width * width];
      int sum = 0;
      for (const int shift : {0, 8, 16})
        sum += std::abs(static_cast<int>(pixel >> shift & 0xFF) - static_cast<int>(behind >> shift & 0xFF));
      return sum;
    };
    ASSERT_LE(distance(pale->Pixels[at]), distance(strong->Pixels[at]) / 2 + 3) << at;
  }
  // Under the mouse too, and the same picture each time.
  Do([this] { main().toolbar.ResetButtons(0); });
  EXPECT_NE(shown(0), skin().picBackHiBut.Picture());
  Do([this] { main().toolbar.ResetButtons(-1); });
  EXPECT_EQ(shown(0), pale);
  // Another tab has its own ways.
  Do([this] { tabs().AddTab("about:blank"); });
  EXPECT_EQ(shown(0), strong);
}

}  // namespace
