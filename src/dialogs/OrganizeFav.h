#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "platform/Timer.h"
#include "platform/dialog/Controls.h"
#include "platform/favourites/Bookmarks.h"

class Program;

// The window in which the favourites are arranged: all folders and links as one tree of what is on the disk.
class OrganizeFav : public Dialog {
 public:
  explicit OrganizeFav(Program& program);

  Controls::TextBox txtFilter{*this, "txtFilter"};
  Controls::Tree treFavourites{*this, "treFavourites", true};
  Controls::TextBox txtAddress{*this, "txtAddress"};
  Controls::CommandButton cmdChange{*this, "cmdChange"};
  Controls::CommandButton cmdOpen{*this, "cmdOpen"};
  Controls::CommandButton cmdOpenTab{*this, "cmdOpenTab"};
  Controls::CommandButton cmdNewFolder{*this, "cmdNewFolder"};
  Controls::CommandButton cmdRename{*this, "cmdRename"};
  Controls::CommandButton cmdMove{*this, "cmdMove"};
  Controls::CommandButton cmdDelete{*this, "cmdDelete"};
  Controls::CommandButton cmdRepair{*this, "cmdRepair"};
  Controls::CommandButton cmdImport{*this, "cmdImport"};
  Controls::CommandButton cmdImportFolder{*this, "cmdImportFolder"};
  Controls::CommandButton cmdExport{*this, "cmdExport"};
  Controls::ProgressBar barImport{*this, "barImport"};
  Controls::CommandButton cmdStop{*this, "cmdStop"};
  Controls::Label labStatus{*this, "labStatus"};
  Controls::CommandButton cmdClose{*this, "cmdClose"};

  // Shows the favourites in a folder of the host.
  void DoOrganizeFavDlg(const std::string& Path);

  void Form_Load() {}
  void Form_Unload(bool& cancel);

 private:
  using RowId = Controls::Tree::RowId;
  struct Item {
    std::string Path;
    bool IsFolder = false;
    std::string Address;  // of a link
    bool Faulty = false;  // a link without an address on the line that counts
  };
  // What was read of a file, good as long as the file is the same.
  struct Known {
    int64_t Changed = 0;
    std::string Address;
    bool Faulty = false;
  };

  // Shows what is on the disk now, with what was open still open, and these paths selected.
  void Reload(const std::vector<std::string>& selected);
  void Add(RowId parent, const std::string& folder, const std::set<std::string>& open, int depth);
  const Known& Read(const std::string& path);
  const Item* Current() const;
  // The folder that something new goes into: the selected one, or that of the selected link.
  std::string FolderHere() const;
  // Without what goes along with a folder that is selected as well.
  std::vector<Item> Selected() const;
  void UpdateButtons();
  void Say(const std::string& text);
  std::string CountFaulty() const;

  void NewFolder();
  void Rename(RowId row, const std::string& name);
  // Writes what was typed as the address of the row on show: before everything that reads the disk anew.
  void ChangeAddress();
  void MoveTo(const std::string& folder, const std::vector<Item>& items);
  void Drop(const std::vector<RowId>& rows, RowId below);
  void Move();
  void Delete();
  void Open(bool in_new_tab);
  void Repair();
  void Import(bool folder);
  void ContinueImport();
  void EndImport();
  void Export();

  // Runs what may fail, and tells of it. False: it failed.
  bool Telling(const std::function<void()>& action);

  Program& program_;
  std::string root_;
  std::map<RowId, Item> items_;
  std::map<std::string, Known> known_;
  RowId shown_address_ = 0;  // the row that txtAddress belongs to
  Bookmarks bookmarks_;      // that are being imported
  std::unique_ptr<BookmarkImport> import_;
  Timer timer_;  // the next slice of an import
};
