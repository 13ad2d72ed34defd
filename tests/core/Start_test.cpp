#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <stdexcept>

#include "core/Program.h"
#include "core/frmDummy.h"
#include "core/frmMain.h"
#include "core/frmSplash.h"
#include "fakes/BmpFile.h"
#include "fakes/FakeDesktop.h"
#include "menus/frmMenu.h"

namespace {

using Log = std::vector<std::string>;

// Writes down which windows come, go and take the focus, and what the splash says at each of its repaints.
class WatchedDesktop : public FakeDesktop {
 public:
  using FakeDesktop::FakeDesktop;
  std::unique_ptr<WindowHost> MakeHost(Window& window) override;
  bool maximised_start = false;  // the system opens the first window maximised
  std::function<void()> at_splash_end;
};

class WatchedHost : public WindowHost {
 public:
  WatchedHost(WatchedDesktop& desktop, Window& window) : desktop_(desktop), window_(window) {}
  void Show() override {
    Write("show");
    if (Is(Window::Kind::Splash) && desktop_.maximised_start) window_.WindowState = Window::Maximised;
  }
  void Hide() override {
    Write("hide");
    if (Is(Window::Kind::Splash) && desktop_.at_splash_end) desktop_.at_splash_end();
  }
  void Move() override {}
  void Resize() override {}
  void Caption() override {}
  void State() override {}
  void Focus() override { Write("focus"); }
  void Invalidate() override {}
  void Repaint() override {
    if (const auto* splash = dynamic_cast<frmSplash*>(&window_))
      desktop_.log.push_back(splash->Label1.Caption);
  }

 private:
  bool Is(Window::Kind kind) const { return window_.WindowKind() == kind; }
  void Write(const std::string& what) {
    const char* name = Is(Window::Kind::Splash) ? "splash" : Is(Window::Kind::Main) ? "main" : "dummy";
    desktop_.log.push_back(what + " " + name);
  }

  WatchedDesktop& desktop_;
  Window& window_;
};

std::unique_ptr<WindowHost> WatchedDesktop::MakeHost(Window& window) {
  return std::make_unique<WatchedHost>(*this, window);
}

class Life : public testing::Test {
 protected:
  void Start(const std::string& command_line = "") {
    desktop.command_line = command_line;
    desktop.Gate.Run([this] { program.Start(); });
  }
  Browser& FirstPage() { return main().tabs.WebBrowser1(0); }
  frmMain& main() { return program.main(); }
  frmDummy& dummy() { return program.dummy(); }
  Log Asked() { return std::exchange(desktop.log, {}); }
  // What ends the start, empty where nothing does.
  std::string Unhandled() {
    std::string message;
    desktop.Gate.Unhandled = [&](const Failure& failure) { message = failure.what(); };
    Start();
    return message;
  }

  const ProgramFolder folder;
  WatchedDesktop desktop{folder.path};
  Program program{desktop};
};

TEST_F(Life, StartsInOrder) {
  desktop.during_events = [this] {
    EXPECT_EQ(program.SplashUp, 1);
    EXPECT_TRUE(main().tabs.Timer1(0).Enabled);
    EXPECT_FALSE(main().Visible);
    EXPECT_EQ(main().events.Timer2.Interval, 200);
    // Anything may arrive here, before the first layout.
    FirstPage().DownloadBegin();
    FirstPage().ProgressChange(50, 100);
    FirstPage().TitleChange();
    desktop.Advance(2005);
  };
  Start();
  EXPECT_EQ(Asked(), (Log{"show splash", "Initialising...", "Loading preferences...", "Loading skin...",
                          "Analysing cookie cache...", "Setting up initial tabs...", "GoHome", "DoEvents",
                          "Starting browser...", "show main", "hide splash", "show dummy"}));
  EXPECT_EQ(program.SplashUp, 0);
  EXPECT_FALSE(program.splash.Loaded());
  EXPECT_EQ(main().tabs.WebBrowser1.UBound(), 0);
  EXPECT_EQ(main().Width, 10605);
  EXPECT_EQ(main().frame.picProgress.BackColor(), program.colours.ProgressBarColour);
}

TEST_F(Life, TakesTheWholeCommandLineAsOneAddress) {
  Start("\"C:\\page one.htm\" and \"more");
  EXPECT_EQ(FirstPage().LocationURL(), "C:\\page one.htm and more");
  EXPECT_EQ(main().tabs.WebBrowser1.UBound(), 0);
  EXPECT_EQ(std::count(desktop.log.begin(), desktop.log.end(), "GoHome"), 0);
}

TEST_F(Life, CutsOneSeparatorOffTheFolder) {
  desktop.folder += "/";
  Start("\"\"");
  EXPECT_EQ(program.AppPath, folder.path);
  EXPECT_EQ(program.preferences.SearchPage, "http://search.test/");
  // Quotes around nothing are the empty address, and not the home page.
  EXPECT_EQ(std::count(desktop.log.begin(), desktop.log.end(), "Navigate "), 1);
}

TEST_F(Life, MaximisesTheMainWindowWhereTheSystemMaximisesTheFirst) {
  desktop.maximised_start = true;
  desktop.during_events = [this] { EXPECT_EQ(program.splash().WindowState, Window::Normal); };
  desktop.at_splash_end = [this] { EXPECT_EQ(main().Width, 10605) << "nothing covers the splash"; };
  Start();
  EXPECT_EQ(program.SplashMaximised, "1");
  EXPECT_EQ(main().Width, 15480);
  EXPECT_EQ(main().WindowState, Window::Normal);
}

TEST_F(Life, EndsInOrder) {
  Start();
  for (int i = 0; i < 2; ++i) main().tabs.AddTab("about:blank");
  program.popup_menu();
  std::filesystem::remove(folder.path + "/autocomplete.dat");
  Asked();
  desktop.during_events = [this] {
    EXPECT_EQ(program.Unloading, 1);
    EXPECT_FALSE(program.popup_menu.Loaded());
    EXPECT_EQ(main().tabs.WebBrowser1.UBound(), 2);
    EXPECT_TRUE(std::filesystem::exists(folder.path + "/autocomplete.dat"));
    // Pages may still report.
    main().tabs.WebBrowser1(1).OnQuit();
    main().tabs.WebBrowser1(1).DownloadBegin();
  };
  EXPECT_THROW(desktop.Gate.Run([this] { dummy().QueryUnload(); }), ProcessEnded);
  EXPECT_EQ(Asked(), (Log{"hide main", "DoEvents", "End 0"}));
  EXPECT_EQ(main().tabs.WebBrowser1.UBound(), 0);
  EXPECT_EQ(main().tabs.CurrentTab, 2);
}

TEST_F(Life, CleansUpBehindTheHiddenWindow) {
  Start();
  main().tabs.AddTab("about:blank");
  program.preferences.CookieTrapMode = 1;
  EXPECT_THROW(program.dummy.Unload(), ProcessEnded);
  EXPECT_FALSE(main().Visible);
  EXPECT_EQ(main().tabs.WebBrowser1.UBound(), 0);
}

TEST_F(Life, LetsTheWindowGoUntouchedForARestart) {
  Start();
  main().tabs.AddTab("about:blank");
  program.SkinRestartNeeded = 1;
  Asked();
  desktop.Gate.Run([this] {
    TabSet& tabs = main().tabs;
    EXPECT_THROW(program.dummy.Unload(), ProcessEnded);
    EXPECT_EQ(tabs.WebBrowser1.UBound(), 1) << "the tabs stay as they are";
  });
  EXPECT_EQ(Asked(), (Log{"hide main", "End 0"}));
  EXPECT_EQ(program.Unloading, 0);
}

TEST_F(Life, RelaysWhatTheUserDoesToTheTaskBarEntry) {
  Start();
  EXPECT_EQ(dummy().Top, -9999999);
  EXPECT_EQ(dummy().Left, -9999999);
  desktop.Advance(500);
  EXPECT_EQ(dummy().Top, -999999);
  EXPECT_EQ(dummy().Left, -999999);

  dummy().WindowState = Window::Minimised;
  EXPECT_FALSE(main().Visible);
  EXPECT_EQ(main().WindowState, Window::Minimised);
  dummy().Top = 0;
  desktop.Advance(1000);
  EXPECT_EQ(dummy().Top, 0) << "a minimised window is the window manager's to place";

  dummy().WindowState = Window::Normal;
  EXPECT_TRUE(main().Visible);
  EXPECT_EQ(main().WindowState, Window::Normal);

  main().frame.SizingNow = 1;
  dummy().WindowState = Window::Maximised;
  EXPECT_EQ(main().frame.SizingNow, 0);
  EXPECT_EQ(main().Width, 15480);
  dummy().WindowState = Window::Minimised;
  dummy().WindowState = Window::Normal;
  EXPECT_EQ(main().Width, 15480) << "a minimise keeps the maximised layout";

  Asked();
  dummy().GotFocus();
  EXPECT_EQ(Asked(), Log{"focus main"});
  static_cast<FakeBrowser&>(FirstPage()).title = "A page";
  FirstPage().TitleChange();
  EXPECT_EQ(dummy().Caption(), "A page");
}

TEST_F(Life, ComesBackWithTheFocus) {
  Start();
  program.menu.FavOpenPath = "somewhere";
  main().Activate();
  EXPECT_EQ(program.menu.FavOpenPath(), "");
  program.menu.FavOpenPath = "somewhere";
  main().WindowState = Window::Minimised;
  main().GotFocus();
  EXPECT_EQ(program.menu.FavOpenPath(), "");
  EXPECT_TRUE(main().Visible);
  EXPECT_EQ(main().WindowState, Window::Normal);
}

struct BadFolder {
  const char* File;
  const char* Content;  // none: the file is missing
  std::vector<const char*> Told;
};

class BadFolders : public Life, public testing::WithParamInterface<BadFolder> {};

TEST_P(BadFolders, EndTheStartAndAreNamed) {
  const auto& [file, content, told] = GetParam();
  std::filesystem::remove(folder.path + "/" + file);
  if (content) folder.Write(file, content);
  const std::string message = Unhandled();
  EXPECT_NE(message.find(folder.path + "/" + file), message.npos) << message;
  for (const char* word : told) EXPECT_NE(message.find(word), message.npos) << message;
  EXPECT_EQ(std::count(desktop.log.begin(), desktop.log.end(), "show main"), 0);
}

INSTANTIATE_TEST_SUITE_P(
    All, BadFolders,
    testing::Values(BadFolder{"filter.dat", nullptr, {"open"}},
                    BadFolder{"browser.ini", nullptr, {"missing"}},
                    BadFolder{"browser.ini", "[Skin]\r\ndefault\r\n", {"[autocomplete]", "number"}},
                    BadFolder{"browser.ini", "[AutoComplete]\r\n\r\n", {"[autocomplete]", "number"}},
                    BadFolder{"browser.ini", "[AutoComplete]\r\n1x\r\n", {"[autocomplete]", "1x"}},
                    BadFolder{"browser.ini",
                              "[AutoComplete]\r\n0\r\n[Popups]\r\n3\r\n[CookieTrap]\r\n",
                              {"ends", "[cookietrap]"}},
                    BadFolder{"browser.ini", "[AutoComplete]\r\n0\r\n[Search]", {"ends", "[search]"}},
                    BadFolder{
                        "browser.ini", "[AutoComplete]\r\n0\r\n[Popups]\r\n40000\r\n", {"[popups]", "40000"}},
                    BadFolder{"browser.ini", "[AutoComplete]\r\n0\r\n[NewTab]\r\n-99999\r\n", {"[newtab]"}}));

TEST_F(Life, CanBeReadOnTheSplash) {
  const auto light = [](uint32_t pixel) {
    const auto part = [pixel](int shift) {
      const double value = (pixel >> shift & 255) / 255.0;
      return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(16) + 0.7152 * part(8) + 0.0722 * part(0) + 0.05;
  };
  frmSplash splash(program);
  const Bitmap& picture = *splash.Image1.Picture();
  for (const Label* label : {&splash.Label1, &splash.Label2, &splash.Label3}) {
    const PixelRect area = label->PixelBounds();
    const double text = light(ToPixel(label->ForeColor));
    double least = 21;
    for (int y = area.Top; y < area.Bottom(); ++y)
      for (int x = area.Left; x < area.Right(); ++x) {
        const double ground = light(picture.Pixels[static_cast<size_t>(y * picture.Width + x)]);
        least = std::min(least, std::max(text, ground) / std::min(text, ground));
      }
    EXPECT_GE(least, 7) << label->Caption();
  }
}

TEST_F(Life, NamesTheStandardLibrarysFailuresToo) {
  std::string message;
  desktop.Gate.Unhandled = [&](const Failure& failure) { message = failure.what(); };
  desktop.Gate.Run([] { throw std::length_error("too long"); });
  EXPECT_EQ(message, "Something that wasn't expected failed in the program itself: too long");
}

TEST_F(Life, ReadsEachSettingFromItsOwnKey) {
  folder.Write("skins/Mine/left.bmp", BmpFile(7, 1, [](int, int) { return 0u; }));
  folder.Write(
      "browser.ini",
      "[CookieTrap]\r\n0\r\n[NewTab]\r\n6\r\n[Paint]\r\n5\r\n[Popups]\r\n4\r\n[SearchTab]\r\n2\r\n"
      "[History]\r\n1\r\n[Skin]\r\nskins\\Mine\r\n[Default]\r\nhome.test\r\n[Search]\r\nfind.test\r\n"
      "[AutoComplete]\r\n7\r\n");
  Start();
  const Preferences& read = program.preferences;
  EXPECT_EQ(main().skin.picLeft.Picture()->Width, 7) << "the skin of the program's folder";
  EXPECT_EQ((std::vector<int>{read.HistoryInTab, read.SearchInTab, read.PopupPolicy, read.PaintMode,
                              read.NewTabMode, read.AutoCompleteOff, read.CookieTrapMode}),
            (std::vector<int>{1, 2, 4, 5, 6, 7, 0}));
  EXPECT_EQ(read.DefaultPage + " " + read.SearchPage, "home.test find.test");
  folder.Write("browser.ini", "[CookieTrap]\r\n3\r\n[AutoComplete]\r\n0\r\n");
  program.preferences.LoadIni(program);
  EXPECT_EQ(read.CookieTrapMode, 3);
  EXPECT_EQ(read.NewTabMode + read.HistoryInTab + read.SearchInTab, 0);
}

TEST_F(Life, ReadsThePreferencesAnewWhileRunning) {
  Start();
  folder.Write(
      "browser.ini",
      "[POPUPS]\r\n7\r\n [Popups]\r\n9\r\n[Popups]\r\n2.5\r\n[Paint]\r\n 1\r\n[Search]\r\n[Search]\r\n"
      "[AutoComplete]\r\n 1 \r\n[NewTab]\r\nnone\r\n");
  folder.Write("filter.dat", "one\r\ntwo\n\nlast");
  program.menu.OpenMenuName = "file";
  program.menu.MenuLoaded = program.menu.MenuMode = main().frame.SizingNow = 1;
  for (int twice = 0; twice < 2; ++twice) program.preferences.LoadIni(program);
  const Preferences& read = program.preferences;
  EXPECT_EQ(read.PopupPolicy, 2);
  EXPECT_EQ(read.PaintMode, 1);
  EXPECT_EQ(read.AutoCompleteOff, 1);
  EXPECT_EQ(read.NewTabMode, 0);
  EXPECT_EQ(read.SearchPage, "[Search]") << "a value line starts no section";
  EXPECT_EQ(read.DefaultPage, "");
  EXPECT_EQ(read.lstFilter, (Log{"", "last", "one", "two"}));
  EXPECT_EQ(program.menu.OpenMenuName, "");
  EXPECT_EQ(program.menu.MenuLoaded + program.menu.MenuMode + main().frame.SizingNow, 0);
  EXPECT_FALSE(program.splash.Loaded()) << "a running program touches no splash text";
}

TEST(Start, AnAddressThatAnotherStartBringsOpensInATab) {
  const ProgramFolder folder;
  FakeDesktop desktop(folder.path);
  Program program(desktop);
  EXPECT_FALSE(desktop.HandedOver("http://early.test/"));
  program.Start();
  TabSet& tabs = program.main().tabs;
  EXPECT_TRUE(desktop.HandedOver("\"http://a.test/\""));
  EXPECT_EQ(tabs.CurrentTab, 1);
  EXPECT_EQ(tabs.WebBrowser1(1).LocationURL(), "http://a.test/");
  EXPECT_TRUE(desktop.HandedOver(""));
  EXPECT_EQ(tabs.WebBrowser1.UBound(), 1);
  // Beside a page that closed itself, too.
  desktop.Gate.Run([&] { tabs.WebBrowser1(1).OnQuit(); });
  EXPECT_TRUE(desktop.HandedOver("http://b.test/"));
  EXPECT_EQ(tabs.CurrentTab, 2);
  program.Unloading = 1;
  EXPECT_FALSE(desktop.HandedOver("http://late.test/"));
  EXPECT_EQ(tabs.WebBrowser1.UBound(), 2);
  program.Unloading = 0;
}

}  // namespace
