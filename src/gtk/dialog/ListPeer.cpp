#include "gtk/dialog/ListPeer.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "gtk/dialog/Rows.h"
#include "platform/Text.h"

namespace {

enum Column { TextColumn, PercentColumn, HasPercentColumn, Columns };
constexpr int ShareWidth = 130;  // pixels

void AddColumn(GtkTreeView* view, GtkTreeViewColumn* column) {
  gtk_tree_view_column_set_sizing(column, GTK_TREE_VIEW_COLUMN_FIXED);
  gtk_tree_view_append_column(view, column);
}

}  // namespace

ListPeer::ListPeer(Controls::ListBox& list, GtkWidget* widget, Callbacks& callbacks)
    : Peer(list, widget), list_(list), callbacks_(callbacks) {
  GtkCellRenderer* text = gtk_cell_renderer_text_new();
  g_object_set(text, "ellipsize", PANGO_ELLIPSIZE_END, nullptr);
  GtkTreeViewColumn* texts = gtk_tree_view_column_new_with_attributes("", text, "text", TextColumn, nullptr);
  gtk_tree_view_column_set_expand(texts, TRUE);
  AddColumn(View(), texts);
  if (list.Share) AddShares();
  gtk_tree_view_set_headers_visible(View(), FALSE);
  gtk_tree_view_set_fixed_height_mode(View(), TRUE);
  gtk_tree_view_set_search_column(View(), TextColumn);
  gtk_widget_set_has_tooltip(widget, TRUE);
  GtkTreeSelection* selection = gtk_tree_view_get_selection(View());
  gtk_tree_selection_set_mode(selection,
                              list.Style.MultiSelect ? GTK_SELECTION_MULTIPLE : GTK_SELECTION_SINGLE);

  callbacks.On<void(GtkTreeSelection*)>(selection, "changed", [this](GtkTreeSelection*) { Chosen(); });
  callbacks.On<void(GtkTreeView*, GtkTreePath*, GtkTreeViewColumn*)>(
      widget, "row-activated", [this](GtkTreeView*, GtkTreePath*, GtkTreeViewColumn*) {
        const auto act = list_.DblClick;
        if (act) act();
      });
  callbacks.On<gboolean(GtkWidget*, GdkEventKey*)>(
      widget, "key-press-event", [this](GtkWidget*, GdkEventKey* event) { return Key(event); });
  callbacks.On<gboolean(GtkWidget*, int, int, gboolean, GtkTooltip*)>(
      widget, "query-tooltip", [this](GtkWidget*, int x, int y, gboolean keyboard, GtkTooltip* tip) {
        return Tip(x, y, keyboard, tip);
      });
}

void ListPeer::AddShares() {
  GtkCellRenderer* bar = gtk_cell_renderer_progress_new();
  g_object_set(bar, "text", "", "ypad", 4, nullptr);
  GtkTreeViewColumn* shares = gtk_tree_view_column_new_with_attributes("", bar, "value", PercentColumn,
                                                                       "visible", HasPercentColumn, nullptr);
  gtk_tree_view_column_set_fixed_width(shares, ShareWidth);
  AddColumn(View(), shares);
}

void ListPeer::Changed(Controls::Aspect aspect) {
  Peer::Changed(aspect);
  if (aspect == Controls::Aspect::Selection && !stale_) Select();
  if (aspect != Controls::Aspect::Rows || stale_) return;
  stale_ = true;
  callbacks_.Later([this] { Fill(); });
}

void ListPeer::Fill() {
  stale_ = false;
  const Owned<GtkListStore> store(gtk_list_store_new(Columns, G_TYPE_STRING, G_TYPE_INT, G_TYPE_BOOLEAN));
  for (int i = 0; i < list_.ListCount(); ++i) {
    const double share = list_.Share ? list_.Share(i) : -1;
    const int percent = static_cast<int>(std::lround(std::clamp(share, 0.0, 1.0) * 100));
    gtk_list_store_insert_with_values(store.get(), nullptr, -1, TextColumn,
                                      Text::Valid(list_.List(i)).c_str(), PercentColumn, percent,
                                      HasPercentColumn, share >= 0, -1);
  }
  GtkAdjustment* scroll = gtk_scrollable_get_vadjustment(GTK_SCROLLABLE(View()));
  const double at = scroll ? gtk_adjustment_get_value(scroll) : 0;
  Set([&] {
    gtk_tree_view_set_model(View(), GTK_TREE_MODEL(store.get()));
    Rows::PutCursor(View(), std::max(list_.ListIndex(), 0));
  });
  Select();
  if (scroll) gtk_adjustment_set_value(scroll, at);
}

void ListPeer::Select() {
  Set([this] {
    GtkTreeSelection* selection = gtk_tree_view_get_selection(View());
    const std::vector<int> rows = list_.Selection();
    // Whole stretches at once: each call is told to screen readers by itself.
    gtk_tree_selection_unselect_all(selection);
    for (size_t i = 0; i < rows.size();) {
      size_t end = i + 1;
      while (end < rows.size() && rows[end] == rows[end - 1] + 1) ++end;
      Rows::SelectStretch(selection, rows[i], rows[end - 1], list_.Style.MultiSelect);
      i = end;
    }
  });
}

void ListPeer::Chosen() {
  if (setting_ || stale_) return;
  const std::vector<int> rows = Rows::Selection(gtk_tree_view_get_selection(View()));
  if (rows == list_.Selection()) return;
  const int pressed = list_.Style.MultiSelect ? Rows::Cursor(View()) : rows.empty() ? -1 : rows.front();
  list_.Choose(rows, pressed);
}

gboolean ListPeer::Key(const GdkEventKey* event) {
  if (event->state & gtk_accelerator_get_default_mod_mask()) return FALSE;
  if ((event->keyval == GDK_KEY_Delete || event->keyval == GDK_KEY_KP_Delete) && list_.DeleteKey) {
    const auto act = list_.DeleteKey;
    act();
    return TRUE;
  }
  // Where a row does nothing, Enter is the default button's.
  const bool enter = event->keyval == GDK_KEY_Return || event->keyval == GDK_KEY_KP_Enter;
  if (!enter || list_.DblClick) return FALSE;
  return gtk_window_activate_default(GTK_WINDOW(gtk_widget_get_toplevel(Widget())));
}

// A row's whole text, where the list is too narrow for it.
gboolean ListPeer::Tip(int x, int y, gboolean keyboard, GtkTooltip* tip) {
  const int row = Rows::AtPoint(View(), x, y, keyboard);
  if (row < 0 || stale_) return FALSE;
  const std::string text = Text::Valid(list_.List(row));
  int width = 0;
  PangoLayout* layout = gtk_widget_create_pango_layout(Widget(), text.c_str());
  pango_layout_get_pixel_size(layout, &width, nullptr);
  g_object_unref(layout);
  if (width < gtk_tree_view_column_get_width(gtk_tree_view_get_column(View(), 0))) return FALSE;
  gtk_tooltip_set_text(tip, Text::Left(text, 1000).c_str());
  return TRUE;
}
