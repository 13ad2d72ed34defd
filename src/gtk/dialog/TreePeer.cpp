#include "gtk/dialog/TreePeer.h"

#include <string>
#include <utility>

#include "platform/Text.h"

namespace {

enum Column { Id, Name, Detail, Icon, Columns };

// What is dragged stays within its own tree.
constexpr GtkTargetEntry DragTarget = {const_cast<char*>("application/x-marlowick-rows"),
                                       GTK_TARGET_SAME_WIDGET, 0};

const char* IconName(Controls::Tree::Icon icon) {
  switch (icon) {
    case Controls::Tree::Icon::Folder:
      return "folder";
    case Controls::Tree::Icon::Page:
      return "text-html";
    case Controls::Tree::Icon::Warning:
      return "dialog-warning";
    case Controls::Tree::Icon::None:
      break;
  }
  return nullptr;
}

void FreeOne(gpointer path) { gtk_tree_path_free(static_cast<GtkTreePath*>(path)); }

}  // namespace

TreePeer::TreePeer(Controls::Tree& tree, GtkWidget* widget, Callbacks& callbacks)
    : Peer(tree, widget), tree_(tree), callbacks_(callbacks) {
  MakeColumns();
  gtk_tree_selection_set_mode(gtk_tree_view_get_selection(View()),
                              tree.MultiSelect ? GTK_SELECTION_MULTIPLE : GTK_SELECTION_SINGLE);
  gtk_tree_view_enable_model_drag_source(View(), GDK_BUTTON1_MASK, &DragTarget, 1, GDK_ACTION_MOVE);
  gtk_tree_view_enable_model_drag_dest(View(), &DragTarget, 1, GDK_ACTION_MOVE);
  Listen();
}

// A look that wants titles gives its view two columns with them; where it has none, both are made without.
void TreePeer::MakeColumns() {
  const bool titled = gtk_tree_view_get_n_columns(View()) > 1;
  if (!titled) {
    for (int i = 0; i < 2; ++i) gtk_tree_view_append_column(View(), gtk_tree_view_column_new());
    gtk_tree_view_set_headers_visible(View(), FALSE);
  }
  GtkTreeViewColumn* first = gtk_tree_view_get_column(View(), 0);
  GtkTreeViewColumn* second = gtk_tree_view_get_column(View(), 1);
  GtkCellRenderer* icon = gtk_cell_renderer_pixbuf_new();
  gtk_tree_view_column_pack_start(first, icon, FALSE);
  gtk_tree_view_column_add_attribute(first, icon, "icon-name", Column::Icon);
  name_.reset(GTK_CELL_RENDERER(g_object_ref_sink(gtk_cell_renderer_text_new())));
  gtk_tree_view_column_pack_start(first, name_.get(), TRUE);
  gtk_tree_view_column_add_attribute(first, name_.get(), "text", Column::Name);
  GtkCellRenderer* detail = gtk_cell_renderer_text_new();
  gtk_tree_view_column_pack_start(second, detail, TRUE);
  gtk_tree_view_column_add_attribute(second, detail, "text", Column::Detail);
  for (GtkTreeViewColumn* column : {first, second}) {
    gtk_tree_view_column_set_sizing(column, GTK_TREE_VIEW_COLUMN_FIXED);
    gtk_tree_view_column_set_expand(column, TRUE);
    gtk_tree_view_column_set_resizable(column, titled);
  }
  for (GtkCellRenderer* text : {name_.get(), detail})
    g_object_set(text, "ellipsize", PANGO_ELLIPSIZE_END, nullptr);
  gtk_tree_view_set_fixed_height_mode(View(), TRUE);
  gtk_tree_view_set_search_column(View(), Column::Name);
}

void TreePeer::Listen() {
  GtkWidget* view = Widget();
  callbacks_.On<void(GtkTreeSelection*)>(gtk_tree_view_get_selection(View()), "changed",
                                         [this](GtkTreeSelection*) { Chosen(); });
  callbacks_.On<void(GtkTreeView*, GtkTreePath*, GtkTreeViewColumn*)>(
      view, "row-activated", [this](GtkTreeView*, GtkTreePath* path, GtkTreeViewColumn*) {
        const auto act = tree_.DblClick;
        if (act && !stale_) act(RowAt(path));
      });
  const auto opens = [this](bool opened) {
    return [this, opened](GtkTreeView*, GtkTreeIter*, GtkTreePath* path) {
      if (!setting_ && !stale_) tree_.Open(RowAt(path), opened);
    };
  };
  callbacks_.On<void(GtkTreeView*, GtkTreeIter*, GtkTreePath*)>(view, "row-expanded", opens(true));
  callbacks_.On<void(GtkTreeView*, GtkTreeIter*, GtkTreePath*)>(view, "row-collapsed", opens(false));
  callbacks_.On<gboolean(GtkWidget*, GdkEventKey*)>(
      view, "key-press-event", [this](GtkWidget*, GdkEventKey* event) { return Key(event); });

  // A name is open to editing only while the program has put it up: else every second press would open one.
  callbacks_.On<void(GtkCellRendererText*, char*, char*)>(
      name_.get(), "edited", [this](GtkCellRendererText*, char* path, char* name) { Edited(path, name); });
  callbacks_.On<void(GtkCellRenderer*)>(name_.get(), "editing-canceled", [](GtkCellRenderer* renderer) {
    g_object_set(renderer, "editable", FALSE, nullptr);
  });

  callbacks_.On<void(GtkWidget*, GdkDragContext*)>(
      view, "drag-begin", [this](GtkWidget*, GdkDragContext*) { dragged_ = tree_.Selection(); });
  // The toolkit would move the rows of its model, which is only a picture of ours.
  callbacks_.On<void(GtkWidget*, GdkDragContext*, GtkSelectionData*, guint, guint)>(
      view, "drag-data-get", [](GtkWidget* source, GdkDragContext*, GtkSelectionData* data, guint, guint) {
        gtk_selection_data_set(data, gtk_selection_data_get_target(data), 8,
                               reinterpret_cast<const guchar*>(""), 0);
        g_signal_stop_emission_by_name(source, "drag-data-get");
      });
  callbacks_.On<void(GtkWidget*, GdkDragContext*)>(
      view, "drag-data-delete",
      [](GtkWidget* source, GdkDragContext*) { g_signal_stop_emission_by_name(source, "drag-data-delete"); });
  callbacks_.On<void(GtkWidget*, GdkDragContext*, int, int, GtkSelectionData*, guint, guint)>(
      view, "drag-data-received",
      [this](GtkWidget* target, GdkDragContext* context, int x, int y, GtkSelectionData*, guint, guint time) {
        g_signal_stop_emission_by_name(target, "drag-data-received");
        Received(context, x, y, time);
      });
}

void TreePeer::Changed(Controls::Aspect aspect) {
  Peer::Changed(aspect);
  if (aspect == Controls::Aspect::Editing) callbacks_.Later([this] { EditName(); });
  if (aspect == Controls::Aspect::Selection && !stale_) Select();
  if (aspect != Controls::Aspect::Rows || stale_) return;
  stale_ = true;
  callbacks_.Later([this] { Fill(); });
}

void TreePeer::Fill() {
  stale_ = false;
  const Owned<GtkTreeStore> store(
      gtk_tree_store_new(Columns, G_TYPE_INT, G_TYPE_STRING, G_TYPE_STRING, G_TYPE_STRING));
  at_.clear();
  Insert(store.get(), tree_.Children(Controls::Tree::Root), nullptr);
  GtkAdjustment* scroll = gtk_scrollable_get_vadjustment(GTK_SCROLLABLE(View()));
  const double at = scroll ? gtk_adjustment_get_value(scroll) : 0;
  Set([&] {
    gtk_tree_view_set_model(View(), GTK_TREE_MODEL(store.get()));
    Expand(tree_.Children(Controls::Tree::Root));
  });
  if (scroll) gtk_adjustment_set_value(scroll, at);
  Select();
}

// From the last to the first: the store finds the place before all others at once.
void TreePeer::Insert(GtkTreeStore* store, const std::vector<RowId>& rows, GtkTreeIter* parent) {
  for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
    if (!tree_.Shown(*row)) continue;
    const Controls::Tree::Row& content = tree_.At(*row);
    GtkTreeIter& iter = at_[*row];
    gtk_tree_store_insert_with_values(
        store, &iter, parent, 0, Column::Id, *row, Column::Name, Text::Valid(content.Name).c_str(),
        Column::Detail, Text::Valid(content.Detail).c_str(), Column::Icon, IconName(content.Picture), -1);
    GtkTreeIter above = iter;
    Insert(store, tree_.Children(*row), &above);
  }
}

void TreePeer::Expand(const std::vector<RowId>& rows) {
  for (const RowId row : rows) {
    if (!tree_.Shown(row) || tree_.Children(row).empty()) continue;
    if (!tree_.At(row).Expanded && tree_.Filter->empty()) continue;
    gtk_tree_view_expand_row(View(), PathOf(row).get(), FALSE);
    Expand(tree_.Children(row));
  }
}

void TreePeer::Select() {
  Set([this] {
    GtkTreeSelection* selection = gtk_tree_view_get_selection(View());
    const RowId current = tree_.Current();
    const Path cursor = current == Controls::Tree::Root ? Path(gtk_tree_path_new_first()) : PathOf(current);
    if (cursor && !at_.empty()) {
      gtk_tree_view_set_cursor(View(), cursor.get(), nullptr, FALSE);
      if (current != Controls::Tree::Root)
        gtk_tree_view_scroll_to_cell(View(), cursor.get(), nullptr, FALSE, 0, 0);
    }
    gtk_tree_selection_unselect_all(selection);
    for (const RowId row : tree_.Selection())
      if (const Path path = PathOf(row)) gtk_tree_selection_select_path(selection, path.get());
  });
}

void TreePeer::Chosen() {
  if (setting_ || stale_) return;
  std::vector<RowId> rows;
  GList* paths = gtk_tree_selection_get_selected_rows(gtk_tree_view_get_selection(View()), nullptr);
  for (const GList* at = paths; at; at = at->next) rows.push_back(RowAt(static_cast<GtkTreePath*>(at->data)));
  g_list_free_full(paths, FreeOne);
  if (rows != tree_.Selection()) tree_.Choose(rows);
}

gboolean TreePeer::Key(const GdkEventKey* event) {
  if (stale_ || (event->state & gtk_accelerator_get_default_mod_mask())) return FALSE;
  const bool deletes = event->keyval == GDK_KEY_Delete || event->keyval == GDK_KEY_KP_Delete;
  if (deletes && tree_.DeleteKey) {
    const auto act = tree_.DeleteKey;
    act();
    return TRUE;
  }
  if (event->keyval != GDK_KEY_F2 || tree_.Current() == Controls::Tree::Root) return FALSE;
  tree_.EditName(tree_.Current());
  return TRUE;
}

void TreePeer::EditName() {
  if (stale_) return;
  const Path path = at_.contains(tree_.Editing()) ? PathOf(tree_.Editing()) : nullptr;
  if (!path) return;
  g_object_set(name_.get(), "editable", TRUE, nullptr);
  gtk_widget_grab_focus(Widget());
  gtk_tree_view_set_cursor_on_cell(View(), path.get(), gtk_tree_view_get_column(View(), 0), name_.get(),
                                   TRUE);
}

void TreePeer::Edited(const char* path_text, const char* name) {
  g_object_set(name_.get(), "editable", FALSE, nullptr);
  const Path path(gtk_tree_path_new_from_string(path_text));
  const RowId row = stale_ ? Controls::Tree::Root : RowAt(path.get());
  if (row == Controls::Tree::Root || tree_.At(row).Name == name || !tree_.Rename) return;
  const auto rename = tree_.Rename;
  rename(row, name);
}

void TreePeer::Received(GdkDragContext* context, int x, int y, unsigned time) {
  GtkTreePath* found = nullptr;
  GtkTreeViewDropPosition position = GTK_TREE_VIEW_DROP_BEFORE;
  const bool on_row = gtk_tree_view_get_dest_row_at_pos(View(), x, y, &found, &position);
  const Path path(found);
  RowId on = on_row && !stale_ ? RowAt(path.get()) : Controls::Tree::Root;
  const bool between = position == GTK_TREE_VIEW_DROP_BEFORE || position == GTK_TREE_VIEW_DROP_AFTER;
  if (on != Controls::Tree::Root && between) on = tree_.At(on).Parent;
  gtk_drag_finish(context, TRUE, FALSE, time);
  if (!stale_) tree_.Dropped(std::exchange(dragged_, {}), on);
}

TreePeer::Path TreePeer::PathOf(RowId row) const {
  const auto found = at_.find(row);
  if (found == at_.end()) return nullptr;
  GtkTreeIter iter = found->second;
  return Path(gtk_tree_model_get_path(gtk_tree_view_get_model(View()), &iter));
}

TreePeer::RowId TreePeer::RowAt(GtkTreePath* path) const {
  GtkTreeModel* model = gtk_tree_view_get_model(View());
  GtkTreeIter iter;
  RowId row = Controls::Tree::Root;
  if (path && gtk_tree_model_get_iter(model, &iter, path))
    gtk_tree_model_get(model, &iter, Column::Id, &row, -1);
  return row;
}
