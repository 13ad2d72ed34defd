#include "tabs/TabSet.h"

#include "core/Conversions.h"
#include "core/Program.h"
#include "core/frmMain.h"
#include "platform/Text.h"

TabSet::TabSet(frmMain& main)
    : WebBrowser1(main.program.desktop.Gate, "WebBrowser1",
                  [&main](int16_t index) {
                    auto browser = main.program.desktop.MakeBrowser(main.frame.Picture1);
                    main.events.Wire(*browser, index);
                    return browser;
                  }),
      picTab(main.program.desktop.Gate, "picTab",
             [&main](int16_t index) { return main.strip.MakeTab(index); }),
      Timer1(main.program.desktop.Gate, "Timer1",
             [&main](int16_t index) {
               auto timer = std::make_unique<Timer>(main.program.desktop, 5, false);
               timer->Tick = [&main, index] { main.events.Timer1_Timer(index); };
               return timer;
             }),
      main_(main) {}

int16_t TabSet::LoadTab() {
  const int16_t n = ToInt16(WebBrowser1.UBound() + 1);
  WebBrowser1.Load(n);
  Timer1.Load(n);
  picTab.Load(n);
  picTab(n).Top = picTab(0).Top;
  return n;
}

int16_t TabSet::LoadTabBehind() {
  const int16_t n = LoadTab();
  // Beside the last button that there is: a page that closed itself has none.
  for (int i = 0; i < n; ++i)
    if (picTab.Has(i)) picTab(n).Left = picTab(i).Left + picTab(i).Width;
  picTab(n).Visible = true;
  Browser& browser = WebBrowser1(n);
  browser.ZOrder(1);
  browser.Width = main_.frame.Picture1.Width;
  browser.Height = main_.frame.Picture1.Height;
  browser.Visible = true;
  return n;
}

void TabSet::AddTab(const std::string& address) {
  const int16_t n = LoadTab();
  picTab(n).Left = picTab(n - 1).Left + picTab(n - 1).Width;
  picTab(n).Visible = true;
  WebBrowser1(n).Visible = true;
  if (Text::LowerCase(address) == "home")
    WebBrowser1(n).GoHome();
  else
    WebBrowser1(n).Navigate(address);
  Timer1(n).Enabled = true;
  main_.program.desktop.DoEvents();
  CurrentTab = ToInt16(WebBrowser1.UBound());
  WebBrowser1(CurrentTab).Width = main_.frame.Picture1.Width;
  WebBrowser1(CurrentTab).Height = main_.frame.Picture1.Height;
  UpdateBrowsers();
  // A typist keeps the keyboard, whoever opens the tab.
  if (!main_.address.Typing()) FocusPage();
}

void TabSet::AddChosenTab(const std::string& address, bool in_front) {
  const int16_t n = LoadTabBehind();
  WebBrowser1(n).Navigate(address);
  Timer1(n).Enabled = true;
  if (!in_front) return main_.strip.UpdateTabs();
  ShowTab(n);
  // A typist keeps the keyboard, whoever opens the tab.
  if (!main_.address.Typing()) FocusPage();
}

void TabSet::AddKeptTab(const KeptPage& page) {
  WebBrowser1(LoadTabBehind()).Restore(page);
  main_.strip.UpdateTabs();
}

void TabSet::ShowTab(int16_t index) {
  CurrentTab = index;
  UpdateBrowsers();
}

void TabSet::DelTab() {
  Skipping([this] {
    if (CurrentTab == 0) return;
    main_.removed.Keep(CurrentTab);
    WebBrowser1.Unload(CurrentTab);
    picTab.Unload(CurrentTab);
    Timer1.Unload(CurrentTab);
    CurrentTab = ToInt16(WebBrowser1.UBound());
    PackTabs();
    UpdateBrowsers();
  });
}

void TabSet::CloseTab(int16_t index) {
  if (index == 0 || !WebBrowser1.Has(index)) return;
  Browser& browser = WebBrowser1(index);
  browser.AskToClose([this, index, asked = browser.Alive()](bool agreed) {
    if (!agreed || asked.expired()) return;
    RemoveTab(index);
    FocusPage();
  });
}

void TabSet::RemoveTab(int16_t index) {
  if (index == CurrentTab) return DelTab();
  Skipping([&] {
    main_.removed.Keep(index);
    WebBrowser1.Unload(index);
    picTab.Unload(index);
    Timer1.Unload(index);
    PackTabs();
    UpdateBrowsers();
  });
}

void TabSet::PackTabs() {
  if (WebBrowser1.UBound() == 0) return;
  ListLiveTabs();
  for (size_t k = 1; k < lstMenu.size(); ++k)
    picTab(lstMenu[k]).Left = picTab(0).Left + picTab(0).Width * static_cast<double>(k);
}

const std::vector<int16_t>& TabSet::ListLiveTabs() {
  lstMenu.clear();
  for (int i = 0; i <= WebBrowser1.UBound(); ++i)
    if (WebBrowser1.Has(i))
      Skipping([&] {
        WebBrowser1(i).LocationName();
        lstMenu.push_back(ToInt16(i));
      });
  return lstMenu;
}

void TabSet::UpdateBrowsers() {
  for (int i = 0; i <= WebBrowser1.UBound(); ++i)
    if (i != CurrentTab && WebBrowser1.Has(i)) WebBrowser1(i).LeaveFullScreen();
  Skipping([this] { WebBrowser1(CurrentTab).Width = main_.frame.Picture1.Width; });
  Skipping([this] { WebBrowser1(CurrentTab).Height = main_.frame.Picture1.Height; });
  Skipping([this] { WebBrowser1(CurrentTab).ZOrder(0); });
  Skipping([this] { WebBrowser1(CurrentTab).Wake(); });
  Skipping([this] { main_.strip.UpdateTabs(); });
  Skipping([this] { main_.address.SetAddressText(); });
  main_.recovery.Changed();
  main_.toolbar.UpdateWays();
}

void TabSet::FocusPage() {
  main_.address.EndTyping();
  Skipping([this] { WebBrowser1(CurrentTab).SetFocus(); });
}

void TabSet::RemoveAllTabs() {
  for (int i = 0, last = WebBrowser1.UBound(); i <= last; ++i) {
    CurrentTab = ToInt16(i);
    Skipping([&] { WebBrowser1.Unload(i); });
    Skipping([&] { picTab.Unload(i); });
    Skipping([&] { Timer1.Unload(i); });
  }
}
