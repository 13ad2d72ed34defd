#include "dialogs/FolderTree.h"

#include <filesystem>
#include <functional>

#include "platform/Desktop.h"
#include "platform/Failure.h"
#include "platform/Text.h"
#include "platform/favourites/FavouritesFolder.h"
#include "platform/favourites/FileName.h"

using Controls::Tree;

namespace {

// A link may lead round in a ring.
constexpr int MostDepth = 40;

}  // namespace

FolderTree::FolderTree(Desktop& desktop, Tree& tree) : desktop_(desktop), tree_(tree) {
  tree_.Rename = [this](RowId row, const std::string& name) { Rename(row, name); };
}

void FolderTree::Fill(const std::string& root) {
  root_ = root;
  names_.clear();
  tree_.Clear();
  const RowId top = Add(Tree::Root, "Favourites", root);
  const std::function<void(RowId, const std::string&, int)> fill = [&](RowId parent, const std::string& path,
                                                                       int depth) {
    if (depth > MostDepth) return;
    for (const std::string& name : Favourites::List(path).Folders) {
      const std::string below = path + "/" + name;
      const RowId row = Add(parent, name, below);
      // A link that leads back up would lead down here again.
      if (!Favourites::LiesIn(path, below)) fill(row, below, depth + 1);
    }
  };
  fill(top, root, 0);
  tree_.Expand(top, true);
  tree_.Select({top});
}

FolderTree::RowId FolderTree::Add(RowId parent, const std::string& name, const std::string& path) {
  const bool topmost = parent == Tree::Root;
  Tree::Row made;
  made.Parent = parent;
  made.Name = Text::Valid(name);
  made.Picture = Tree::Icon::Folder;
  made.CanRename = !topmost;
  const RowId row = tree_.Add(made);
  names_[row] = topmost ? path : name;
  return row;
}

std::string FolderTree::PathOf(RowId row) const {
  const RowId parent = tree_.At(row).Parent;
  return parent == Tree::Root ? names_.at(row) : PathOf(parent) + "/" + names_.at(row);
}

std::string FolderTree::Chosen() {
  if (!Favourites::Stands(root_)) Favourites::MakeFolder(root_);
  return tree_.Current() == Tree::Root ? root_ : PathOf(tree_.Current());
}

void FolderTree::NewFolder() {
  try {
    const std::string path = Chosen();
    const RowId parent = tree_.Current() == Tree::Root ? tree_.Children(Tree::Root).front() : tree_.Current();
    const std::string name = Favourites::FreeName(path, "New Folder", "");
    Favourites::MakeFolder(path + "/" + name);
    const RowId row = Add(parent, name, "");
    tree_.Select({row});
    tree_.EditName(row);
  } catch (const Failure& failure) {
    desktop_.MsgBox(failure.what(), Buttons::Ok, "Marlowick");
  }
}

void FolderTree::Rename(RowId row, const std::string& name) {
  const std::string legal = FileName::Legal(name, "");
  if (legal.empty() || legal == names_.at(row)) return;
  try {
    const std::string above = PathOf(tree_.At(row).Parent) + "/";
    Favourites::Rename(above + names_.at(row), above + legal);
    names_[row] = legal;
    tree_.SetName(row, legal);
  } catch (const Failure& failure) {
    desktop_.MsgBox(failure.what(), Buttons::Ok, "Marlowick");
  }
}
