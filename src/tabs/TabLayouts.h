#pragma once

#include <string>
#include <vector>

class frmMain;

// The addresses of all open tabs, saved to a file and opened again.
class TabLayouts {
 public:
  explicit TabLayouts(frmMain& main) : main_(main) {}

  // Both end silently at a failure. Path: the host's.
  void SaveTabLayout(const std::string& Path);
  void RestoreTabLayout(const std::string& Path);

 private:
  frmMain& main_;
};
