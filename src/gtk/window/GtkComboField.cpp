#include "gtk/window/GtkComboField.h"

#include <atkmm/object.h>
#include <gtkmm/cssprovider.h>
#include <gtkmm/fixed.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/Text.h"

namespace {

constexpr int ButtonWidth = 21;     // pixels
constexpr double ClickSlack = 4;    // pixels that the mouse may move within a click
constexpr int NarrowestEntry = 10;  // pixels; in a narrower field the button hides part of it

// The field is as low as the bar that it stands on: nothing of a theme may make it taller.
constexpr const char* Style = R"(
  entry {
    min-height: 0; min-width: 0; padding: 0 4px; margin: 0;
    font-size: 11px; color: #000000; caret-color: #000000; background: #ffffff;
    border: 1px solid #7f8a99; border-right-width: 0; border-radius: 0; box-shadow: none; outline-width: 0;
  }
  entry selection { color: #ffffff; background: #316ac5; }
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

// 1 shift, 2 control, 4 alt.
int ShiftOf(guint state) {
  return (state & GDK_SHIFT_MASK ? 1 : 0) | (state & GDK_CONTROL_MASK ? 2 : 0) |
         (state & GDK_MOD1_MASK ? 4 : 0);
}

bool Opens(const GdkEventKey& event) {
  return event.keyval == GDK_KEY_Down || event.keyval == GDK_KEY_KP_Down || event.keyval == GDK_KEY_F4;
}

}  // namespace

// The entry and its button side by side in whatever room there is: the bar may leave the field next to none.
class GtkComboField::Pair : public Gtk::Fixed {
 public:
  Pair(Gtk::Entry& entry, Gtk::Button& button) : entry_(entry), button_(button) {
    put(entry, 0, 0);
    put(button, 0, 0);
    show_all();
  }

 protected:
  void get_preferred_width_vfunc(int& minimum, int& natural) const override { minimum = natural = 0; }
  void get_preferred_height_vfunc(int& minimum, int& natural) const override { minimum = natural = 0; }
  void get_preferred_width_for_height_vfunc(int, int& minimum, int& natural) const override {
    minimum = natural = 0;
  }
  void get_preferred_height_for_width_vfunc(int, int& minimum, int& natural) const override {
    minimum = natural = 0;
  }
  void on_size_allocate(Gtk::Allocation& room) override {
    set_allocation(room);
    const int button = std::min(ButtonWidth, room.get_width()), entry = room.get_width() - button;
    Give(entry_, room.get_x(), std::max(entry, NarrowestEntry), room);
    Give(button_, room.get_x() + entry, button, room);
  }

 private:
  static void Give(Gtk::Widget& widget, int x, int width, const Gtk::Allocation& room) {
    int minimum = 0, natural = 0;
    widget.get_preferred_width(minimum, natural);  // the toolkit wants to be asked
    Gtk::Allocation place(x, room.get_y(), width, room.get_height());
    widget.size_allocate(place);
  }

  Gtk::Entry& entry_;
  Gtk::Button& button_;
};

GtkComboField::GtkComboField(Control& parent, const Place& place, Events& gate)
    : ComboBox(&parent, place), gate_(gate), pair_(std::make_unique<Pair>(entry_, button_)) {
  Dress();
  entry_.signal_changed().connect([this] {
    if (!setting_) text_ = entry_.get_text();
  });
  entry_.signal_key_press_event().connect([this](GdkEventKey* event) { return EntryKeyPress(event); }, false);
  entry_.signal_key_release_event().connect([this](GdkEventKey* event) { return EntryKeyRelease(*event); },
                                            false);
  const auto preedit = +[](GtkEntry*, const char* text, gpointer self) {
    static_cast<GtkComboField*>(self)->composing_ = *text != '\0';
  };
  g_signal_connect(entry_.gobj(), "preedit-changed", G_CALLBACK(preedit), this);
  WireClicks();
  entry_.signal_focus_out_event().connect([this](GdkEventFocus*) {
    list_.Close();
    return false;
  });
  entry_.signal_unmap().connect([this] { list_.Close(); });
  button_.signal_clicked().connect([this] { ToggleList(); });
  list_.Chosen = [this](size_t index) { Choose(index); };
  list_.Key = [this](GdkEventKey* event) {
    // Escape closes the list and nothing else.
    if (event->keyval == GDK_KEY_Escape && list_.TakeKey(*event)) return;
    // By the way of every key: the window's own keys come first, the rest reaches the entry.
    gtk_widget_event(gtk_widget_get_toplevel(Widget()), reinterpret_cast<GdkEvent*>(event));
  };
}

GtkComboField::~GtkComboField() = default;

GtkWidget* GtkComboField::Widget() { return GTK_WIDGET(pair_->gobj()); }

void GtkComboField::Dress() {
  const auto css = Gtk::CssProvider::create();
  css->load_from_data(Style);
  for (Gtk::Widget* widget : std::initializer_list<Gtk::Widget*>{&entry_, &button_})
    widget->get_style_context()->add_provider(css, GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
  entry_.set_width_chars(0);
  entry_.set_input_purpose(Gtk::INPUT_PURPOSE_URL);
  entry_.set_input_hints(Gtk::INPUT_HINT_NO_SPELLCHECK);
  entry_.property_truncate_multiline() = true;
  entry_.get_accessible()->set_name("Address");
  button_.set_image_from_icon_name("pan-down-symbolic", Gtk::ICON_SIZE_MENU);
  button_.set_can_focus(false);
  button_.get_accessible()->set_name("Show addresses");
}

void GtkComboField::SetText(const std::string& text) {
  std::string valid = Text::Valid(text);
  if (valid != text_) {
    text_ = std::move(valid);
    setting_ = true;
    entry_.set_text(text_);
    setting_ = false;
  }
  entry_.set_position(0);
}

long GtkComboField::SelStart() const {
  int start = 0, end = 0;
  entry_.get_selection_bounds(start, end);
  return start;
}

long GtkComboField::SelLength() const {
  int start = 0, end = 0;
  entry_.get_selection_bounds(start, end);
  return end - start;
}

void GtkComboField::Select(long start, long length) {
  const long size = entry_.get_text_length();
  const long from = std::clamp(start, 0L, size), to = std::clamp(start + length, from, size);
  // The cursor at the start: what was typed stays in view.
  entry_.select_region(static_cast<int>(to), static_cast<int>(from));
}

bool GtkComboField::EntryKeyPress(GdkEventKey* event) {
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
  gate_.Run([&] {
    if (KeyPress) KeyPress(code);
  });
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
  if (entry_.im_context_filter_keypress(event)) return true;
  gate_.Run([this] {
    if (KeyPress) KeyPress(13);
  });
  return true;
}

bool GtkComboField::EntryKeyRelease(const GdkEventKey& event) {
  // What the list took was no key of the field's, even where it has closed the list.
  if (composing_ || list_.IsOpen() || std::exchange(list_key_, 0) == event.hardware_keycode) return false;
  // Nor was a shortcut, such as Ctrl+A here or Ctrl+L anywhere: completing behind it would undo what it did.
  if (down_.erase(event.hardware_keycode) == 0) return false;
  gate_.Run([&] {
    if (KeyUp) KeyUp(CodeOf(event.keyval), ShiftOf(event.state));
  });
  return false;
}

// The first click selects the whole address, ready to be typed over, unless the mouse selects a part itself.
void GtkComboField::WireClicks() {
  entry_.signal_button_press_event().connect(
      [this](GdkEventButton* event) {
        first_click_ = entry_.has_focus() || event->button != 1 ? std::nullopt : std::optional(event->x);
        return false;
      },
      false);
  entry_.signal_button_release_event().connect(
      [this](GdkEventButton* event) {
        if (first_click_ && std::abs(event->x - *first_click_) < ClickSlack) entry_.select_region(0, -1);
        first_click_.reset();
        return false;
      },
      false);
}

void GtkComboField::ToggleList() {
  if (list_.IsOpen()) return list_.Close();
  entry_.grab_focus_without_selecting();
  list_.Open(*pair_, text_);
}

void GtkComboField::Choose(size_t index) {
  SetText(List(index));
  gate_.Run([this] {
    if (Click) Click();
  });
}
