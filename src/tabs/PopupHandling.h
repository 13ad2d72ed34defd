#pragma once

#include <cstdint>

#include "core/Slot.h"
#include "platform/Browser.h"
#include "platform/Timer.h"

class frmMain;
class frmPopup;

// What becomes of a page's request for a new window.
class PopupHandling {
 public:
  // Values of PopupAnswer; 0: none given.
  static constexpr int16_t InNewTab = 1, InNewBrowser = 2, DoNotOpen = 3;

  explicit PopupHandling(frmMain& main);
  ~PopupHandling();

  // The user's standing choice, or the answer to the question. Never fails.
  void NewWindow2(Browser*& taker, bool& cancel);

  Slot<frmPopup> popup;
  int16_t PopupAnswer = 0;

 private:
  void Ask(Browser*& taker, bool& cancel);
  void Refuse();
  void TakeInNewTab(Browser*& taker);

  frmMain& main_;
  Timer refusing_;  // runs for a moment after a "Do not open", which holds for requests on its heels
  int asking_ = 0;  // requests that wait for the answer or are acting on it
};
