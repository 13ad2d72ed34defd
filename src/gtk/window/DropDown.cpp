#include "gtk/window/DropDown.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "gtk/base/GObjects.h"
#include "gtk/window/Style.h"
#include "platform/Text.h"

namespace {

constexpr size_t MostRows = 12;
constexpr int LeastWidth = 200;  // pixels; a field may be too narrow to read anything under it
constexpr int Border = 1, RowPadding = 2, TextIndent = 5;  // pixels
// More characters of an item than any screen shows in a row.
constexpr size_t RowCharacters = 1000;

constexpr const char* FrameStyle = ".drop-down { background: #ffffff; border: 1px solid #7f8a99; }";
constexpr const char* ListStyle = R"(
  treeview {
    font-size: 11px; color: #000000; background: #ffffff;
    -GtkTreeView-horizontal-separator: 0; -GtkTreeView-vertical-separator: 0;
  }
  treeview:selected { color: #ffffff; background: #316ac5; }
)";
constexpr const char* BarStyle = R"(
  scrollbar, scrollbar trough { background: #eef0f3; border: none; margin: 0; padding: 0; }
  scrollbar slider {
    background: #a9b1bc; border: 3px solid #eef0f3; border-radius: 6px; margin: 0; min-width: 6px; min-height: 24px;
  }
  scrollbar slider:hover, scrollbar slider:active { background: #7f8a99; }
)";

using OwnedPath = std::unique_ptr<GtkTreePath, decltype(&gtk_tree_path_free)>;

OwnedPath PathOf(size_t index) {
  return {gtk_tree_path_new_from_indices(static_cast<int>(index), -1), &gtk_tree_path_free};
}

size_t IndexOf(GtkTreePath* path) { return static_cast<size_t>(gtk_tree_path_get_indices(path)[0]); }

}  // namespace

DropDown::DropDown(const ComboBox& combo, Callbacks::Runner runner)
    : combo_(combo), popup_(gtk_window_new(GTK_WINDOW_POPUP)), callbacks_(std::move(runner)) {
  Build();
  Listen();
}

DropDown::~DropDown() { Close(); }

void DropDown::Build() {
  GtkCellRenderer* text = gtk_cell_renderer_text_new();
  g_object_set(text, "ellipsize", PANGO_ELLIPSIZE_END, "single-paragraph-mode", TRUE, "xpad", TextIndent,
               "ypad", RowPadding, nullptr);
  GtkTreeViewColumn* column = gtk_tree_view_column_new_with_attributes("", text, "text", 0, nullptr);
  gtk_tree_view_column_set_sizing(column, GTK_TREE_VIEW_COLUMN_FIXED);

  list_ = GTK_TREE_VIEW(gtk_tree_view_new());
  gtk_tree_view_append_column(list_, column);
  gtk_tree_view_set_fixed_height_mode(list_, TRUE);
  gtk_tree_view_set_headers_visible(list_, FALSE);
  gtk_tree_view_set_enable_search(list_, FALSE);
  gtk_tree_view_set_hover_selection(list_, TRUE);
  gtk_tree_view_set_activate_on_single_click(list_, TRUE);
  AddStyle(GTK_WIDGET(list_), ListStyle);
  atk_object_set_name(gtk_widget_get_accessible(GTK_WIDGET(list_)), "Addresses");

  scrolled_ = gtk_scrolled_window_new(nullptr, nullptr);
  gtk_scrolled_window_set_overlay_scrolling(GTK_SCROLLED_WINDOW(scrolled_), FALSE);
  gtk_style_context_add_class(gtk_widget_get_style_context(scrolled_), "drop-down");
  AddStyle(scrolled_, FrameStyle);
  AddStyle(gtk_scrolled_window_get_vscrollbar(GTK_SCROLLED_WINDOW(scrolled_)), BarStyle);
  gtk_container_add(GTK_CONTAINER(scrolled_), GTK_WIDGET(list_));
  gtk_widget_show_all(scrolled_);

  GtkWindow* window = GTK_WINDOW(popup_.get());
  gtk_window_set_type_hint(window, GDK_WINDOW_TYPE_HINT_COMBO);
  gtk_window_set_resizable(window, FALSE);
  gtk_container_add(GTK_CONTAINER(window), scrolled_);
}

void DropDown::Listen() {
  using Activated = void(GtkTreeView*, GtkTreePath*, GtkTreeViewColumn*);
  callbacks_.On<Activated>(list_, "row-activated",
                           [this](auto*, GtkTreePath* path, auto*) { Choose(IndexOf(path)); });
  using Button = gboolean(GtkWidget*, GdkEventButton*);
  callbacks_.On<Button>(popup_.get(), "button-press-event", [this](auto*, GdkEventButton* event) {
    if (Outside(*event)) leaving_ = true;
    return leaving_;
  });
  // Not before the release, which would act on what lies there: a page takes the keyboard at it.
  callbacks_.On<Button>(popup_.get(), "button-release-event", [this](auto*, auto*) {
    if (!leaving_) return false;
    Close();
    return true;
  });
  for (const char* signal : {"key-press-event", "key-release-event"})
    callbacks_.On<gboolean(GtkWidget*, GdkEventKey*)>(popup_.get(), signal,
                                                      [this](auto*, GdkEventKey* event) {
                                                        if (Key) Key(event);
                                                        return TRUE;
                                                      });
  callbacks_.On<gboolean(GtkWidget*, GdkEventGrabBroken*)>(popup_.get(), "grab-broken-event",
                                                           [this](auto*, auto*) {
                                                             Close();
                                                             return TRUE;
                                                           });
}

void DropDown::Open(GtkWidget* field, const std::string& text) {
  if (IsOpen() || !gtk_widget_get_mapped(field)) return;
  field_ = field;
  nearest_ = combo_.ListIndex ? combo_.ListIndex(text) : 0;
  Fill();
  Place();
  if (nearest_ < Count()) {
    gtk_tree_view_scroll_to_cell(list_, PathOf(nearest_).get(), nullptr, TRUE, 0, 0);
    if (Text::SameWithoutCase(combo_.List(nearest_), text)) Highlight(nearest_);
  }
  leaving_ = false;
  gtk_widget_show(popup_.get());
  Grab();
}

void DropDown::Close() {
  if (!IsOpen()) return;
  gtk_grab_remove(popup_.get());
  if (std::exchange(grabbed_, false))
    gdk_seat_ungrab(gdk_display_get_default_seat(gtk_widget_get_display(popup_.get())));
  gtk_widget_hide(popup_.get());
  gtk_tree_view_set_model(list_, nullptr);
}

void DropDown::Refresh() {
  if (!IsOpen()) return;
  nearest_ = 0;
  Fill();
  Place();
}

// All rows in one step, with nobody looking on.
void DropDown::Fill() {
  const Owned<GtkListStore> rows(gtk_list_store_new(1, G_TYPE_STRING));
  for (size_t index = 0, count = Count(); index < count; ++index) {
    const std::string text = Text::Valid(Text::Left(combo_.List(index), RowCharacters));
    gtk_list_store_insert_with_values(rows.get(), nullptr, -1, 0, text.c_str(), -1);
  }
  gtk_tree_view_set_model(list_, GTK_TREE_MODEL(rows.get()));
}

int DropDown::RowHeight() const {
  int height = 0;
  gtk_tree_view_column_cell_get_size(gtk_tree_view_get_column(list_, 0), nullptr, nullptr, nullptr, nullptr,
                                     &height);
  return std::max(1, height);
}

// Under the field, or above it where there is more room.
void DropDown::Place() {
  GtkWidget* toplevel = gtk_widget_get_toplevel(field_);
  GtkWindow* window = GTK_WINDOW(popup_.get());
  if (GTK_IS_WINDOW(toplevel)) gtk_window_set_transient_for(window, GTK_WINDOW(toplevel));
  const size_t rows = std::clamp<size_t>(Count(), 1, MostRows);
  const int height = static_cast<int>(rows) * RowHeight() + 2 * Border;

  GtkAllocation field;
  gtk_widget_get_allocation(field_, &field);
  int left = 0, top = 0;
  gdk_window_get_origin(gtk_widget_get_window(field_), &left, &top);
  if (!gtk_widget_get_has_window(field_)) {
    left += field.x;
    top += field.y;
  }
  GdkRectangle area;
  gdk_monitor_get_workarea(gdk_display_get_monitor_at_point(gtk_widget_get_display(field_), left, top),
                           &area);
  const int below = top + field.height;
  const bool above = below + height > area.y + area.height && top - height >= area.y;

  gtk_scrolled_window_set_policy(GTK_SCROLLED_WINDOW(scrolled_), GTK_POLICY_NEVER,
                                 Count() > rows ? GTK_POLICY_ALWAYS : GTK_POLICY_NEVER);
  gtk_widget_set_size_request(popup_.get(), std::max(field.width, LeastWidth), height);
  gtk_window_move(window, left, above ? top - height : below);
}

void DropDown::Grab() {
  // The toolkit's grab keeps the press that closes the list from acting on what lies under it; the window
  // system's brings the presses outside the program.
  gtk_grab_add(popup_.get());
  grabbed_ = gdk_seat_grab(gdk_display_get_default_seat(gtk_widget_get_display(popup_.get())),
                           gtk_widget_get_window(popup_.get()), GDK_SEAT_CAPABILITY_ALL_POINTING, TRUE,
                           nullptr, nullptr, nullptr, nullptr) == GDK_GRAB_SUCCESS;
}

bool DropDown::Outside(const GdkEventButton& event) const {
  int left = 0, top = 0;
  gdk_window_get_origin(gtk_widget_get_window(popup_.get()), &left, &top);
  const double x = event.x_root - left, y = event.y_root - top;
  return x < 0 || y < 0 || x >= gtk_widget_get_allocated_width(popup_.get()) ||
         y >= gtk_widget_get_allocated_height(popup_.get());
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
      if (!Highlighted()) return false;
      Choose(*Highlighted());
      return true;
    default:
      return false;
  }
}

void DropDown::MoveBy(long rows) {
  if (Count() == 0) return;
  const auto highlighted = Highlighted();
  // With nothing highlighted, the first step down shows the item nearest to the text.
  const long from = static_cast<long>(highlighted.value_or(nearest_)) - (!highlighted && rows > 0 ? 1 : 0);
  Highlight(static_cast<size_t>(std::clamp(from + rows, 0L, static_cast<long>(Count()) - 1)));
}

std::optional<size_t> DropDown::Highlighted() const {
  GtkTreeModel* rows = nullptr;
  GtkTreeIter row;
  if (!gtk_tree_selection_get_selected(gtk_tree_view_get_selection(list_), &rows, &row)) return {};
  const OwnedPath path(gtk_tree_model_get_path(rows, &row), &gtk_tree_path_free);
  return IndexOf(path.get());
}

void DropDown::Highlight(size_t index) {
  const OwnedPath path = PathOf(index);
  gtk_tree_selection_select_path(gtk_tree_view_get_selection(list_), path.get());
  gtk_tree_view_scroll_to_cell(list_, path.get(), nullptr, FALSE, 0, 0);
  // The keyboard stays with the field, so a screen reader has to be told where the user is. The first of the
  // list's parts is the column's head.
  AtkObject* list = gtk_widget_get_accessible(GTK_WIDGET(list_));
  const Owned<AtkObject> row(atk_object_ref_accessible_child(list, static_cast<int>(index) + 1));
  if (row) g_signal_emit_by_name(list, "active-descendant-changed", row.get());
}

void DropDown::Choose(size_t index) {
  Close();
  if (Chosen) Chosen(index);
}
