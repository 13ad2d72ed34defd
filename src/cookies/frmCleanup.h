#pragma once

#include "platform/dialog/Controls.h"

class Program;

// What stands on the screen while the cookies are cleaned up at the end of the program. It ends the process.
class frmCleanup : public Dialog {
 public:
  explicit frmCleanup(Program& program);

  Controls::Label Label1{*this, "Label1"};
  Controls::Label Label2{*this, "Label2"};

  void Form_Load();
  void Form_Unload(bool&) {}

  // Finds the cookies of this run, and does with the cookies what the chosen mode says.
  void CheckCookies();
  // Removes the cookies of this run.
  void RemoveAllCooks();
  // Removes all cookies whose name has one of the words in it, old ones too.
  void RemoveFilters();

 private:
  Program& program_;
};
