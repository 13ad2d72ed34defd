#include "gtk/window/GtkComboField.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <initializer_list>
#include <memory>
#include <string_view>
#include <utility>

#include "gtk/window/Style.h"
#include "platform/Text.h"
#include "platform/WebAddress.h"

namespace {

constexpr int ButtonWidth = 21;     // pixels
constexpr double ClickSlack = 4;    // pixels that the mouse may move within a click
constexpr int NarrowestEntry = 10;  // pixels; in a narrower field the button hides part of it

// The field is as low as the bar that it stands on: nothing of a theme may make it taller.
constexpr const char* EntryStyle = R"(
  entry {
    min-height: 0; min-width: 0; padding: 0 4px 0 22px; margin: 0;
    font-size: 11px; color: #000000; caret-color: #000000; background: #ffffff;
    border: 1px solid #7f8a99; border-right-width: 0; border-radius: 0; box-shadow: none; outline-width: 0;
  }
  entry.two-marks { padding-left: 42px; }
  entry selection { color: #ffffff; background: #316ac5; }
)";
constexpr const char* ButtonStyle = R"(
  button {
    min-height: 0; min-width: 0; padding: 0; margin: 0;
    color: #26303c; background: linear-gradient(#fbfcfd, #dde2e8);
    border: 1px solid #7f8a99; border-radius: 0; box-shadow: none; text-shadow: none; -gtk-icon-shadow: none;
  }
  button:hover { background: linear-gradient(#ffffff, #cfdcf0); }
  button:active { background: #b9cbe6; }
)";

struct KeyCode {
  guint keyval;
  int code;
};

constexpr KeyCode KeyCodes[] = {
    {GDK_KEY_BackSpace, 8},     {GDK_KEY_Tab, 9},      {GDK_KEY_ISO_Left_Tab, 9}, {GDK_KEY_Clear, 12},
    {GDK_KEY_KP_Begin, 12},     {GDK_KEY_Return, 13},  {GDK_KEY_KP_Enter, 13},    {GDK_KEY_ISO_Enter, 13},
    {GDK_KEY_Shift_L, 16},      {GDK_KEY_Shift_R, 16}, {GDK_KEY_Control_L, 17},   {GDK_KEY_Control_R, 17},
    {GDK_KEY_Alt_L, 18},        {GDK_KEY_Alt_R, 18},   {GDK_KEY_Meta_L, 18},      {GDK_KEY_Meta_R, 18},
    {GDK_KEY_Escape, 27},       {GDK_KEY_Page_Up, 33}, {GDK_KEY_KP_Page_Up, 33},  {GDK_KEY_Page_Down, 34},
    {GDK_KEY_KP_Page_Down, 34}, {GDK_KEY_End, 35},     {GDK_KEY_KP_End, 35},      {GDK_KEY_Home, 36},
    {GDK_KEY_KP_Home, 36},      {GDK_KEY_Left, 37},    {GDK_KEY_KP_Left, 37},     {GDK_KEY_Up, 38},
    {GDK_KEY_KP_Up, 38},        {GDK_KEY_Right, 39},   {GDK_KEY_KP_Right, 39},    {GDK_KEY_Down, 40},
    {GDK_KEY_KP_Down, 40},      {GDK_KEY_Insert, 45},  {GDK_KEY_KP_Insert, 45},   {GDK_KEY_Delete, 46},
    {GDK_KEY_KP_Delete, 46},
};
// Away from the codes above, where the characters of other keys would fall.
constexpr int OtherKey = 255;

int CodeOf(guint keyval) {
  if (keyval >= GDK_KEY_a && keyval <= GDK_KEY_z) return static_cast<int>(keyval) - 32;
  if ((keyval >= GDK_KEY_A && keyval <= GDK_KEY_Z) || (keyval >= GDK_KEY_0 && keyval <= GDK_KEY_9))
    return static_cast<int>(keyval);
  for (const KeyCode& key : KeyCodes)
    if (key.keyval == keyval) return key.code;
  return OtherKey;
}

bool Opens(const GdkEventKey& event) {
  return event.keyval == GDK_KEY_Down || event.keyval == GDK_KEY_KP_Down || event.keyval == GDK_KEY_F4;
}

}  // namespace

GtkComboField::GtkComboField(Control& parent, const Place& place, Events& gate)
    : ComboBox(&parent, place),
      list_(*this, [&gate](const auto& handler) { gate.Run(handler); }),
      pair_(GTK_WIDGET(g_object_ref_sink(gtk_overlay_new()))),
      entry_(GTK_ENTRY(gtk_entry_new())),
      button_(gtk_button_new_from_icon_name("pan-down-symbolic", GTK_ICON_SIZE_MENU)),
      mark_([this] { PressMark(); }, [&gate](const auto& handler) { gate.Run(handler); }),
      callbacks_([&gate](const auto& handler) { gate.Run(handler); }) {
  Dress();
  LayOut();
  ListenToKeys();
  ListenToMouse();
  ListenToText();
  callbacks_.On<void(GtkEntry*)>(entry_, "changed", [this](auto*) {
    if (setting_) return;
    text_ = gtk_entry_get_text(entry_);
    if (Change) Change();
  });
  callbacks_.On<void(GtkWidget*, GdkRectangle*)>(entry_, "size-allocate", [this](GtkWidget* entry, auto*) {
    if (!gtk_widget_has_focus(entry)) ShowWhose();
  });
  callbacks_.On<void(GtkWidget*)>(entry_, "unmap", [this](auto*) { list_.Close(); });
  list_.Chosen = [this](size_t index) { Choose(index); };
  list_.Key = [this](GdkEventKey* event) {
    // Escape closes the list and nothing else.
    if (event->keyval == GDK_KEY_Escape && list_.TakeKey(*event)) return;
    // By the way of every key: the window's own keys come first, the rest reaches the entry.
    gtk_widget_event(gtk_widget_get_toplevel(Widget()), reinterpret_cast<GdkEvent*>(event));
  };
}

GtkComboField::~GtkComboField() { gtk_widget_destroy(pair_.get()); }

void GtkComboField::Dress() {
  AddStyle(GTK_WIDGET(entry_), EntryStyle);
  AddStyle(button_, ButtonStyle);
  gtk_entry_set_width_chars(entry_, 0);
  gtk_entry_set_input_purpose(entry_, GTK_INPUT_PURPOSE_URL);
  gtk_entry_set_input_hints(entry_, GTK_INPUT_HINT_NO_SPELLCHECK);
  atk_object_set_name(gtk_widget_get_accessible(GTK_WIDGET(entry_)), "Address");
  gtk_widget_set_can_focus(button_, FALSE);
  atk_object_set_name(gtk_widget_get_accessible(button_), "Show addresses");
}

// The entry and its button side by side in whatever room there is: the bar may leave the field next to none.
// So neither of them asks for any.
void GtkComboField::LayOut() {
  GtkOverlay* pair = GTK_OVERLAY(pair_.get());
  using Position = gboolean(GtkOverlay*, GtkWidget*, GdkRectangle*);
  callbacks_.On<Position>(pair, "get-child-position", [this](auto*, GtkWidget* child, GdkRectangle* place) {
    const int room = gtk_widget_get_allocated_width(pair_.get());
    const int button = std::min(ButtonWidth, room);
    int least = 0;
    gtk_widget_get_preferred_width(child, &least, nullptr);  // the toolkit wants to be asked
    const int height = gtk_widget_get_allocated_height(pair_.get());
    if (child == button_)
      *place = {room - button, 0, button, height};
    else if (child == mark_.Widget())
      // Within the entry's border.
      *place = {1, 1, std::clamp(room - button - 1, 1, FieldMark::Width * mark_.Count()), height - 2};
    else
      *place = {0, 0, std::max(room - button, NarrowestEntry), height};
    return TRUE;
  });
  gtk_overlay_add_overlay(pair, GTK_WIDGET(entry_));
  gtk_overlay_add_overlay(pair, mark_.Widget());
  gtk_overlay_add_overlay(pair, button_);
  gtk_widget_show_all(pair_.get());
}

void GtkComboField::ListenToKeys() {
  using Key = gboolean(GtkWidget*, GdkEventKey*);
  callbacks_.On<Key>(entry_, "key-press-event", [this](auto*, auto* event) { return EntryKeyPress(event); });
  callbacks_.On<Key>(entry_, "key-release-event", [this](auto*, auto* event) {
    EntryKeyRelease(*event);
    return FALSE;
  });
  callbacks_.On<void(GtkEntry*, const char*)>(entry_, "preedit-changed", [this](auto*, const char* text) {
    // What is composed is typed: from here on the field belongs to the typist.
    if (!std::exchange(composing_, *text != '\0') && composing_ && Change) Change();
  });
  using Focus = gboolean(GtkWidget*, GdkEventFocus*);
  callbacks_.On<Focus>(entry_, "focus-in-event", [this](auto*, auto*) {
    down_.clear();
    WatchWindow();
    return FALSE;
  });
  callbacks_.On<Focus>(entry_, "focus-out-event", [this](auto*, auto*) {
    // Where these keys come up is nothing to the field any more.
    down_.clear();
    list_.Close();
    // A window of the program's own may take the keyboard for a moment, as the list does.
    if (LostFocus && gtk_window_is_active(GTK_WINDOW(gtk_widget_get_toplevel(pair_.get())))) LostFocus();
    if (gtk_window_is_active(GTK_WINDOW(gtk_widget_get_toplevel(pair_.get())))) ShowWhose();
    return FALSE;
  });
}

// What the window takes for itself, such as Ctrl+L, never reaches the entry.
void GtkComboField::WatchWindow() {
  GtkWidget* window = gtk_widget_get_toplevel(pair_.get());
  callbacks_.Off(window);
  callbacks_.On<gboolean(GtkWidget*, GdkEvent*)>(window, "event", [this](auto*, GdkEvent* event) {
    if (event->type != GDK_KEY_PRESS && event->type != GDK_KEY_RELEASE) return FALSE;
    if (std::exchange(passing_, event->type == GDK_KEY_PRESS)) down_.clear();
    return FALSE;
  });
}

void GtkComboField::SetText(const std::string& text) {
  std::string valid = Text::Valid(text);
  if (valid != text_) {
    text_ = std::move(valid);
    setting_ = true;
    gtk_entry_set_text(entry_, text_.c_str());
    setting_ = false;
  }
  ShowWhose();
}

void GtkComboField::ShowWhose() {
  const size_t scheme = text_.find("://");
  const size_t end =
      scheme == text_.npos ? 0 : std::min(text_.find_first_of("/?#", scheme + 3), text_.size());
  GdkRectangle room{};
  gtk_entry_get_text_area(entry_, &room);
  PangoRectangle behind{};
  pango_layout_index_to_pos(gtk_entry_get_layout(entry_), static_cast<int>(end), &behind);
  const bool fits = PANGO_PIXELS(behind.x) <= room.width || gtk_widget_has_focus(GTK_WIDGET(entry_));
  const size_t place = fits ? 0 : Text::Length(std::string_view(text_).substr(0, end));
  gtk_editable_set_position(GTK_EDITABLE(entry_), static_cast<int>(place));
}

long GtkComboField::SelStart() const {
  int start = 0, end = 0;
  if (!gtk_editable_get_selection_bounds(GTK_EDITABLE(entry_), &start, &end))
    start = gtk_editable_get_position(GTK_EDITABLE(entry_));
  return start;
}

long GtkComboField::SelLength() const {
  int start = 0, end = 0;
  gtk_editable_get_selection_bounds(GTK_EDITABLE(entry_), &start, &end);
  return end - start;
}

void GtkComboField::Select(long start, long length) {
  const long size = gtk_entry_get_text_length(entry_);
  const long from = std::clamp(start, 0L, size), to = std::clamp(start + length, from, size);
  // The cursor at the start: what was typed stays in view.
  gtk_editable_select_region(GTK_EDITABLE(entry_), static_cast<int>(to), static_cast<int>(from));
}

bool GtkComboField::EntryKeyPress(GdkEventKey* event) {
  passing_ = false;
  if (event->state & (GDK_CONTROL_MASK | GDK_MOD1_MASK))
    down_.clear();
  else
    down_.insert(event->hardware_keycode);
  if (composing_ || (list_.IsOpen() && event->is_modifier)) return false;
  list_key_ = event->hardware_keycode;
  if (GoesToList(*event)) return true;
  list_key_ = 0;
  const int code = CodeOf(event->keyval);
  if (code == 13) return PressEnter(event);
  if (KeyPress) KeyPress(code);
  // Up would leave the field.
  return code == 38;
}

bool GtkComboField::GoesToList(const GdkEventKey& event) {
  if (list_.IsOpen()) {
    const bool taken = list_.TakeKey(event);
    if (!taken) list_.Close();
    return taken;
  }
  if (Opens(event)) ToggleList();
  return list_.IsOpen();
}

bool GtkComboField::PressEnter(GdkEventKey* event) {
  // The key may end a composition that the input method doesn't show.
  if (gtk_entry_im_context_filter_keypress(entry_, event)) return true;
  if (KeyPress) KeyPress(13);
  return true;
}

void GtkComboField::EntryKeyRelease(const GdkEventKey& event) {
  // What the list took was no key of the field's, even where it has closed the list.
  if (composing_ || list_.IsOpen() || std::exchange(list_key_, 0) == event.hardware_keycode) return;
  // A release counts only with its press, and with no shortcut between, such as Ctrl+A here or Ctrl+L of the
  // window: completing behind it would undo what it did.
  if (down_.erase(event.hardware_keycode) == 0) return;
  if (KeyUp) KeyUp(CodeOf(event.keyval));
}

// The first click selects the whole address, ready to be typed over, unless the mouse selects a part itself.
void GtkComboField::ListenToMouse() {
  using Button = gboolean(GtkWidget*, GdkEventButton*);
  callbacks_.On<Button>(entry_, "button-press-event", [this](GtkWidget* entry, GdkEventButton* event) {
    const bool first = event->button == 1 && !gtk_widget_has_focus(entry);
    first_click_ = first ? std::optional(event->x) : std::nullopt;
    return FALSE;
  });
  callbacks_.On<Button>(entry_, "button-release-event", [this](GtkWidget* entry, GdkEventButton* event) {
    if (first_click_ && std::abs(event->x - *first_click_) < ClickSlack)
      gtk_editable_select_region(GTK_EDITABLE(entry), 0, -1);
    first_click_.reset();
    return FALSE;
  });
  // What the entry leaves, such as the second press of a double click, is nobody's below it.
  for (const char* signal : {"button-press-event", "button-release-event"})
    callbacks_.On<Button>(pair_.get(), signal, [](auto*, auto*) { return TRUE; });
  callbacks_.On<void(GtkButton*)>(button_, "clicked", [this](auto*) { ToggleList(); });
}

void GtkComboField::SetMark(Safety safety, bool outside_sandbox) {
  mark_.Show(safety, outside_sandbox);
  GtkStyleContext* style = gtk_widget_get_style_context(GTK_WIDGET(entry_));
  if (outside_sandbox == gtk_style_context_has_class(style, "two-marks")) return;
  (outside_sandbox ? gtk_style_context_add_class : gtk_style_context_remove_class)(style, "two-marks");
  gtk_widget_queue_resize(pair_.get());
}

void GtkComboField::PressMark() {
  if (MarkPress) MarkPress();
}

void GtkComboField::ListenToText() {
  callbacks_.On<void(GtkEditable*, const char*, int, gpointer)>(
      entry_, "insert-text", [](GtkEditable* entry, const char* text, int length, gpointer position) {
        const std::string_view all(text, length < 0 ? std::strlen(text) : static_cast<size_t>(length));
        if (all.find_first_of("\n\r") == all.npos) return;
        g_signal_stop_emission_by_name(entry, "insert-text");
        const std::string line = WebAddress::OneLine(all);
        gtk_editable_insert_text(entry, line.data(), static_cast<int>(line.size()),
                                 static_cast<int*>(position));
      });
  callbacks_.On<void(GtkEntry*, GtkWidget*)>(entry_, "populate-popup", [this](auto*, GtkWidget* menu) {
    if (GTK_IS_MENU_SHELL(menu)) AddPasteAndGo(GTK_MENU_SHELL(menu));
  });
  gtk_drag_dest_add_uri_targets(GTK_WIDGET(entry_));
  callbacks_.On<void(GtkWidget*, GdkDragContext*, int, int, GtkSelectionData*, guint, guint)>(
      entry_, "drag-data-received",
      [this](GtkWidget* entry, GdkDragContext* context, int, int, GtkSelectionData* data, guint, guint time) {
        // A part of the text that is moved within it stays the entry's own affair.
        if (gtk_drag_get_source_widget(context) == entry) return;
        g_signal_stop_emission_by_name(entry, "drag-data-received");
        const std::unique_ptr<char*, decltype(&g_strfreev)> links(gtk_selection_data_get_uris(data),
                                                                  &g_strfreev);
        const std::string text = links && *links
                                     ? links.get()[0]
                                     : TakeText(reinterpret_cast<char*>(gtk_selection_data_get_text(data)));
        gtk_drag_finish(context, !text.empty(), FALSE, time);
        if (!text.empty()) GoTo(text);
      });
}

void GtkComboField::AddPasteAndGo(GtkMenuShell* menu) {
  GtkWidget* item = gtk_menu_item_new_with_mnemonic("Paste and _Go");
  GtkClipboard* clipboard = gtk_widget_get_clipboard(GTK_WIDGET(entry_), GDK_SELECTION_CLIPBOARD);
  gtk_widget_set_sensitive(item, gtk_clipboard_wait_is_text_available(clipboard));
  // Below "Cut", "Copy" and "Paste".
  gtk_menu_shell_insert(menu, item, 3);
  gtk_widget_show(item);
  callbacks_.On<void(GtkMenuItem*)>(item, "activate", [this, clipboard](auto*) {
    const std::string text = TakeText(gtk_clipboard_wait_for_text(clipboard));
    if (!text.empty()) GoTo(text);
  });
}

void GtkComboField::GoTo(const std::string& text) {
  SetText(WebAddress::OneLine(text));
  if (KeyPress) KeyPress(13);
}

void GtkComboField::ToggleList() {
  if (list_.IsOpen()) return list_.Close();
  gtk_entry_grab_focus_without_selecting(entry_);
  list_.Open(pair_.get(), text_);
}

void GtkComboField::Choose(size_t index) {
  SetText(List(index));
  if (Click) Click();
}
