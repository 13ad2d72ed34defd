#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/dialog/Tree.h"

class Desktop;

// The folders of the favourites in a dialog's tree, of which the user chooses one, makes new ones and gives
// them names.
class FolderTree {
 public:
  // `tree` bears the folders; both live as long as their dialog.
  FolderTree(Desktop& desktop, Controls::Tree& tree);

  // Shows the folders below one, itself on top and selected. It is made by the first use, where it isn't
  // there.
  void Fill(const std::string& root);
  // The path of the folder that is selected. Fails where it isn't there and can't be made.
  std::string Chosen();
  // A new folder in the one that is selected, up for a name.
  void NewFolder();

 private:
  using RowId = Controls::Tree::RowId;
  RowId Add(RowId parent, const std::string& name, const std::string& path);
  void Rename(RowId row, const std::string& name);
  std::string PathOf(RowId row) const;

  Desktop& desktop_;
  Controls::Tree& tree_;
  std::string root_;
  std::map<RowId, std::string> names_;  // as the disk has them; of the topmost, its path
};
