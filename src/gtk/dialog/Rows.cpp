#include "gtk/dialog/Rows.h"

#include <memory>

namespace {

struct FreePath {
  void operator()(GtkTreePath* path) const { gtk_tree_path_free(path); }
};
using OwnedPath = std::unique_ptr<GtkTreePath, FreePath>;

OwnedPath PathOf(int row) { return OwnedPath(gtk_tree_path_new_from_indices(row, -1)); }

int RowOf(GtkTreePath* path) { return path ? gtk_tree_path_get_indices(path)[0] : -1; }

void FreeOne(gpointer path) { gtk_tree_path_free(static_cast<GtkTreePath*>(path)); }

}  // namespace

namespace Rows {

std::vector<int> Selection(GtkTreeSelection* selection) {
  std::vector<int> rows;
  GList* paths = gtk_tree_selection_get_selected_rows(selection, nullptr);
  for (const GList* at = paths; at; at = at->next) rows.push_back(RowOf(static_cast<GtkTreePath*>(at->data)));
  g_list_free_full(paths, FreeOne);
  return rows;
}

void SelectStretch(GtkTreeSelection* selection, int first, int last, bool several) {
  if (several)
    gtk_tree_selection_select_range(selection, PathOf(first).get(), PathOf(last).get());
  else
    gtk_tree_selection_select_path(selection, PathOf(first).get());
}

int Cursor(GtkTreeView* view) {
  GtkTreePath* path = nullptr;
  gtk_tree_view_get_cursor(view, &path, nullptr);
  const OwnedPath own(path);
  return RowOf(path);
}

void PutCursor(GtkTreeView* view, int row) {
  GtkTreeModel* model = gtk_tree_view_get_model(view);
  if (!model || row >= gtk_tree_model_iter_n_children(model, nullptr)) return;
  gtk_tree_view_set_cursor(view, PathOf(row).get(), nullptr, FALSE);
  gtk_tree_selection_unselect_all(gtk_tree_view_get_selection(view));
}

int AtPoint(GtkTreeView* view, int x, int y, bool keyboard) {
  GtkTreePath* path = nullptr;
  if (!gtk_tree_view_get_tooltip_context(view, &x, &y, keyboard, nullptr, &path, nullptr)) return -1;
  const OwnedPath own(path);
  return RowOf(path);
}

}  // namespace Rows
