#pragma once

#include <string>
#include <utility>
#include <vector>

class frmMain;

// The pages that show the log: a list of its days beside the page of one day.
class HistoryPages {
 public:
  explicit HistoryPages(frmMain& main) : main_(main) {}

  // Writes both pages anew from the log's folder and opens them. Fails where a template or the folder is
  // missing and where a page can't be written.
  void OpenHistory();

 private:
  std::vector<std::string> DayPages(const std::string& folder) const;
  void SortNames(const std::vector<std::string>& names);
  std::string DayLinks() const;
  void Write(const std::string& path, const std::string& text);

  frmMain& main_;
  std::vector<std::pair<std::string, std::string>> lstSorted;  // a name in lower case, and as it is
};
