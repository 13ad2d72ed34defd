#pragma once

#include <gtk/gtk.h>

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

#include "gtk/base/Callbacks.h"
#include "gtk/base/Widgets.h"
#include "platform/ComboBox.h"

// The list that a field drops: a window of its own under the field, whose rows a screen reader can read.
// While it is open it has the mouse, and the keys go to the field, which hands it those that it takes.
class DropDown {
 public:
  DropDown(const ComboBox& combo, Callbacks::Runner runner);
  DropDown(const DropDown&) = delete;
  ~DropDown();

  // An item was chosen, and the list is closed.
  std::function<void(size_t index)> Chosen;
  // A key that came to the open list.
  std::function<void(GdkEventKey* event)> Key;

  bool IsOpen() const { return gtk_widget_get_visible(popup_.get()); }
  // Under `field`, as wide where that can be read, at the place of `text`, which is highlighted where it is
  // an item.
  void Open(GtkWidget* field, const std::string& text);
  void Close();
  // The list has changed.
  void Refresh();

  // Acts on a key of the open list: moves, chooses or closes. False: the key isn't the list's.
  bool TakeKey(const GdkEventKey& event);

 private:
  void Build();
  void Listen();
  void Fill();
  void Place();
  int RowHeight() const;
  void Grab();
  bool Outside(const GdkEventButton& event) const;
  void MoveBy(long rows);
  std::optional<size_t> Highlighted() const;
  void Highlight(size_t index);
  void Choose(size_t index);

  size_t Count() const { return combo_.ListCount ? combo_.ListCount() : 0; }

  const ComboBox& combo_;
  GtkWidget* field_ = nullptr;
  OwnedToplevel popup_;
  GtkWidget* scrolled_ = nullptr;
  GtkTreeView* list_ = nullptr;
  size_t nearest_ = 0;  // where the keys start while nothing is highlighted
  bool grabbed_ = false;
  bool leaving_ = false;  // a button of the mouse is down outside
  Callbacks callbacks_;
};
