#include "menus/frmLaunch.h"

#include "core/Program.h"
#include "menus/LaunchMenu.h"
#include "menus/frmAddLaunch.h"

frmLaunch::frmLaunch(Program& program) : Dialog(program.desktop, "frmLaunch"), program_(program) {
  Command1.Click = [this] { program_.add_launch().ShowModal(); };
  Command2.Click = [this] { Remove(); };
  Command3.Click = [this] {
    SaveLaunchData();
    program_.launch.Unload();
  };
}

void frmLaunch::Form_Load() {
  // A file that is missing or broken off gives what could be read of it.
  Skipping([this] {
    ReadLaunchData(program_, [this](const std::string& name, const std::string& path) {
      lstNameList.AddItem(name);
      lstPathList.push_back(path);
    });
  });
}

void frmLaunch::Remove() {
  const int row = lstNameList.ListIndex();
  if (row < 0) return;
  lstNameList.RemoveItem(row);
  lstPathList.erase(lstPathList.begin() + row);
}

void frmLaunch::SaveLaunchData() {
  FileSlot& slot = program_.slot;
  slot.Open(program_.AppPath + "\\launch.dat", FileSlot::Mode::Output);
  for (size_t i = 0; i < lstPathList.size(); ++i) {
    slot.Print(lstNameList.List(static_cast<int>(i)));
    slot.Print(lstPathList[i]);
  }
  slot.Close();
}
