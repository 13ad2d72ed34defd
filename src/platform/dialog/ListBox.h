#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/dialog/Control.h"

namespace Controls {

struct ListStyle {
  bool Sorted = false;  // ascending, without regard to case
  // Shift and Ctrl select several rows, and Ctrl+A all.
  bool MultiSelect = false;
};

// Rows of text. The rows are this part's, whose changes reach the widget in one step, however many there are
// in one handler. Indices run from 0; one that isn't there fails.
//
// Hidden lists that nobody ever sees need no part: a vector serves.
class ListBox : public Control {
 public:
  ListBox(Dialog& dialog, std::string name, ListStyle style = {})
      : Control(dialog, std::move(name)), Style(style) {}

  const ListStyle Style;

  void AddItem(const std::string& text);
  void RemoveItem(int index);
  void Clear();
  // Replaces all rows. Sorting many rows at once is quicker than adding them one by one.
  void Fill(std::vector<std::string> texts);

  int ListCount() const { return static_cast<int>(rows_.size()); }
  const std::string& List(int index) const { return RowAt(index).text; }

  // The row of the user's last press, -1 for none. Setting it selects that row alone, and is no click.
  int ListIndex() const { return index_; }
  void SetListIndex(int index);

  bool Selected(int index) const { return RowAt(index).selected; }
  void SetSelected(int index, bool selected);
  void SelectAll();                    // does nothing in a list of which one row at most is selected
  std::vector<int> Selection() const;  // ascending

  std::function<void()> Click;      // the user has selected something else
  std::function<void()> DblClick;   // a double click, or Enter, on the row of ListIndex
  std::function<void()> DeleteKey;  // the Delete key
  // How much of a row is done, 0 to 1, drawn at the row's end; below 0 there is nothing to draw. Set before
  // the dialog comes up, and asked again whenever rows are filled in.
  std::function<double(int index)> Share;

  // What the user's selecting does: these rows, the last press on `index`.
  void Choose(const std::vector<int>& rows, int index);

 private:
  struct Row {
    std::string text;
    std::string key;  // what it is sorted by, in a sorted list
    bool selected = false;
  };
  const Row& RowAt(int index) const;
  Row Made(std::string text) const;

  std::vector<Row> rows_;
  int index_ = -1;
};

}  // namespace Controls
