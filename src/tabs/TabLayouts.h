#pragma once

#include <string>
#include <vector>

class frmMain;

// The addresses of all open tabs, saved to a file and opened again.
class TabLayouts {
 public:
  explicit TabLayouts(frmMain& main) : main_(main) {}

  // Path: the host's, taken as it is spelt. Asks before it replaces a file; what can't be written stays as it
  // was, without a word.
  void SaveTabLayout(const std::string& Path);
  // Replaces all tabs. A file that is no layout changes nothing, without a word; one of no bytes stays open,
  // and the program reads no other file any more. Fails where a tab can't be made.
  void RestoreTabLayout(const std::string& Path);

 private:
  bool ReadLayout(const std::string& Path);

  frmMain& main_;
  std::vector<std::string> lstTabList;  // addresses, on their way from the tabs to the file or back
};
