#pragma once

#include "platform/dialog/Controls.h"

class Program;

// The editor of the word filters. The file follows each change; the list that the clean-up reads, the
// closing.
class frmFilter : public Dialog {
 public:
  explicit frmFilter(Program& program);

  Controls::Frame Frame1{*this, "Frame1"};
  Controls::Label Label1{*this, "Label1"};
  Controls::Label Label2{*this, "Label2"};
  Controls::TextBox Text1{*this, "Text1"};
  Controls::CommandButton Command2{*this, "Command2"};
  Controls::CommandButton Command1{*this, "Command1"};
  Controls::ListBox lstFilter{*this, "lstFilter", {.Sorted = false, .MultiSelect = true}};
  Controls::CommandButton Command3{*this, "Command3"};

  void Form_Load();
  void Form_Unload(bool&) {}

  // Writes the words, a line each. Fails where they don't reach the disk; the old file is whole then.
  void SaveList();
  // Gives the words to the clean-up, and unloads the window.
  void Close();

 private:
  void Add();
  void RemoveSelected();

  Program& program_;
};
