#pragma once

#include <string>
#include <vector>

#include "platform/dialog/Controls.h"

class Program;

// The cookie manager at the end of the program: the cookies of this run on one page, all of them on the
// other. The clean-up keeps its lists here, even where the window is never shown.
class frmNewcookies : public Dialog {
 public:
  explicit frmNewcookies(Program& program);

  Controls::TabPages SSTab1{*this, "SSTab1"};
  Controls::Frame Frame1{*this, "Frame1"};
  Controls::Label Label1{*this, "Label1"};
  Controls::ListBox lstNewCookies{*this, "lstNewCookies", {.Sorted = false, .MultiSelect = true}};
  Controls::CommandButton Command2{*this, "Command2"};
  Controls::CommandButton Command3{*this, "Command3"};
  Controls::Frame Frame2{*this, "Frame2"};
  Controls::Label Label2{*this, "Label2"};
  Controls::ListBox lstAllCookies{*this, "lstAllCookies", {.Sorted = false, .MultiSelect = true}};
  Controls::CommandButton Command1{*this, "Command1"};
  Controls::CommandButton Command4{*this, "Command4"};
  Controls::CommandButton cmdClose{*this, "cmdClose"};
  std::vector<std::string> lstTemp;  // scratch; the clean-up's old cookies

  // Shows the old cookies as all of them, until the first action on either page.
  void Form_Load();
  void Form_Unload(bool&) {}

  // Reads the cache anew. All cookies are what it holds, the new ones lose those that have gone, and what
  // isn't new counts as old.
  void RefreshLists();
  // Acts like the button that removes all new cookies where that is the chosen mode.
  void CheckTrap();

 private:
  void RemoveNew();
  void RemoveSelectedNew();
  void RemoveAll();
  void RemoveSelectedOfAll();
  void Close();
  // Deletes what is selected; the rest goes to lstTemp.
  void DeleteSelected(const Controls::ListBox& list);

  Program& program_;
};
