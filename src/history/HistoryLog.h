#pragma once

#include <cstdint>

class frmMain;

// The log of the pages visited: one page of HTML a day.
class HistoryLog {
 public:
  explicit HistoryLog(frmMain& main) : main_(main) {}

  // Records the page that a tab shows. Fails where the day page can't be begun.
  void UpDateHistory(int16_t Index);

 private:
  frmMain& main_;
};
