#pragma once

#include <functional>
#include <string>
#include <vector>

class Program;
class frmMain;

// Gives the entries of `launch.dat`, a pair of lines each, in the file's order. Fails for a missing file, and
// for an odd number of lines once it has given the whole pairs.
void ReadLaunchData(Program& program,
                    const std::function<void(const std::string& name, const std::string& command)>& take);

// The user's own programs, from `launch.dat`: two lines for each entry, its description and its command.
class LaunchMenu {
 public:
  explicit LaunchMenu(frmMain& main) : main_(main) {}

  std::vector<std::string> lstLaunchNames, lstLaunchRun;  // descriptions and commands at equal indices

  // Refills the lists from the file and gives the menu's captions, joined by commas. Fails for a missing file
  // and an odd number of lines.
  std::string FillMenu();

 private:
  frmMain& main_;
};
