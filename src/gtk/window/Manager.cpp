#include "gtk/window/Manager.h"

#include <gdk/gdkx.h>

bool Manager::Can(GtkWindow* window, const char* thing) {
  return gdk_x11_screen_supports_net_wm_hint(gtk_window_get_screen(window),
                                             gdk_atom_intern_static_string(thing));
}

void Manager::WaitForNoFrames(GtkWidget* frame) {
  gtk_widget_realize(frame);
  gdk_x11_window_set_frame_sync_enabled(gtk_widget_get_window(frame), FALSE);
}
