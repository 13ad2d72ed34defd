#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Safety.h"
#include "platform/scene/Scene.h"

// An editable field with a drop-down of a list that is always sorted: ascending, without regard to case. What
// the user sees is a widget of the desktop, which has the text and the selection; the list is the owner's,
// who lends it item by item.
class ComboBox : public Control {
 public:
  using Control::Control;

  // Setting the text puts the cursor at its start and raises no event.
  virtual std::string Text() const = 0;
  virtual void SetText(const std::string& text) = 0;
  // Characters, from 0.
  virtual long SelStart() const = 0;
  virtual void Select(long start, long length) = 0;
  virtual long SelLength() const = 0;
  virtual void SetFocus() = 0;
  // The mark at the field's start: what vouches for the page that the text is the address of, and a further
  // one where pages run without a sandbox.
  virtual void SetMark(Safety safety, bool outside_sandbox) = 0;

  // What the drop-down shows; it asks for the items in view only. A reference holds until the list changes.
  std::function<size_t()> ListCount;
  std::function<const std::string&(size_t index)> List;
  // Where a text stands in the list, or would stand: from 0 to ListCount.
  std::function<size_t(const std::string& text)> ListIndex;
  // The list has changed: a drop-down that is open shows it anew.
  virtual void ListChanged() {}

  // Key codes are those of the program: 13 Enter, 8 Backspace, 16 Shift, 12 Clear, 46 Delete, 27 Escape;
  // letters and digits are their capital ASCII codes, any other key is some other number.
  std::function<void(int key_ascii)> KeyPress;
  std::function<void(int key_code)> KeyUp;
  // The user has changed the text, by whatever means; the keyboard has left the field.
  std::function<void()> Change, LostFocus;
  std::function<void()> MarkPress;
  std::function<void()> Click;  // an item of the drop-down was chosen; Text is that item

 protected:
  void Describe(DrawItem& item) override { item.Foreign = true; }
};
