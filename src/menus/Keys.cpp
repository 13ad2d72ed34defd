#include "menus/Keys.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "core/Program.h"
#include "core/frmMain.h"
#include "platform/Text.h"

namespace {

// Each of these says whether it used the key.

bool Carry(frmMain& main, const char* command) {
  main.menus.MenuCommand(command);
  return true;
}

bool Click(frmMain& main, const char* word) {
  main.toolbar.ClickBar(word);
  return true;
}

bool ShowAddress(frmMain& main) {
  ComboBox& Combo1 = *main.address.Combo1;
  Combo1.SetFocus();
  Combo1.Select(0, static_cast<long>(Text::Length(Combo1.Text())));
  return true;
}

bool NewTab(frmMain& main) { return Click(main, "New Tab") && ShowAddress(main); }

// The live tab behind or before the one on show, round the ends.
bool StepTab(frmMain& main, int step) {
  const std::vector<int16_t>& live = main.tabs.ListLiveTabs();
  const auto behind = std::upper_bound(live.begin(), live.end(), main.tabs.CurrentTab);
  const auto here = std::lower_bound(live.begin(), live.end(), main.tabs.CurrentTab);
  if (live.empty()) return true;
  const int16_t next = step > 0 ? (behind == live.end() ? live.front() : *behind)
                                : (here == live.begin() ? live.back() : *(here - 1));
  if (next == main.tabs.CurrentTab) return true;
  main.tabs.CurrentTab = next;
  main.tabs.UpdateBrowsers();
  // Or the keyboard would stay with the page that is now behind.
  Skipping([&] { main.tabs.WebBrowser1(next).SetFocus(); });
  return true;
}

bool Zoom(frmMain& main, int step) {
  Skipping([&] { main.tabs.WebBrowser1(main.tabs.CurrentTab).Zoom(step); });
  return true;
}

// Where there was no menu to end it stops a load, and still reaches the page and the field, which know Escape
// too.
bool Escape(frmMain& main) {
  Skipping([&] {
    if (main.tabs.WebBrowser1(main.tabs.CurrentTab).Busy()) main.toolbar.ClickBar("Stop");
  });
  return false;
}

enum class With { Nothing, Control, ControlShift, ControlAny, Alt };

struct Binding {
  std::string_view Name;
  With Held;
  bool (*Do)(frmMain& main);
};

constexpr std::array<Binding, 24> Bindings = {{
    {"t", With::Control, NewTab},
    {"w", With::Control, [](frmMain& main) { return Click(main, "Del Tab"); }},
    {"l", With::Control, ShowAddress},
    {"Tab", With::Control, [](frmMain& main) { return StepTab(main, 1); }},
    {"Tab", With::ControlShift, [](frmMain& main) { return StepTab(main, -1); }},
    {"ISO_Left_Tab", With::ControlShift, [](frmMain& main) { return StepTab(main, -1); }},
    {"f", With::Control, [](frmMain& main) { return Carry(main, "find (on this page) ..."); }},
    {"d", With::Control,
     [](frmMain& main) {
       main.favourites.AddToFavorites();
       return true;
     }},
    {"p", With::Control, [](frmMain& main) { return Carry(main, "print..."); }},
    {"s", With::Control, [](frmMain& main) { return Carry(main, "save as..."); }},
    {"n", With::Control, [](frmMain& main) { return Carry(main, "new window"); }},
    {"o", With::Control, [](frmMain& main) { return Carry(main, "open..."); }},
    {"r", With::Control, [](frmMain& main) { return Click(main, "Refresh"); }},
    {"F5", With::Nothing, [](frmMain& main) { return Click(main, "Refresh"); }},
    // Whether these need Shift is up to the keyboard's layout.
    {"plus", With::ControlAny, [](frmMain& main) { return Zoom(main, 1); }},
    {"equal", With::ControlAny, [](frmMain& main) { return Zoom(main, 1); }},
    {"KP_Add", With::ControlAny, [](frmMain& main) { return Zoom(main, 1); }},
    {"minus", With::ControlAny, [](frmMain& main) { return Zoom(main, -1); }},
    {"KP_Subtract", With::ControlAny, [](frmMain& main) { return Zoom(main, -1); }},
    {"0", With::ControlAny, [](frmMain& main) { return Zoom(main, 0); }},
    {"KP_0", With::ControlAny, [](frmMain& main) { return Zoom(main, 0); }},
    {"Left", With::Alt, [](frmMain& main) { return Click(main, "Back"); }},
    {"Right", With::Alt, [](frmMain& main) { return Click(main, "Forward"); }},
    {"Escape", With::Nothing, Escape},
}};
static_assert(Bindings.back().Do, "a row for each place of the table");

bool Holds(const KeyPress& press, With held) {
  switch (held) {
    case With::Nothing:
      return !press.Control && !press.Shift && !press.Alt;
    case With::Control:
      return press.Control && !press.Shift && !press.Alt;
    case With::ControlShift:
      return press.Control && press.Shift && !press.Alt;
    case With::ControlAny:
      return press.Control && !press.Alt;
    case With::Alt:
      return !press.Control && !press.Shift && press.Alt;
  }
  return false;
}

}  // namespace

bool Keys::Pressed(const KeyPress& press) {
  for (const Binding& row : Bindings) {
    if (!Holds(press, row.Held) || !Text::SameWithoutCase(press.Name, row.Name)) continue;
    const bool ended = main_.program.desktop.EndPopups();
    return (ended && row.Do == Escape) || row.Do(main_);
  }
  return false;
}
