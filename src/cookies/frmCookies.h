#pragma once

#include <string>
#include <vector>

#include "platform/dialog/Controls.h"

class Program;

// The cookie manager that the user opens: all cookies, and the way to remove them. It isn't modal, and stays
// in front of the program's other windows all the same.
class frmCookies : public Dialog {
 public:
  explicit frmCookies(Program& program);

  Controls::Frame Frame1{*this, "Frame1"};
  Controls::Label Label1{*this, "Label1"};
  Controls::ListBox lstAllCookies{*this, "lstAllCookies", {.Sorted = true, .MultiSelect = true}};
  Controls::CommandButton Command1{*this, "Command1"};
  Controls::CommandButton Command2{*this, "Command2"};
  Controls::CommandButton Command3{*this, "Command3"};

  void Form_Load() { RefreshTheList(); }
  void Form_Unload(bool&) {}

  // Shows what the cache holds now, and leaves the list of old cookies as it is.
  void RefreshTheList();

 private:
  void Form_Resize();
  // Deletes the chosen cookies if the user says yes.
  void Remove(const std::string& question, bool all);

  Program& program_;
  std::vector<std::string> lstTemp;  // the old cookies during a scan
};
