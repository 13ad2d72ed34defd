#pragma once

#include <future>
#include <string>

#include "platform/Timer.h"
#include "tabs/KeptTabs.h"

class frmMain;

// The tabs with their histories and places in a file, for the next start where this run is cut off. The file
// is replaced whole, at most once in ten seconds, and only where something has changed.
class Recovery {
 public:
  explicit Recovery(frmMain& main);

  // Offers the tabs of a run that was cut off, where there was one. Never fails.
  void Begin();
  // Something has happened that may be worth keeping.
  void Changed();
  // The run ends. Where the user wished it, nothing is left to offer; else all is.
  void End(bool wished);
  // Returns once what is being written is on the disk, and tells where it didn't get there.
  void Settle();

 private:
  std::string Path() const;
  void Timer1_Timer();
  void Write();
  KeptTabs Tabs();
  // Whether the first of the tabs offered is what tab 0 shows: it is no tab of its own then.
  bool StartsAlike() const;
  void BringBack();

  frmMain& main_;
  Timer Timer1;  // until the next writing, or since the last one
  bool changed_ = false, over_ = false;
  KeptTabs offered_;     // of last time, as long as the user hasn't decided
  std::string written_;  // what the file holds
  std::future<void> writing_;
};
