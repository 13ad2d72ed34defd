#include "dialogs/OrganizeFav.h"

#include <algorithm>
#include <filesystem>

#include "core/Program.h"
#include "core/frmMain.h"
#include "dialogs/ChooseFolder.h"
#include "platform/Files.h"
#include "platform/Text.h"
#include "platform/favourites/FavouritesFolder.h"

using Controls::Tree;
namespace files = std::filesystem;

namespace {

constexpr const char* Title = "Organise Favourites";
// A link may lead round in a ring.
constexpr int MostDepth = 40;

std::string NameOf(const std::string& path) { return path.substr(path.rfind('/') + 1); }
std::string FolderOf(const std::string& path) { return path.substr(0, path.rfind('/')); }

std::string Shown(const std::string& path, bool folder) {
  const std::string name = NameOf(path);
  return Text::Valid(folder ? name : Favourites::WithoutExtension(name));
}

std::string Counted(size_t count, const char* one, const char* many) {
  return std::to_string(count) + " " + (count == 1 ? one : many);
}

}  // namespace

OrganizeFav::OrganizeFav(Program& program)
    : Dialog(program.desktop, "OrganizeFav"), program_(program), timer_(program.desktop, 1, false) {
  txtFilter.Change = [this] { treFavourites.Filter = txtFilter.Text; };
  treFavourites.Click = [this] { UpdateButtons(); };
  treFavourites.DblClick = [this](RowId row) {
    const auto found = items_.find(row);
    if (found != items_.end() && !found->second.IsFolder) Open(false);
  };
  treFavourites.DeleteKey = [this] { Delete(); };
  treFavourites.Rename = [this](RowId row, const std::string& name) { Rename(row, name); };
  treFavourites.Drop = [this](const std::vector<RowId>& rows, RowId below) { Drop(rows, below); };
  txtAddress.Activate = [this] { ChangeAddress(); };
  cmdChange.Click = [this] { ChangeAddress(); };
  cmdOpen.Click = [this] { Open(false); };
  cmdOpenTab.Click = [this] { Open(true); };
  cmdNewFolder.Click = [this] { NewFolder(); };
  cmdRename.Click = [this] { treFavourites.EditName(treFavourites.Current()); };
  cmdMove.Click = [this] { Move(); };
  cmdDelete.Click = [this] { Delete(); };
  cmdRepair.Click = [this] { Repair(); };
  cmdImport.Click = [this] { Import(false); };
  cmdImportFolder.Click = [this] { Import(true); };
  cmdExport.Click = [this] { Export(); };
  cmdStop.Click = [this] {
    if (import_) Say("The import was cancelled. Nothing of it has come into the favourites.");
    EndImport();
  };
  cmdClose.Click = [this] { program_.organize_fav.Unload(); };
  QueryUnload = [this] { program_.organize_fav.Unload(); };
  timer_.Tick = [this] { ContinueImport(); };
}

void OrganizeFav::DoOrganizeFavDlg(const std::string& Path) {
  if (!Visible) {
    root_ = Path;
    EndImport();
    Reload({});
    const std::string faulty = CountFaulty();
    Say(faulty.empty() ? Counted(items_.size(), "entry", "entries") : faulty);
    Show();
  }
  SetFocus();
}

// What was typed into the address is kept; an import that goes on leaves nothing.
void OrganizeFav::Form_Unload(bool&) {
  ChangeAddress();
  EndImport();
}

bool OrganizeFav::Telling(const std::function<void()>& action) {
  try {
    action();
    return true;
  } catch (const Failure& failure) {
    program_.desktop.MsgBox(Text::Valid(failure.what()), Buttons::Ok, Title);
    return false;
  }
}

void OrganizeFav::Reload(const std::vector<std::string>& selected) {
  std::set<std::string> open;
  for (const auto& [row, item] : items_)
    if (item.IsFolder && treFavourites.At(row).Expanded) open.insert(item.Path);
  for (const std::string& path : selected)
    for (std::string above = FolderOf(path); above.size() > root_.size(); above = FolderOf(above))
      open.insert(above);
  items_.clear();
  treFavourites.Clear();
  Add(Tree::Root, root_, open, 0);
  std::vector<RowId> rows;
  for (const auto& [row, item] : items_)
    if (std::find(selected.begin(), selected.end(), item.Path) != selected.end()) rows.push_back(row);
  treFavourites.Select(rows);
  shown_address_ = Tree::Root;
  UpdateButtons();
}

void OrganizeFav::Add(RowId parent, const std::string& folder, const std::set<std::string>& open, int depth) {
  const Favourites::Listing listing = Favourites::List(folder);
  Tree::Row row;
  row.Parent = parent;
  row.CanRename = row.CanMove = true;
  row.Picture = Tree::Icon::Folder;
  row.TakesRows = true;
  for (const std::string& name : listing.Folders) {
    const std::string path = folder + "/" + name;
    row.Name = Text::Valid(name);
    row.Expanded = open.contains(path);
    const RowId added = treFavourites.Add(row);
    items_[added] = {path, true, "", false};
    // A link that leads back up would lead down here again.
    if (depth < MostDepth && !Favourites::LiesIn(folder, path)) Add(added, path, open, depth + 1);
  }
  row.TakesRows = row.Expanded = false;
  for (const std::string& name : listing.Shortcuts) {
    const std::string path = folder + "/" + name;
    const Known& known = Read(path);
    row.Name = Shown(path, false);
    row.Detail = known.Faulty ? "No address on the line that counts" : Text::Valid(known.Address);
    row.Picture = known.Faulty ? Tree::Icon::Warning : Tree::Icon::Page;
    items_[treFavourites.Add(row)] = {path, false, known.Address, known.Faulty};
  }
}

const OrganizeFav::Known& OrganizeFav::Read(const std::string& path) {
  std::error_code error;
  const int64_t changed = files::last_write_time(path, error).time_since_epoch().count();
  const auto found = known_.find(path);
  if (found != known_.end() && found->second.Changed == changed && !error) return found->second;
  Known known{changed, "", true};
  Skipping([&] {
    known.Address = program_.main().favourites.OwnAddress(path);
    known.Faulty = known.Address.empty();
  });
  return known_[path] = known;
}

const OrganizeFav::Item* OrganizeFav::Current() const {
  const auto found = items_.find(treFavourites.Current());
  return found == items_.end() ? nullptr : &found->second;
}

std::string OrganizeFav::FolderHere() const {
  const Item* current = Current();
  if (!current) return root_;
  return current->IsFolder ? current->Path : FolderOf(current->Path);
}

std::vector<OrganizeFav::Item> OrganizeFav::Selected() const {
  std::vector<Item> items;
  const std::vector<RowId>& rows = treFavourites.Selection();
  for (const RowId row : rows) {
    bool along = false;
    for (RowId above = treFavourites.At(row).Parent; above != Tree::Root;
         above = treFavourites.At(above).Parent)
      along = along || std::find(rows.begin(), rows.end(), above) != rows.end();
    if (!along && items_.contains(row)) items.push_back(items_.at(row));
  }
  return items;
}

void OrganizeFav::UpdateButtons() {
  const RowId row = treFavourites.Current();
  if (row != shown_address_) {
    // What was typed for the row before is kept.
    ChangeAddress();
    const Item* current = Current();
    shown_address_ = row;
    txtAddress.Text = current ? Text::Valid(current->Address) : "";
  }
  const Item* current = Current();
  const bool one = current && treFavourites.Selection().size() == 1, link = one && !current->IsFolder;
  txtAddress.Enabled = link;
  cmdChange.Enabled = link;
  cmdOpen.Enabled = link && !current->Faulty;
  cmdOpenTab.Enabled = link && !current->Faulty;
  cmdRename.Enabled = one;
  cmdMove.Enabled = current != nullptr;
  cmdDelete.Enabled = current != nullptr;
  cmdRepair.Visible = !CountFaulty().empty();
  barImport.Visible = import_ != nullptr;
  cmdStop.Visible = import_ != nullptr;
  cmdImport.Enabled = !import_;
  cmdImportFolder.Enabled = !import_;
}

void OrganizeFav::Say(const std::string& text) { labStatus.Caption = Text::Valid(text); }

std::string OrganizeFav::CountFaulty() const {
  const auto count =
      std::count_if(items_.begin(), items_.end(), [](const auto& entry) { return entry.second.Faulty; });
  if (count == 0) return "";
  return Counted(static_cast<size_t>(count), "link has", "links have") +
         " no address on the line behind \"[InternetShortcut]\", and can't be opened from the menu.";
}

void OrganizeFav::NewFolder() {
  ChangeAddress();
  std::string path;
  const bool made = Telling([&] {
    if (!Favourites::Stands(root_)) Favourites::MakeFolder(root_);
    const std::string folder = FolderHere();
    path = folder + "/" + Favourites::FreeName(folder, "New Folder", "");
    Favourites::MakeFolder(path);
  });
  if (!made) return;
  Reload({path});
  treFavourites.EditName(treFavourites.Current());
}

void OrganizeFav::Rename(RowId row, const std::string& name) {
  if (!items_.contains(row)) return;
  ChangeAddress();
  const Item item = items_.at(row);
  const std::string extension(item.IsFolder ? "" : Favourites::Extension);
  const std::string legal = FileName::Legal(name, "", extension.size());
  if (legal.empty()) return Say("A name needs at least one letter or digit.");
  const std::string path = FolderOf(item.Path) + "/" + legal + extension;
  if (path == item.Path) return;
  if (Telling([&] { Favourites::Rename(item.Path, path); })) Reload({path});
}

void OrganizeFav::ChangeAddress() {
  const auto found = items_.find(shown_address_);
  if (found == items_.end() || found->second.IsFolder) return;
  Item& item = found->second;
  const std::string typed = txtAddress.Text;
  if (typed == Text::Valid(item.Address)) return;
  if (typed.find_first_not_of(' ') == typed.npos)
    return Say("A link needs an address. It keeps the one that it had.");
  if (!Telling([&] { Favourites::WriteShortcut(item.Path, typed, Favourites::Taken::Replace); })) return;
  item.Address = typed;
  item.Faulty = false;
  known_.erase(item.Path);
  treFavourites.SetDetail(shown_address_, typed);
  Say("The address of \"" + Shown(item.Path, false) + "\" is changed.");
}

void OrganizeFav::MoveTo(const std::string& folder, const std::vector<Item>& items) {
  ChangeAddress();
  std::vector<std::string> moved;
  for (const Item& item : items) {
    const std::string path = folder + "/" + NameOf(item.Path);
    if (path == item.Path) continue;
    if (Telling([&] { Favourites::Move(item.Path, path); })) moved.push_back(path);
  }
  if (moved.empty()) return;
  Reload(moved);
  Say(Counted(moved.size(), "entry was", "entries were") + " moved to \"" +
      (folder == root_ ? "Favourites" : Shown(folder, true)) + "\".");
}

void OrganizeFav::Drop(const std::vector<RowId>& rows, RowId below) {
  std::vector<Item> items;
  for (const RowId row : rows)
    if (items_.contains(row)) items.push_back(items_.at(row));
  const auto target = items_.find(below);
  if (target == items_.end()) return MoveTo(root_, items);
  MoveTo(target->second.IsFolder ? target->second.Path : FolderOf(target->second.Path), items);
}

void OrganizeFav::Move() {
  const std::vector<Item> items = Selected();
  if (items.empty()) return;
  ChooseFolder chooser(program_);
  const std::string folder = chooser.Ask(root_);
  if (!folder.empty()) MoveTo(folder, items);
}

void OrganizeFav::Delete() {
  ChangeAddress();
  const std::vector<Item> items = Selected();
  size_t deleted = 0;
  bool asked = false;
  for (const Item& item : items) {
    bool gone = false;
    if (!Telling([&] { gone = program_.desktop.MoveToTrash(item.Path); })) continue;
    if (!gone && !asked) {
      const std::string what = items.size() == 1 ? "\"" + Shown(item.Path, item.IsFolder) + "\""
                                                 : std::to_string(items.size()) + " entries";
      const std::string question = "There is no trash here. Delete " + what + " for good" +
                                   (item.IsFolder ? ", with everything in it?" : "?");
      if (program_.desktop.MsgBox(question, Buttons::YesNo, Title) != Answer::Yes) break;
      asked = true;
    }
    if (!gone && !Telling([&] { Favourites::Remove(item.Path); })) continue;
    ++deleted;
  }
  if (deleted == 0) return;
  shown_address_ = Tree::Root;
  Reload({});
  Say(Counted(deleted, "entry was", "entries were") + (asked ? " deleted." : " moved to the trash."));
}

void OrganizeFav::Open(bool in_new_tab) {
  ChangeAddress();
  const Item* current = Current();
  if (!current || current->IsFolder) return;
  if (current->Faulty) return Say("This link has no address yet: type one below, or put it right.");
  frmMain& main = program_.main();
  const std::string address = current->Address;
  if (in_new_tab) {
    Telling([&] { main.tabs.AddTab(address); });
  } else {
    main.address.Combo1->SetText(address);
    main.address.Combo1->Click();
  }
}

// Writes links in our own form that other programs wrote in theirs.
void OrganizeFav::Repair() {
  ChangeAddress();
  size_t repaired = 0;
  std::string left;
  for (const auto& row : items_) {
    const Item& item = row.second;
    if (!item.Faulty) continue;
    const std::string address = program_.desktop.AddressInShortcut(item.Path);
    if (address.empty()) {
      left += (left.empty() ? "\"" : ", \"") + Shown(item.Path, false) + "\"";
      continue;
    }
    if (Telling([&] { Favourites::WriteShortcut(item.Path, address, Favourites::Taken::Replace); }))
      ++repaired;
    known_.erase(item.Path);
  }
  Reload({});
  Say(Counted(repaired, "link was", "links were") + " put right." +
      (left.empty() ? "" : " There is no address at all in " + left + ": type one below."));
}
