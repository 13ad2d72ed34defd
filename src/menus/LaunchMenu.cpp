#include "menus/LaunchMenu.h"

#include "core/Program.h"
#include "core/frmMain.h"

void ReadLaunchData(Program& program,
                    const std::function<void(const std::string& name, const std::string& command)>& take) {
  FileSlot& slot = program.slot;
  slot.Open(program.AppPath + "\\launch.dat", FileSlot::Mode::Input);
  try {
    while (!slot.EndOfFile()) {
      const std::string name = slot.LineInput();
      take(name, slot.LineInput());
    }
  } catch (const Failure&) {
    slot.Abandon();
    throw;
  }
  slot.Close();
}

std::string LaunchMenu::FillMenu() {
  lstLaunchNames.clear();
  lstLaunchRun.clear();
  ReadLaunchData(main_.program, [this](const std::string& name, const std::string& command) {
    lstLaunchNames.push_back(name);
    lstLaunchRun.push_back(command);
  });
  std::string items = "Customise,-";
  for (const std::string& name : lstLaunchNames) items += "," + name;
  return items;
}
