#pragma once

#include <gtk/gtk.h>

#include <vector>

// The rows of a view that has no rows below rows, by their index.
namespace Rows {

// Ascending.
std::vector<int> Selection(GtkTreeSelection* selection);
// Selects the rows from one to another besides those that are selected; a view of single rows, the first.
void SelectStretch(GtkTreeSelection* selection, int first, int last, bool several);
// -1: none.
int Cursor(GtkTreeView* view);
// Without selecting the row: a view without a cursor would take its first row when it gets the keyboard, and
// select it. A row that isn't there is passed over.
void PutCursor(GtkTreeView* view, int row);
// The row at a point of the widget, or at the cursor where the keyboard asks; -1: none.
int AtPoint(GtkTreeView* view, int x, int y, bool keyboard);

}  // namespace Rows
