#include "menus/frmAddLaunch.h"

#include "core/Program.h"
#include "menus/frmLaunch.h"
#include "platform/Text.h"

frmAddLaunch::frmAddLaunch(Program& program) : Dialog(program.desktop, "frmAddLaunch"), program_(program) {
  Command3.Click = [this] { Browse(); };
  Command4.Click = [this] { ChooseInstalled(); };
  Command1.Click = [this] { Add(); };
  Command2.Click = [this] { program_.add_launch.Unload(); };
}

void frmAddLaunch::Browse() {
  Skipping([this] {
    const std::string FileName =
        program_.desktop.ShowOpen("Add to launch menu", "Applications (*.exe)|*.exe|All files (*.*)|*.*");
    if (!FileName.empty()) Text2.Text = FileName;
  });
}

void frmAddLaunch::ChooseInstalled() {
  Skipping([this] {
    const InstalledApplication chosen = program_.desktop.ChooseApplication("Add to launch menu");
    // A comma would make two rows of it.
    Text1.Text = Text::Replace(chosen.Name, ",", "");
    Text2.Text = chosen.Command;
  });
}

void frmAddLaunch::Add() {
  if (Text1.Text->empty() || Text2.Text->empty()) return;
  frmLaunch& launch = program_.launch();
  launch.lstNameList.AddItem(Text1.Text);
  launch.lstPathList.push_back(Text2.Text);
  program_.add_launch.Unload();
}
