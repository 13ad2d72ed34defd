#include "platform/dialog/ListBox.h"

#include <algorithm>
#include <utility>

#include "platform/Failure.h"
#include "platform/Text.h"

namespace Controls {

const ListBox::Row& ListBox::RowAt(int index) const {
  if (index < 0 || index >= ListCount())
    throw Failure("The list " + Name + " has no row " + std::to_string(index));
  return rows_[static_cast<size_t>(index)];
}

ListBox::Row ListBox::Made(std::string text) const {
  std::string key = Style.Sorted ? Text::UpperCase(text) : std::string();
  return {std::move(text), std::move(key)};
}

void ListBox::AddItem(const std::string& text) {
  Row row = Made(text);
  auto at = rows_.end();
  if (Style.Sorted)
    at = std::upper_bound(rows_.begin(), rows_.end(), row,
                          [](const Row& a, const Row& b) { return a.key < b.key; });
  if (index_ >= at - rows_.begin()) ++index_;
  rows_.insert(at, std::move(row));
  Changed(Aspect::Rows);
}

void ListBox::RemoveItem(int index) {
  RowAt(index);
  rows_.erase(rows_.begin() + index);
  if (index_ == index) index_ = -1;
  if (index_ > index) --index_;
  Changed(Aspect::Rows);
}

void ListBox::Clear() { Fill({}); }

void ListBox::Fill(std::vector<std::string> texts) {
  if (rows_.empty() && texts.empty()) return;
  std::vector<Row> rows;
  rows.reserve(texts.size());
  for (std::string& text : texts) rows.push_back(Made(std::move(text)));
  if (Style.Sorted)
    std::stable_sort(rows.begin(), rows.end(), [](const Row& a, const Row& b) { return a.key < b.key; });
  rows_ = std::move(rows);
  index_ = -1;
  Changed(Aspect::Rows);
}

void ListBox::SetListIndex(int index) {
  if (index != -1) RowAt(index);
  for (Row& row : rows_) row.selected = false;
  if (index != -1) rows_[static_cast<size_t>(index)].selected = true;
  index_ = index;
  Changed(Aspect::Selection);
}

void ListBox::SetSelected(int index, bool selected) {
  if (RowAt(index).selected == selected) return;
  if (!Style.MultiSelect && selected) return SetListIndex(index);
  if (!Style.MultiSelect) index_ = -1;
  rows_[static_cast<size_t>(index)].selected = selected;
  Changed(Aspect::Selection);
}

void ListBox::SelectAll() {
  if (!Style.MultiSelect) return;
  for (Row& row : rows_) row.selected = true;
  Changed(Aspect::Selection);
}

std::vector<int> ListBox::Selection() const {
  std::vector<int> selection;
  for (int i = 0; i < ListCount(); ++i)
    if (rows_[static_cast<size_t>(i)].selected) selection.push_back(i);
  return selection;
}

void ListBox::Choose(const std::vector<int>& rows, int index) {
  for (const int row : rows) RowAt(row);
  if (index != -1) RowAt(index);
  if (!Style.MultiSelect && rows.size() > 1)
    throw Failure("The list " + Name + " has one selected row at most");
  for (Row& row : rows_) row.selected = false;
  for (const int row : rows) rows_[static_cast<size_t>(row)].selected = true;
  index_ = index;
  Changed(Aspect::Selection);
  if (Click) Click();
}

}  // namespace Controls
