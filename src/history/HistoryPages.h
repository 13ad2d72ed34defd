#pragma once

class frmMain;

// The pages that show the log.
class HistoryPages {
 public:
  explicit HistoryPages(frmMain& main) : main_(main) {}

  // Writes the pages anew and opens them. Fails where they can't be written.
  void OpenHistory();

 private:
  frmMain& main_;
};
