#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "platform/dialog/Controls.h"

class Program;
class TabSet;

// What the program is, where it comes from, and the way to the tool that tells about the machine.
class frmAbout : public Dialog {
 public:
  explicit frmAbout(Program& program);

  Controls::Image Image1{*this, "Image1"};
  Controls::Label lblTitle{*this, "lblTitle"};
  Controls::Label lblVersion{*this, "lblVersion"};
  Controls::Label lblDescription{*this, "lblDescription"};
  Controls::Label Label1{*this, "Label1"};            // the maker
  Controls::Label Label2{*this, "Label2"};            // the licence
  Controls::Label Label3{*this, "Label3"};            // no warranty
  Controls::Link Label4{*this, "Label4"};             // the project's address
  Controls::Link Label5{*this, "Label5"};             // the mail address
  Controls::Label labVersions{*this, "labVersions"};  // of the program and what it stands on
  Controls::CommandButton cmdOK{*this, "cmdOK"};
  Controls::CommandButton cmdSysInfo{*this, "cmdSysInfo"};

  void Form_Load();
  void Form_Unload(bool&) {}

  // Starts the system's information tool, or says that there is none.
  void StartSysInfo();

  // Reads a registry value as text; false where it can't be read. A value that is neither text nor number
  // leaves `KeyVal` as it is.
  bool GetKeyValue(int32_t KeyRoot, const std::string& KeyName, const std::string& SubKeyRef,
                   std::string& KeyVal);

 private:
  // Does what a link stands for, and unloads the window; where that fails, says so and stays.
  void Follow(const std::function<void(TabSet&)>& link);

  Program& program_;
};
