#pragma once

#include "platform/scene/Window.h"

class frmMain;

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
