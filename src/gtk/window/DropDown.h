#pragma once

#include <gtkmm/adjustment.h>
#include <gtkmm/box.h>
#include <gtkmm/drawingarea.h>
#include <gtkmm/scrollbar.h>
#include <gtkmm/window.h>

#include <cstddef>
#include <functional>
#include <optional>

#include "platform/ComboBox.h"

// The list that a field drops: a window of its own under the field that asks for the items in view only,
// however many there are. While it is open it has the mouse, and the keys go to the field, which hands it
// those that it takes.
class DropDown {
 public:
  explicit DropDown(const ComboBox& combo);
  ~DropDown();

  // An item was chosen, and the list is closed.
  std::function<void(size_t index)> Chosen;
  // A key that came to the open list.
  std::function<void(GdkEventKey* event)> Key;

  bool IsOpen() const { return popup_.get_visible(); }
  // Under `field`, as wide where that can be read, at the place of `text`, which is highlighted where it is
  // an item.
  void Open(Gtk::Widget& field, const std::string& text);
  void Close();
  // The list has changed.
  void Refresh();

  // Acts on a key of the open list: moves, chooses or closes. False: the key isn't the list's.
  bool TakeKey(const GdkEventKey& event);

 private:
  void Place();
  void Grab();
  bool Draw(const Cairo::RefPtr<Cairo::Context>& cairo);
  bool Press(const GdkEventButton& event);
  void Scroll(const GdkEventScroll& event);
  void Hover(double y);
  void MoveBy(long rows);
  void Highlight(size_t index);
  void Choose(size_t index);

  size_t Count() const { return combo_.ListCount ? combo_.ListCount() : 0; }
  std::optional<size_t> RowAt(double y) const;
  // What can be drawn of an item in a row.
  std::string RowText(size_t index) const;

  const ComboBox& combo_;
  Gtk::Widget* field_ = nullptr;
  Gtk::Window popup_{Gtk::WINDOW_POPUP};
  Gtk::Box box_;
  Gtk::DrawingArea list_;
  Glib::RefPtr<Gtk::Adjustment> scroll_;  // pixels
  Gtk::Scrollbar bar_;
  int row_height_ = 1;  // pixels
  std::optional<size_t> highlighted_;
  size_t nearest_ = 0;  // where the keys start while nothing is highlighted
  bool grabbed_ = false;
};
