#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "platform/dialog/Control.h"

namespace Controls {

// Rows below rows, with a name, a second column and a small picture. Like a list's, its changes reach the
// widget in one step. A row goes by a number of its own, which is never 0 and never used again.
class Tree : public Control {
 public:
  using RowId = int;
  static constexpr RowId Root = 0;  // above all rows; no row itself

  enum class Icon { None, Folder, Page, Warning };

  struct Row {
    RowId Parent = Root;
    std::string Name{}, Detail{};
    Icon Picture = Icon::None;
    bool Expanded = false;
    bool CanRename = false;  // the user may type another name in place
    bool CanMove = false;    // the user may drag it
    bool TakesRows = false;  // what is dropped on it goes below it; else, beside it
  };

  Tree(Dialog& dialog, std::string name, bool multi_select = false)
      : Control(dialog, std::move(name)), MultiSelect(multi_select), Filter(this, Aspect::Rows, "") {}

  const bool MultiSelect;
  // While it isn't empty, only the rows whose name or second column contains it in any case are on show, and
  // those above them.
  Property<std::string> Filter;

  // Behind the other rows of its parent. Fails where there is no such parent.
  RowId Add(const Row& row);
  // With all that is below it.
  void Remove(RowId row);
  void Clear();

  const Row& At(RowId row) const;
  const std::vector<RowId>& Children(RowId row) const;  // of Root: the topmost rows
  void SetName(RowId row, const std::string& name);
  void SetDetail(RowId row, const std::string& detail);
  void Expand(RowId row, bool expanded);
  bool Shown(RowId row) const;  // by the filter

  const std::vector<RowId>& Selection() const { return selection_; }
  RowId Current() const { return selection_.empty() ? Root : selection_.back(); }
  // Opens what is above the last of them and brings it into view.
  void Select(const std::vector<RowId>& rows);
  // Puts the row's name up for editing; does nothing where it can't be renamed.
  void EditName(RowId row);
  RowId Editing() const { return editing_; }  // the last one that was put up

  std::function<void()> Click;          // the user has selected something else
  std::function<void(RowId)> DblClick;  // a double click, or Enter, on a row
  std::function<void()> DeleteKey;      // the Delete key
  std::function<void(RowId)> Opened;    // the user has opened or closed a row
  // The user has typed another name. It is shown only where the program sets it.
  std::function<void(RowId, const std::string& name)> Rename;
  // The user has dropped rows on another, Root for the empty space; never on themselves or below themselves.
  std::function<void(const std::vector<RowId>& rows, RowId below)> Drop;

  // What the user's doings do.
  void Choose(const std::vector<RowId>& rows);
  void Open(RowId row, bool opened);
  void Dropped(const std::vector<RowId>& rows, RowId on);
  // Whether any of the rows is the other one or above it.
  bool AnyHolds(const std::vector<RowId>& rows, RowId other) const;

  void Changed(Aspect aspect) override;

 private:
  struct Node {
    Row row;
    std::vector<RowId> children;
    bool shown = true;
  };
  Node& Find(RowId row);
  const Node& Find(RowId row) const;
  void Forget(RowId row);
  bool Mark(RowId row, const std::string& filter);

  std::map<RowId, Node> nodes_;
  std::vector<RowId> top_;
  std::vector<RowId> selection_;
  bool filtered_ = false;
  RowId last_ = Root, editing_ = Root;
};

}  // namespace Controls
