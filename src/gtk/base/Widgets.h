#pragma once

#include <gtk/gtk.h>

#include <memory>

// A toplevel window of ours. GTK keeps one alive until it is destroyed, whoever else lets go of it.
struct DestroyWidget {
  void operator()(GtkWidget* widget) const { gtk_widget_destroy(widget); }
};
using OwnedToplevel = std::unique_ptr<GtkWidget, DestroyWidget>;
