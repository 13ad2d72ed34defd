#pragma once

#include <deque>

#include "platform/KeptPage.h"

class frmMain;

// The tabs that were removed in this run, the last twenty of them, to be had back.
class RemovedTabs {
 public:
  explicit RemovedTabs(frmMain& main) : main_(main) {}

  // A tab is about to go. Never fails: what can't be kept isn't.
  void Keep(int index);
  // The tab that was removed last comes back at the end of the strip, and is shown.
  void Reopen();

 private:
  frmMain& main_;
  std::deque<KeptPage> pages_;  // the newest at the end
};
