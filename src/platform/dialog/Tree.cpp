#include "platform/dialog/Tree.h"

#include <algorithm>
#include <utility>

#include "platform/Failure.h"
#include "platform/Text.h"

namespace Controls {

Tree::Node& Tree::Find(RowId row) { return const_cast<Node&>(std::as_const(*this).Find(row)); }

const Tree::Node& Tree::Find(RowId row) const {
  const auto found = nodes_.find(row);
  if (found == nodes_.end()) throw Failure("The tree " + Name + " has no row " + std::to_string(row));
  return found->second;
}

Tree::RowId Tree::Add(const Row& row) {
  std::vector<RowId>& siblings = row.Parent == Root ? top_ : Find(row.Parent).children;
  siblings.push_back(++last_);
  nodes_.emplace(last_, Node{row, {}});
  Changed(Aspect::Rows);
  return last_;
}

void Tree::Remove(RowId row) {
  const RowId parent = Find(row).row.Parent;
  std::erase(parent == Root ? top_ : Find(parent).children, row);
  Forget(row);
  std::erase_if(selection_, [this](RowId selected) { return !nodes_.contains(selected); });
  Changed(Aspect::Rows);
}

void Tree::Forget(RowId row) {
  const auto node = nodes_.extract(row);
  for (const RowId child : node.mapped().children) Forget(child);
}

void Tree::Clear() {
  nodes_.clear();
  top_.clear();
  selection_.clear();
  Changed(Aspect::Rows);
}

const Tree::Row& Tree::At(RowId row) const { return Find(row).row; }

const std::vector<Tree::RowId>& Tree::Children(RowId row) const {
  return row == Root ? top_ : Find(row).children;
}

void Tree::SetName(RowId row, const std::string& name) {
  Find(row).row.Name = name;
  Changed(Aspect::Rows);
}

void Tree::SetDetail(RowId row, const std::string& detail) {
  Find(row).row.Detail = detail;
  Changed(Aspect::Rows);
}

void Tree::Expand(RowId row, bool expanded) {
  if (Find(row).row.Expanded == expanded) return;
  Find(row).row.Expanded = expanded;
  Changed(Aspect::Rows);
}

bool Tree::Shown(RowId row) const { return Find(row).shown; }

bool Tree::Mark(RowId row, const std::string& filter) {
  Node& node = Find(row);
  const auto contains = [&filter](const std::string& text) {
    return Text::UpperCase(text).find(filter) != std::string::npos;
  };
  node.shown = filter.empty() || contains(node.row.Name) || contains(node.row.Detail);
  for (const RowId child : node.children)
    if (Mark(child, filter)) node.shown = true;
  return node.shown;
}

void Tree::Changed(Aspect aspect) {
  if (aspect == Aspect::Rows && (!Filter->empty() || filtered_)) {
    filtered_ = !Filter->empty();
    const std::string filter = Text::UpperCase(Filter());
    for (const RowId row : top_) Mark(row, filter);
    std::erase_if(selection_, [this](RowId selected) { return !Shown(selected); });
  }
  Control::Changed(aspect);
}

void Tree::Select(const std::vector<RowId>& rows) {
  for (const RowId row : rows) Find(row);
  if (!MultiSelect && rows.size() > 1) throw Failure("The tree " + Name + " has one selected row at most");
  selection_ = rows;
  bool opened = false;
  for (RowId above = rows.empty() ? Root : At(rows.back()).Parent; above != Root; above = At(above).Parent)
    if (!At(above).Expanded) opened = Find(above).row.Expanded = true;
  Changed(opened ? Aspect::Rows : Aspect::Selection);
}

void Tree::EditName(RowId row) {
  if (!At(row).CanRename) return;
  editing_ = row;
  Changed(Aspect::Editing);
}

void Tree::Choose(const std::vector<RowId>& rows) {
  Select(rows);
  if (Click) Click();
}

void Tree::Open(RowId row, bool opened) {
  Find(row).row.Expanded = opened;
  if (Opened) Opened(row);
}

bool Tree::AnyHolds(const std::vector<RowId>& rows, RowId other) const {
  for (; other != Root; other = At(other).Parent)
    if (std::find(rows.begin(), rows.end(), other) != rows.end()) return true;
  return false;
}

void Tree::Dropped(const std::vector<RowId>& rows, RowId on) {
  if (on != Root && !At(on).TakesRows) on = At(on).Parent;
  for (const RowId row : rows)
    if (!At(row).CanMove) return;
  if (!rows.empty() && !AnyHolds(rows, on) && Drop) Drop(rows, on);
}

}  // namespace Controls
