#pragma once

#include <gtk/gtk.h>

#include <memory>

// Whether the screen has gone, at the end of the session: nothing can be shown any more.
constexpr const char* ScreenGone = "marlowick-screen-gone";
inline bool IsScreenGone() {
  GdkDisplay* display = gdk_display_get_default();
  return !display || g_object_get_data(G_OBJECT(display), ScreenGone);
}

// A toplevel window of ours. GTK keeps one alive until it is destroyed, whoever else lets go of it.
struct DestroyWidget {
  void operator()(GtkWidget* widget) const { gtk_widget_destroy(widget); }
};
using OwnedToplevel = std::unique_ptr<GtkWidget, DestroyWidget>;
