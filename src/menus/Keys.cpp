#include "menus/Keys.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "core/Program.h"
#include "core/frmMain.h"

namespace {

// What a row of the table does, with the row's word. Each says whether it used the key.
using Action = bool(frmMain& main, const char* word);

// A row of the menus, a button of the toolbar.
bool Carry(frmMain& main, const char* command) {
  main.menus.MenuCommand(command);
  return true;
}

bool Click(frmMain& main, const char* word) {
  main.toolbar.ClickBar(word);
  return true;
}

// An operation of the page on show. One that has ended does nothing.
template <class Operation>
bool Ask(frmMain& main, Operation&& operation) {
  Skipping([&] { operation(main.tabs.WebBrowser1(main.tabs.CurrentTab)); });
  return true;
}

bool ReopenTab(frmMain& main, const char*) {
  main.removed.Reopen();
  return true;
}

// What is asked for stands around the page, which may fill the screen.
void ShowAround(frmMain& main) {
  Ask(main, [](Browser& page) { page.LeaveFullScreen(); });
}

bool TakeField(frmMain& main, const char*) {
  ShowAround(main);
  main.address.TakeKeyboard();
  return true;
}

bool SearchFromField(frmMain& main, const char*) {
  ShowAround(main);
  main.address.TakeSearch();
  return true;
}

bool AddFavourite(frmMain& main, const char*) {
  main.favourites.AddToFavorites();
  return true;
}

bool ShowDownloads(frmMain& main, const char*) {
  main.program.desktop.ShowDownloads();
  return true;
}

bool RefreshPastCache(frmMain& main, const char*) {
  main.tabs.FocusPage();
  return Ask(main, [](Browser& page) { page.RefreshPastCache(); });
}

bool FindNext(frmMain& main, const char*) {
  return Ask(main, [](Browser& page) { page.FindAgain(true); });
}

bool FindPrevious(frmMain& main, const char*) {
  return Ask(main, [](Browser& page) { page.FindAgain(false); });
}

bool Inspect(frmMain& main, const char*) {
  return Ask(main, [](Browser& page) { page.ShowInspector(); });
}

bool SwitchCaret(frmMain& main, const char*) {
  return Ask(main, [](Browser& page) { page.SwitchCaret(); });
}

bool ShowTab(frmMain& main, int16_t index) {
  if (index == main.tabs.CurrentTab) return true;
  main.tabs.CurrentTab = index;
  main.tabs.FocusPage();
  main.tabs.UpdateBrowsers();
  return true;
}

// The live tab behind the one on show, or before it, round the ends.
bool NextTab(frmMain& main, const char*) {
  const std::vector<int16_t>& live = main.tabs.ListLiveTabs();
  if (live.empty()) return true;
  const auto behind = std::upper_bound(live.begin(), live.end(), main.tabs.CurrentTab);
  return ShowTab(main, behind == live.end() ? live.front() : *behind);
}

bool PreviousTab(frmMain& main, const char*) {
  const std::vector<int16_t>& live = main.tabs.ListLiveTabs();
  if (live.empty()) return true;
  const auto here = std::lower_bound(live.begin(), live.end(), main.tabs.CurrentTab);
  return ShowTab(main, here == live.begin() ? live.back() : *(here - 1));
}

// The live tab of this number; the 9th is the last one, however many there are.
bool NthTab(frmMain& main, const char* digit) {
  const std::vector<int16_t>& live = main.tabs.ListLiveTabs();
  const auto before = static_cast<size_t>(*digit - '1');
  if (before == 8 && !live.empty()) return ShowTab(main, live.back());
  return before >= live.size() || ShowTab(main, live[before]);
}

bool Zoom(frmMain& main, int step) {
  return Ask(main, [step](Browser& page) { page.Zoom(step); });
}
bool FullScreen(frmMain& main, const char*) {
  return Ask(main, [](Browser& page) { page.SwitchFullScreen(); });
}
bool ZoomIn(frmMain& main, const char*) { return Zoom(main, 1); }
bool ZoomOut(frmMain& main, const char*) { return Zoom(main, -1); }
bool ZoomNone(frmMain& main, const char*) { return Zoom(main, 0); }

// What is on top goes first. A typist's field, and the page where nothing is on top, know Escape too.
bool Escape(frmMain& main, const char*) {
  if (main.address.Typing()) return false;
  bool closed = false;
  Ask(main, [&closed](Browser& page) { closed = page.CloseTopBar(); });
  if (closed) return true;
  Ask(main, [&main](const Browser& page) {
    if (page.Busy()) main.toolbar.ClickBar("Stop");
  });
  return false;
}

// What is open ends instead.
bool OpenMenu(frmMain& main, const char* name) {
  ShowAround(main);
  main.menubar.Open(name);
  return true;
}

// The page itself gets it, whatever stands over it.
bool EscapeOfPage(frmMain& main, const char*) {
  main.tabs.FocusPage();
  return false;
}

constexpr int Ctrl = KeyPress::HeldControl, Shift = KeyPress::HeldShift, Alt = KeyPress::HeldAlt,
              AnyShift = KeyPress::AnyShift;

struct Binding {
  std::string_view Name;
  int Held;
  Action* Do;
  const char* Word = "";
};

constexpr auto Bindings = std::to_array<Binding>({
    // Tabs
    {"t", Ctrl, Click, "New Tab"},
    {"New", 0, Click, "New Tab"},
    {"t", Ctrl + Shift, ReopenTab},
    {"w", Ctrl, Click, "Del Tab"},
    {"F4", Ctrl, Click, "Del Tab"},
    {"Close", 0, Click, "Del Tab"},
    {"Tab", Ctrl, NextTab},
    {"Tab", Ctrl + Shift, PreviousTab},
    {"ISO_Left_Tab", Ctrl + Shift, PreviousTab},
    {"Page_Down", Ctrl, NextTab},
    {"Page_Up", Ctrl, PreviousTab},
    {"KP_Page_Down", Ctrl, NextTab},
    {"KP_Page_Up", Ctrl, PreviousTab},
    {"1", Ctrl, NthTab, "1"},
    {"2", Ctrl, NthTab, "2"},
    {"3", Ctrl, NthTab, "3"},
    {"4", Ctrl, NthTab, "4"},
    {"5", Ctrl, NthTab, "5"},
    {"6", Ctrl, NthTab, "6"},
    {"7", Ctrl, NthTab, "7"},
    {"8", Ctrl, NthTab, "8"},
    {"9", Ctrl, NthTab, "9"},
    // The address field
    {"l", Ctrl, TakeField},
    {"d", Alt, TakeField},
    {"F6", 0, TakeField},
    {"OpenURL", 0, TakeField},
    {"k", Ctrl, SearchFromField},
    {"e", Ctrl, SearchFromField},
    {"Search", 0, SearchFromField},
    // Where to go
    {"Left", Alt, Click, "Back"},
    {"Right", Alt, Click, "Forward"},
    {"KP_Left", Alt, Click, "Back"},
    {"KP_Right", Alt, Click, "Forward"},
    {"Back", 0, Click, "Back"},
    {"Forward", 0, Click, "Forward"},
    {"Home", Alt, Click, "Home"},
    {"KP_Home", Alt, Click, "Home"},
    {"HomePage", 0, Click, "Home"},
    {"r", Ctrl, Click, "Refresh"},
    {"F5", 0, Click, "Refresh"},
    {"Refresh", 0, Click, "Refresh"},
    {"Reload", 0, Click, "Refresh"},
    {"r", Ctrl + Shift, RefreshPastCache},
    {"F5", Ctrl, RefreshPastCache},
    {"Stop", 0, Click, "Stop"},
    {"Escape", 0, Escape},
    {"Escape", Shift, EscapeOfPage},
    // The page
    {"f", Ctrl, Carry, "find (on this page) ..."},
    {"g", Ctrl, FindNext},
    {"g", Ctrl + Shift, FindPrevious},
    {"F3", 0, FindNext},
    {"F3", Shift, FindPrevious},
    {"p", Ctrl, Carry, "print..."},
    {"s", Ctrl, Carry, "save as..."},
    {"u", Ctrl, Carry, "source"},
    {"F11", 0, FullScreen},
    {"F12", 0, Inspect},
    {"i", Ctrl + Shift, Inspect},
    {"F7", 0, SwitchCaret},
    {"plus", Ctrl + AnyShift, ZoomIn},
    {"equal", Ctrl + AnyShift, ZoomIn},
    {"KP_Add", Ctrl + AnyShift, ZoomIn},
    {"ZoomIn", AnyShift, ZoomIn},
    {"minus", Ctrl + AnyShift, ZoomOut},
    {"KP_Subtract", Ctrl + AnyShift, ZoomOut},
    {"ZoomOut", AnyShift, ZoomOut},
    {"0", Ctrl + AnyShift, ZoomNone},
    {"KP_0", Ctrl + AnyShift, ZoomNone},
    // The menus
    {"F10", 0, OpenMenu, "file"},
    {"Alt", 0, OpenMenu, "file"},
    {"Favorites", 0, OpenMenu, "favourites"},
    // The program
    {"d", Ctrl, AddFavourite},
    {"AddFavorite", 0, AddFavourite},
    {"h", Ctrl, Click, "History"},
    {"j", Ctrl, ShowDownloads},
    {"History", 0, Click, "History"},
    {"n", Ctrl, Carry, "new window"},
    {"o", Ctrl, Carry, "open..."},
    {"q", Ctrl, Carry, "close"},
});

}  // namespace

bool Keys::Pressed(const KeyPress& press) {
  for (const Binding& row : Bindings) {
    if (!press.Is(row.Name, row.Held)) continue;
    const bool ended = main_.program.desktop.EndPopups();
    return (ended && (row.Do == Escape || row.Do == OpenMenu)) || row.Do(main_, row.Word);
  }
  return false;
}
