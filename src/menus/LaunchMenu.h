#pragma once

#include <string>
#include <vector>

class frmMain;

// The user's own programs.
class LaunchMenu {
 public:
  explicit LaunchMenu(frmMain& main) : main_(main) {}

  std::vector<std::string> lstLaunchNames, lstLaunchRun;  // captions and commands at equal indices

 private:
  frmMain& main_;
};
