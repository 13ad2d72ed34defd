#pragma once

#include <string_view>

class frmMain;

// A key as the desktop names it: a letter or digit is itself, in either case; "Tab", "F5", "plus", "KP_Add".
struct KeyPress {
  std::string_view Name;
  bool Control = false, Shift = false, Alt = false;
};

// The keys that people know from any browser.
class Keys {
 public:
  explicit Keys(frmMain& main) : main_(main) {}

  // Every press in the main window comes here before its widgets see it. True: it was used, and they don't
  // get it.
  bool Pressed(const KeyPress& press);

 private:
  frmMain& main_;
};
