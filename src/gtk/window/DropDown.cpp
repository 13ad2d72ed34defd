#include "gtk/window/DropDown.h"

#include <atkmm/object.h>
#include <gdkmm/monitor.h>
#include <gtkmm/cssprovider.h>

#include <algorithm>
#include <cmath>

#include "platform/Text.h"

namespace {

constexpr size_t MostRows = 12;
constexpr int LeastWidth = 200;  // pixels; a field may be too narrow to read anything under it
constexpr int Border = 1, RowPadding = 2, TextIndent = 5;  // pixels
constexpr long WheelRows = 3;
// More characters of an item than any screen shows in a row.
constexpr size_t RowCharacters = 1000;

constexpr const char* Style = R"(
  .drop-down { background: #ffffff; border: 1px solid #7f8a99; }
  .drop-down-list { font-size: 11px; }
  scrollbar, scrollbar trough { background: #eef0f3; border: none; margin: 0; padding: 0; }
  scrollbar slider {
    background: #a9b1bc; border: 3px solid #eef0f3; border-radius: 6px; margin: 0; min-width: 6px; min-height: 24px;
  }
  scrollbar slider:hover, scrollbar slider:active { background: #7f8a99; }
)";

void Ink(const Cairo::RefPtr<Cairo::Context>& cairo, unsigned rgb) {
  cairo->set_source_rgb((rgb >> 16 & 255) / 255.0, (rgb >> 8 & 255) / 255.0, (rgb & 255) / 255.0);
}

}  // namespace

DropDown::DropDown(const ComboBox& combo)
    : combo_(combo), scroll_(Gtk::Adjustment::create(0, 0, 0)), bar_(scroll_, Gtk::ORIENTATION_VERTICAL) {
  const auto css = Gtk::CssProvider::create();
  css->load_from_data(Style);
  for (Gtk::Widget* widget : std::initializer_list<Gtk::Widget*>{&box_, &list_, &bar_})
    widget->get_style_context()->add_provider(css, GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
  box_.get_style_context()->add_class("drop-down");
  list_.get_style_context()->add_class("drop-down-list");

  popup_.set_type_hint(Gdk::WINDOW_TYPE_HINT_COMBO);
  popup_.set_resizable(false);
  popup_.add(box_);
  box_.pack_start(list_, Gtk::PACK_EXPAND_WIDGET);
  box_.pack_end(bar_, Gtk::PACK_SHRINK);
  box_.show();
  list_.show();
  list_.add_events(Gdk::BUTTON_PRESS_MASK | Gdk::BUTTON_RELEASE_MASK | Gdk::POINTER_MOTION_MASK |
                   Gdk::SCROLL_MASK | Gdk::SMOOTH_SCROLL_MASK);
  list_.signal_draw().connect([this](const Cairo::RefPtr<Cairo::Context>& cairo) { return Draw(cairo); });
  list_.signal_motion_notify_event().connect([this](GdkEventMotion* event) {
    Hover(event->y);
    return true;
  });
  list_.signal_scroll_event().connect([this](GdkEventScroll* event) {
    Scroll(*event);
    return true;
  });
  list_.signal_button_release_event().connect([this](GdkEventButton* event) {
    const auto row = RowAt(event->y);
    if (event->button == 1 && row) Choose(*row);
    return true;
  });
  scroll_->signal_value_changed().connect([this] { list_.queue_draw(); });
  popup_.signal_button_press_event().connect([this](GdkEventButton* event) { return Press(*event); });
  const auto key = [this](GdkEventKey* event) {
    if (Key) Key(event);
    return true;
  };
  popup_.signal_key_press_event().connect(key, false);
  popup_.signal_key_release_event().connect(key, false);
  popup_.signal_grab_broken_event().connect([this](GdkEventGrabBroken*) {
    Close();
    return true;
  });
}

DropDown::~DropDown() { Close(); }

void DropDown::Open(Gtk::Widget& field, const std::string& text) {
  if (IsOpen() || !field.get_mapped()) return;
  field_ = &field;
  nearest_ = combo_.ListIndex ? combo_.ListIndex(text) : 0;
  highlighted_.reset();
  Place();
  scroll_->set_value(static_cast<double>(nearest_) * row_height_);
  if (nearest_ < Count() && Text::SameWithoutCase(combo_.List(nearest_), text)) Highlight(nearest_);
  popup_.show();
  Grab();
}

void DropDown::Close() {
  if (!IsOpen()) return;
  popup_.remove_modal_grab();
  if (grabbed_) gdk_seat_ungrab(gdk_display_get_default_seat(popup_.get_display()->gobj()));
  grabbed_ = false;
  popup_.hide();
}

void DropDown::Refresh() {
  if (!IsOpen()) return;
  highlighted_.reset();
  nearest_ = 0;
  Place();
  list_.queue_draw();
}

// Under the field, or above it where there is more room.
void DropDown::Place() {
  auto* toplevel = dynamic_cast<Gtk::Window*>(field_->get_toplevel());
  if (toplevel) popup_.set_transient_for(*toplevel);
  row_height_ = 2 * RowPadding + [this] {
    int width = 0, height = 0;
    list_.create_pango_layout("Xg")->get_pixel_size(width, height);
    return height;
  }();
  const size_t rows = std::clamp<size_t>(Count(), 1, MostRows);
  const int height = static_cast<int>(rows) * row_height_ + 2 * Border;

  const Gtk::Allocation field = field_->get_allocation();
  int left = 0, top = 0;
  field_->get_window()->get_origin(left, top);
  left += field.get_x();
  top += field.get_y();
  Gdk::Rectangle area;
  field_->get_display()->get_monitor_at_point(left, top)->get_workarea(area);
  const int below = top + field.get_height();
  const bool above = below + height > area.get_y() + area.get_height() && top - height >= area.get_y();

  scroll_->configure(scroll_->get_value(), 0, static_cast<double>(Count()) * row_height_, row_height_,
                     static_cast<double>(rows) * row_height_, static_cast<double>(rows) * row_height_);
  bar_.set_visible(Count() > rows);
  popup_.set_size_request(std::max(field.get_width(), LeastWidth), height);
  popup_.move(left, above ? top - height : below);
}

void DropDown::Grab() {
  // The toolkit's grab keeps the press that closes the list from acting on what lies under it; the window
  // system's brings the presses outside the program.
  popup_.add_modal_grab();
  GdkWindow* window = popup_.get_window()->gobj();
  grabbed_ = gdk_seat_grab(gdk_display_get_default_seat(gdk_window_get_display(window)), window,
                           GDK_SEAT_CAPABILITY_ALL_POINTING, TRUE, nullptr, nullptr, nullptr,
                           nullptr) == GDK_GRAB_SUCCESS;
}

bool DropDown::Draw(const Cairo::RefPtr<Cairo::Context>& cairo) {
  const int width = list_.get_allocated_width(), height = list_.get_allocated_height();
  Ink(cairo, 0xFFFFFF);
  cairo->paint();
  const auto layout = list_.create_pango_layout("");
  layout->set_single_paragraph_mode(true);
  layout->set_ellipsize(Pango::ELLIPSIZE_END);
  layout->set_width(std::max(0, width - 2 * TextIndent) * PANGO_SCALE);
  const auto first = static_cast<size_t>(scroll_->get_value()) / static_cast<size_t>(row_height_);
  double y = static_cast<double>(first) * row_height_ - std::floor(scroll_->get_value());
  for (size_t row = first; row < Count() && y < height; ++row, y += row_height_) {
    if (row == highlighted_) {
      Ink(cairo, 0x316AC5);
      cairo->rectangle(0, y, width, row_height_);
      cairo->fill();
    }
    Ink(cairo, row == highlighted_ ? 0xFFFFFF : 0x000000);
    layout->set_text(RowText(row));
    cairo->move_to(TextIndent, y + RowPadding);
    layout->show_in_cairo_context(cairo);
  }
  return true;
}

std::string DropDown::RowText(size_t index) const {
  return Text::Valid(Text::Left(combo_.List(index), RowCharacters));
}

std::optional<size_t> DropDown::RowAt(double y) const {
  if (y < 0 || y >= list_.get_allocated_height()) return {};
  const auto row = static_cast<size_t>((scroll_->get_value() + y) / row_height_);
  return row < Count() ? std::optional(row) : std::nullopt;
}

bool DropDown::Press(const GdkEventButton& event) {
  int left = 0, top = 0;
  popup_.get_window()->get_origin(left, top);
  const double x = event.x_root - left, y = event.y_root - top;
  if (x < 0 || y < 0 || x >= popup_.get_width() || y >= popup_.get_height()) Close();
  return true;
}

void DropDown::Scroll(const GdkEventScroll& event) {
  double turns = event.direction == GDK_SCROLL_UP ? -1 : event.direction == GDK_SCROLL_DOWN ? 1 : 0;
  if (event.direction == GDK_SCROLL_SMOOTH) turns = event.delta_y;
  scroll_->set_value(scroll_->get_value() + turns * WheelRows * row_height_);
  Hover(event.y);
}

void DropDown::Hover(double y) {
  const auto row = RowAt(y);
  if (!row || row == highlighted_) return;
  highlighted_ = row;
  list_.queue_draw();
}

bool DropDown::TakeKey(const GdkEventKey& event) {
  const long page = static_cast<long>(MostRows) - 1, all = static_cast<long>(Count());
  const bool alt = event.state & GDK_MOD1_MASK;
  switch (event.keyval) {
    case GDK_KEY_Down:
    case GDK_KEY_KP_Down:
      alt ? Close() : MoveBy(1);
      return true;
    case GDK_KEY_Up:
    case GDK_KEY_KP_Up:
      alt ? Close() : MoveBy(-1);
      return true;
    case GDK_KEY_Page_Down:
    case GDK_KEY_KP_Page_Down:
      MoveBy(page);
      return true;
    case GDK_KEY_Page_Up:
    case GDK_KEY_KP_Page_Up:
      MoveBy(-page);
      return true;
    case GDK_KEY_Home:
    case GDK_KEY_KP_Home:
      MoveBy(-all);
      return true;
    case GDK_KEY_End:
    case GDK_KEY_KP_End:
      MoveBy(all);
      return true;
    case GDK_KEY_F4:
    case GDK_KEY_Escape:
      Close();
      return true;
    case GDK_KEY_Return:
    case GDK_KEY_KP_Enter:
    case GDK_KEY_ISO_Enter:
      if (!highlighted_) return false;
      Choose(*highlighted_);
      return true;
    default:
      return false;
  }
}

void DropDown::MoveBy(long rows) {
  if (Count() == 0) return;
  // With nothing highlighted, the first step down shows the item nearest to the text.
  const long from = static_cast<long>(highlighted_.value_or(nearest_)) - (!highlighted_ && rows > 0 ? 1 : 0);
  Highlight(static_cast<size_t>(std::clamp(from + rows, 0L, static_cast<long>(Count()) - 1)));
}

void DropDown::Highlight(size_t index) {
  highlighted_ = index;
  scroll_->clamp_page(static_cast<double>(index) * row_height_, static_cast<double>(index + 1) * row_height_);
  list_.get_accessible()->set_name(RowText(index));
  list_.queue_draw();
}

void DropDown::Choose(size_t index) {
  Close();
  if (Chosen) Chosen(index);
}
