#include "tabs/BrowserEvents.h"

#include "core/Conversions.h"
#include "core/Program.h"
#include "core/frmMain.h"
#include "platform/Text.h"

namespace {

constexpr Twips FullProgress = 1380;
constexpr int16_t BusyFrames = 8;
constexpr int IdleFrame = 8;

}  // namespace

BrowserEvents::BrowserEvents(frmMain& main)
    : Timer2(main.program.desktop, 100, false), Timer3(main.program.desktop, 2000, true), main_(main) {
  Timer2.Tick = [this] { Timer2_Timer(); };
  Timer3.Tick = [this] { main_.strip.UpdateTabs(); };
}

void BrowserEvents::Wire(Browser& browser, int16_t Index) {
  browser.DownloadBegin = [this, Index] { DownloadBegin(Index); };
  browser.DocumentComplete = [this] {
    DocumentComplete();
    main_.recovery.Changed();
  };
  browser.Chosen = [this, Index] {
    if (Index != main_.tabs.CurrentTab) main_.tabs.ShowTab(Index);
  };
  browser.Used = [this] { main_.recovery.Changed(); };
  browser.TitleChange = [this] { DocumentComplete(); };
  browser.ProgressChange = [this, Index](long progress, long maximum) {
    ProgressChange(Index, progress, maximum);
  };
  browser.StatusTextChange = [this, Index](const std::string& text) { StatusTextChange(Index, text); };
  browser.OnQuit = [this, Index] { OnQuit(Index); };
  browser.NewWindow2 = main_.popups.ForOnePage();
  browser.QuestionUp = [this, Index] { ShowAsking(Index); };
  browser.LinkChosen = main_.program.desktop.LinkChosen;
}

// A question about a page's end is for its own page.
void BrowserEvents::ShowAsking(int16_t Index) {
  if (Index == main_.tabs.CurrentTab || !main_.tabs.picTab.Has(Index)) return;
  main_.tabs.CurrentTab = Index;
  main_.tabs.UpdateBrowsers();
}

void BrowserEvents::ShowIdle() {
  AnimFrame = 0;
  main_.frame.Picture3.Picture = main_.skin.PicStore(IdleFrame).Picture;
}

void BrowserEvents::DownloadBegin(int16_t Index) {
  // A page that closed itself has no timer any more, and nobody would end the animation.
  if (!main_.tabs.Timer1.Has(Index)) return;
  main_.frame.Picture3.Picture = main_.skin.PicStore(0).Picture;
  main_.tabs.Timer1(Index).Enabled = true;
}

void BrowserEvents::Timer1_Timer(int16_t Index) {
  TabSet& tabs = main_.tabs;
  try {
    if (tabs.WebBrowser1(Index).Busy()) {
      Timer2.Enabled = true;
      return;
    }
    EndWatch(Index);
    Record(Index);
  } catch (const Failure&) {
    main_.removed.Keep(Index);
    // A dead browser. Where one of the three can't be unloaded, the others still go.
    Skipping([&] { tabs.picTab.Unload(Index); });
    Skipping([&] { tabs.Timer1.Unload(Index); });
    Skipping([&] { tabs.WebBrowser1.Unload(Index); });
    // Tab 0 can't go: it stays on show where it was, and is watched again from its next load on.
    if (tabs.WebBrowser1.Has(Index)) return EndWatch(Index);
    if (tabs.CurrentTab == Index) tabs.CurrentTab = ToInt16(tabs.WebBrowser1.UBound());
  }
}

void BrowserEvents::EndWatch(int16_t Index) {
  Timer2.Enabled = false;
  main_.tabs.Timer1(Index).Enabled = false;
  main_.frame.Picture3.Picture = main_.skin.PicStore(IdleFrame).Picture;
}

// A log that can't be written leaves the page unrecorded; it is no reason to sweep the tab away. A dead page
// that the log stumbled over still shows itself.
void BrowserEvents::Record(int16_t Index) {
  try {
    main_.log.UpDateHistory(Index);
  } catch (const Failure&) {
    main_.tabs.WebBrowser1(Index).LocationURL();
  }
}

void BrowserEvents::Timer2_Timer() {
  if (AnimFrame == BusyFrames) AnimFrame = 0;
  main_.frame.Picture3.Picture = main_.skin.PicStore(AnimFrame).Picture;
  ++AnimFrame;
}

void BrowserEvents::DocumentComplete() {
  // The tab on show may have lost its element to a page that closed itself.
  Skipping([this] { main_.address.SetAddressText(); });
  main_.strip.UpdateTabs();
  main_.toolbar.UpdateWays();
}

void BrowserEvents::ProgressChange(int16_t Index, long Progress, long ProgressMax) {
  Surface& bar = main_.frame.picProgress;
  const Surface& page = main_.frame.Picture1;
  const auto limit = [&bar] {
    if (bar.Width > FullProgress) bar.Width = FullProgress;
  };
  // The tab on show may have lost its element to a page that closed itself.
  Skipping([&] {
    Browser& shown = main_.tabs.WebBrowser1(main_.tabs.CurrentTab);
    if (shown.Width == page.Width && shown.Height == page.Height) return;
    shown.Width = page.Width;
    shown.Height = page.Height;
  });
  limit();
  try {
    if (Index != main_.tabs.CurrentTab) return;
    if (Progress != 0) {
      main_.frame.ShowProgress(true);
      if (ProgressMax == 0) throw Failure("A progress out of nothing can't be shown");
      bar.Width = (FullProgress / static_cast<double>(ProgressMax)) * static_cast<double>(Progress);
      main_.Refresh();
    } else {
      main_.frame.ShowProgress(false);
    }
    limit();
  } catch (const Failure&) {
    limit();
    main_.frame.ShowProgress(false);
  }
}

void BrowserEvents::StatusTextChange(int16_t Index, const std::string& text) {
  if (!text.empty()) LastStatusText = text;
  if (Index != main_.tabs.CurrentTab) return;
  std::string shown = text;
  Label& label = main_.frame.StatusBar1;
  if (main_.TextWidth(text) > label.Width)
    shown = Text::Left(text, static_cast<size_t>(ToInt16(label.Width / main_.TextWidth("W")))) + "...";
  label.Caption = shown;
}

void BrowserEvents::OnQuit(int16_t Index) {
  // The tool that closes a page means its tab.
  if (main_.program.desktop.Driven() && Index != 0) {
    main_.tabs.CurrentTab = Index;
    return main_.tabs.DelTab();
  }
  // Tab 0 keeps both, and a page may close itself twice.
  Skipping([&] { main_.tabs.picTab.Unload(Index); });
  Skipping([&] { main_.tabs.Timer1.Unload(Index); });
}
