#pragma once

#include <string>
#include <vector>

#include "platform/dialog/Controls.h"

class Program;

// Edits the launch menu's entries. Only its button closes it, and only that saves them.
class frmLaunch : public Dialog {
 public:
  explicit frmLaunch(Program& program);

  Controls::Frame Frame1{*this, "Frame1"};
  Controls::Label Label1{*this, "Label1"};
  Controls::ListBox lstNameList{*this, "lstNameList"};  // descriptions, in the file's order
  Controls::CommandButton Command1{*this, "Command1"};  // Add
  Controls::CommandButton Command2{*this, "Command2"};  // Remove
  Controls::CommandButton Command3{*this, "Command3"};  // Close

  std::vector<std::string> lstPathList;  // commands, at equal indices

  void Form_Load();
  void Form_Unload(bool&) {}

  // Writes `launch.dat` from the two lists. Fails where that can't be done.
  void SaveLaunchData();

 private:
  void Remove();

  Program& program_;
};
