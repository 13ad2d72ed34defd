#include "dialogs/AddFavorite.h"

#include <algorithm>

#include "core/Program.h"
#include "core/frmMain.h"
#include "platform/Files.h"
#include "platform/Text.h"
#include "platform/favourites/FavouritesFolder.h"
#include "platform/favourites/FileName.h"

namespace {

std::string NameFor(const std::string& text, const std::string& otherwise) {
  return FileName::Legal(text, otherwise, Favourites::Extension.size());
}

bool Blank(const std::string& text) { return text.find_first_not_of(" \t") == text.npos; }

}  // namespace

AddFavorite::AddFavorite(Program& program)
    : Dialog(program.desktop, "AddFavorite"), program_(program), folders_(program.desktop, treFolders) {
  cmdNewFolder.Click = [this] { folders_.NewFolder(); };
  cmdAdd.Click = [this] { cmdAdd_Click(); };
  cmdCancel.Click = [this] { program_.add_favorite.Unload(); };
  QueryUnload = [this] { program_.add_favorite.Unload(); };
}

void AddFavorite::Ask(const std::string& URL, const std::string& Title) {
  if (!Visible) {
    txtName.Text = NameFor(Title, NameFor(URL, "Favourite"));
    txtAddress.Text = Text::Valid(URL);
    folders_.Fill(HostPath(program_.main().favourites.Folder()));
    Show();
  }
  SetFocus();
  txtName.SetFocus();
}

void AddFavorite::cmdAdd_Click() {
  const std::string name = NameFor(txtName.Text, "");
  if (name.empty()) {
    txtName.SetFocus();
    return Tell("The favourite needs a name: at least one letter or digit.");
  }
  if (Blank(txtAddress.Text)) {
    txtAddress.SetFocus();
    return Tell("The favourite needs an address.");
  }
  // Where a name can't be a file's, the one that it becomes is seen.
  txtName.Text = name;
  try {
    if (Write(name)) program_.add_favorite.Unload();
  } catch (const Failure& failure) {
    Tell(std::string(failure.what()) + ".\n\nChoose another folder or another name.");
  }
}

bool AddFavorite::Write(const std::string& name) {
  const std::string folder = folders_.Chosen(), file = name + std::string(Favourites::Extension);
  // Of two names that differ in letter case only, the menu would show one twice.
  const std::vector<std::string> there = Favourites::List(folder).Shortcuts;
  const auto same = std::find_if(there.begin(), there.end(), [&file](const std::string& other) {
    return Text::SameWithoutCase(other, file);
  });
  if (same == there.end()) {
    Favourites::WriteShortcut(folder + "/" + file, txtAddress.Text, Favourites::Taken::Refuse);
    return true;
  }
  const std::string question = "There is a favourite \"" + name + "\" in this folder already. Replace it?";
  if (program_.desktop.MsgBox(question, Buttons::YesNo, "Add to Favourites") != Answer::Yes) return false;
  Favourites::WriteShortcut(folder + "/" + *same, txtAddress.Text, Favourites::Taken::Replace);
  return true;
}

void AddFavorite::Tell(const std::string& text) {
  program_.desktop.MsgBox(text, Buttons::Ok, "Add to Favourites");
}
