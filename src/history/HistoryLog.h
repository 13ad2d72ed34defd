#pragma once

#include <cstdint>
#include <string>

struct Moment;
class frmMain;

// The name of a day's page in the folder "history", as in "05 January 2001.htm".
std::string DayPageName(const Moment& day);

// The log of the pages visited: one page of HTML a day.
class HistoryLog {
 public:
  explicit HistoryLog(frmMain& main) : main_(main) {}

  // Records the page that a tab shows, unless its address stands in the day's page already. Fails where the
  // tab doesn't answer and where the day's page can't be begun; what fails behind that loses the entry
  // without a word.
  void UpDateHistory(int16_t Index);

 private:
  bool HasLine(const std::string& page, const std::string& line);

  frmMain& main_;
};
