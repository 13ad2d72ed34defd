#include "dialogs/ChooseFolder.h"

#include "core/Program.h"

ChooseFolder::ChooseFolder(Program& program)
    : Dialog(program.desktop, "ChooseFolder"), folders_(program.desktop, treFolders) {
  cmdNewFolder.Click = [this] { folders_.NewFolder(); };
  cmdMove.Click = [this, &program] {
    try {
      chosen_ = folders_.Chosen();
      Visible = false;
    } catch (const Failure& failure) {
      program.desktop.MsgBox(failure.what(), Buttons::Ok, "Organise Favourites");
    }
  };
  treFolders.DblClick = [this](Controls::Tree::RowId) { cmdMove.Click(); };
  cmdCancel.Click = [this] { Visible = false; };
  QueryUnload = cmdCancel.Click;
}

std::string ChooseFolder::Ask(const std::string& root) {
  chosen_.clear();
  folders_.Fill(root);
  ShowModal();
  return chosen_;
}
