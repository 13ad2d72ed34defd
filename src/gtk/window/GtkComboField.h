#pragma once

#include <gtk/gtk.h>

#include <optional>
#include <set>
#include <string>

#include "gtk/base/Callbacks.h"
#include "gtk/base/GObjects.h"
#include "gtk/window/DropDown.h"
#include "gtk/window/FieldMark.h"
#include "gtk/window/HasWidget.h"
#include "platform/ComboBox.h"
#include "platform/Events.h"

// The editable field with a drop-down list, as the user sees it.
class GtkComboField : public ComboBox, public HasWidget {
 public:
  GtkComboField(Control& parent, const Place& place, Events& gate);
  ~GtkComboField() override;

  GtkWidget* Widget() override { return pair_.get(); }

  std::string Text() const override { return text_; }
  // Text that isn't valid UTF-8 is made so. Of a text beyond what the entry holds, 64 KB, the rest isn't
  // seen.
  void SetText(const std::string& text) override;
  long SelStart() const override;
  long SelLength() const override;
  void Select(long start, long length) override;
  void SetFocus() override { gtk_widget_grab_focus(GTK_WIDGET(entry_)); }
  void SetMark(Safety safety, bool outside_sandbox) override;
  void ListChanged() override { list_.Refresh(); }

 private:
  void Dress();
  void LayOut();
  void ListenToKeys();
  void ListenToMouse();
  void WatchWindow();
  bool EntryKeyPress(GdkEventKey* event);
  // Whether the list takes a key; any other key closes it.
  bool GoesToList(const GdkEventKey& event);
  void EntryKeyRelease(const GdkEventKey& event);
  bool PressEnter(GdkEventKey* event);
  void PressMark();
  // Scrolls to where an address that nobody edits can be told by: its beginning, or the end of a host that is
  // longer than the field, which says whose it is.
  void ShowWhose();
  void ListenToText();
  void AddPasteAndGo(GtkMenuShell* menu);
  // Loads a text from outside as if it had been typed.
  void GoTo(const std::string& text);
  void ToggleList();
  void Choose(size_t index);

  DropDown list_;  // outlives the entry, which closes it
  Owned<GtkWidget> pair_;
  GtkEntry* entry_;    // in the pair
  GtkWidget* button_;  // in the pair
  FieldMark mark_;     // over the entry's start
  std::string text_;
  bool setting_ = false;    // the text is the program's, not the user's
  bool composing_ = false;  // an input method is at work
  std::set<guint16> down_;  // keys that went down here, without Ctrl or Alt, and aren't up yet
  bool passing_ = false;    // a key's press is on its way through the window and hasn't come here
  guint16 list_key_ = 0;    // the key that went to the list and isn't up yet
  // Where the mouse button went down that gave the field the keyboard, in pixels, until it is up again.
  std::optional<double> first_click_;
  Callbacks callbacks_;
};
