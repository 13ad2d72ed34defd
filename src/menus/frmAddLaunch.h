#pragma once

#include "platform/dialog/Controls.h"

class Program;

// A new entry of the launch menu. Takes it only with both of its texts.
class frmAddLaunch : public Dialog {
 public:
  explicit frmAddLaunch(Program& program);

  Controls::Frame Frame1{*this, "Frame1"};
  Controls::Label Label1{*this, "Label1"};
  Controls::TextBox Text1{*this, "Text1"};  // description
  Controls::Label Label2{*this, "Label2"};
  Controls::TextBox Text2{*this, "Text2"};              // command
  Controls::CommandButton Command3{*this, "Command3"};  // Browse
  Controls::CommandButton Command4{*this, "Command4"};  // the installed applications
  Controls::CommandButton Command1{*this, "Command1"};  // Ok
  Controls::CommandButton Command2{*this, "Command2"};  // Cancel

  void Form_Load() {}
  void Form_Unload(bool&) {}

 private:
  void Browse();
  void ChooseInstalled();
  void Add();

  Program& program_;
};
