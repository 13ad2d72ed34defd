#pragma once

#include <string>

#include "dialogs/FolderTree.h"
#include "platform/dialog/Controls.h"

class Program;

// Adds a page to the favourites: its name, its address, and the folder.
class AddFavorite : public Dialog {
 public:
  explicit AddFavorite(Program& program);

  Controls::TextBox txtName{*this, "txtName"};
  Controls::TextBox txtAddress{*this, "txtAddress"};
  Controls::Tree treFolders{*this, "treFolders"};
  Controls::CommandButton cmdNewFolder{*this, "cmdNewFolder"};
  Controls::CommandButton cmdAdd{*this, "cmdAdd"};
  Controls::CommandButton cmdCancel{*this, "cmdCancel"};

  // Shows the dialog for a page. One that stands already only comes to the front, with what was typed.
  void Ask(const std::string& URL, const std::string& Title);

  void Form_Load() {}
  void Form_Unload(bool&) {}

 private:
  void cmdAdd_Click();
  // False: the user wants to keep the favourite that has the name.
  bool Write(const std::string& name);
  void Tell(const std::string& text);

  Program& program_;
  FolderTree folders_;
};
