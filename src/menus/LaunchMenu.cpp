#include "menus/LaunchMenu.h"

#include "core/Program.h"
#include "core/frmMain.h"

std::string LaunchMenu::FillMenu() {
  FileSlot& slot = main_.program.slot;
  lstLaunchNames.clear();
  lstLaunchRun.clear();
  slot.Open(main_.program.AppPath + "\\launch.dat", FileSlot::Mode::Input);
  try {
    while (!slot.EndOfFile()) {
      lstLaunchNames.push_back(slot.LineInput());
      lstLaunchRun.push_back(slot.LineInput());
    }
  } catch (const Failure&) {
    slot.Abandon();
    throw;
  }
  slot.Close();
  std::string items = "Customise,-";
  for (const std::string& name : lstLaunchNames) items += "," + name;
  return items;
}
