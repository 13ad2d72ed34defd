#pragma once

#include "platform/Browser.h"

class frmMain;

// What becomes of a page's request for a new window.
class PopupHandling {
 public:
  explicit PopupHandling(frmMain& main) : main_(main) {}

  // The user's standing choice, or the answer to the question. Never fails.
  void NewWindow2(Browser*& taker, bool& cancel);

 private:
  frmMain& main_;
};
