#pragma once

#include <string>

#include "dialogs/FolderTree.h"
#include "platform/dialog/Controls.h"

class Program;

// Asks for a folder of the favourites.
class ChooseFolder : public Dialog {
 public:
  explicit ChooseFolder(Program& program);

  Controls::Tree treFolders{*this, "treFolders"};
  Controls::CommandButton cmdNewFolder{*this, "cmdNewFolder"};
  Controls::CommandButton cmdMove{*this, "cmdMove"};
  Controls::CommandButton cmdCancel{*this, "cmdCancel"};

  // The chosen folder's path; empty where the user cancels. `root`: the favourites.
  std::string Ask(const std::string& root);

 private:
  FolderTree folders_;
  std::string chosen_;
};
