#pragma once

#include <cstdint>
#include <functional>

#include "core/Slot.h"
#include "platform/Browser.h"
#include "platform/Timer.h"

class frmMain;
class frmPopup;

// What becomes of a page's request for a new window, and of a link that the user wants in a tab of its own.
class PopupHandling {
 public:
  // The value of the preference that asks nobody: a new tab for every window.
  static constexpr int16_t PolicyTab = 2;
  // Values of PopupAnswer; 0: none given.
  static constexpr int16_t InNewTab = 1, InNewBrowser = 2, DoNotOpen = 3;

  explicit PopupHandling(frmMain& main);
  ~PopupHandling();

  // The handler of NewWindow2 for one page: the user's standing choice, or the answer to the question. Never
  // fails. What the user refuses one page is no answer to another.
  std::function<void(const std::string& asker, Browser*& taker, bool& cancel)> ForOnePage();

  Slot<frmPopup> popup;
  int16_t PopupAnswer = 0;

 private:
  void Decide(const std::string& asker, Timer& refusing, Browser*& taker, bool& cancel);
  void Ask(const std::string& asker, Timer& refusing, Browser*& taker, bool& cancel);
  void TakeInNewTab(Browser*& taker);

  frmMain& main_;
  int asking_ = 0;     // requests that wait for the answer or are acting on it
  std::string asker_;  // whom they come from
};
