#include "gtk/window/Startup.h"

#include <gdk/gdkx.h>

#include <cstdlib>

namespace {

// "…_TIME123456" at its end; 0 where there is none.
guint32 TimeIn(const std::string& startup_id) {
  const std::string mark = "_TIME";
  const size_t at = startup_id.rfind(mark);
  if (at == startup_id.npos) return 0;
  return static_cast<guint32>(std::strtoul(startup_id.c_str() + at + mark.size(), nullptr, 10));
}

}  // namespace

namespace Startup {

void ComeToFront(GtkWindow* window, const std::string& startup_id) {
  if (!window) return;
  gtk_widget_realize(GTK_WIDGET(window));
  if (!startup_id.empty()) gtk_window_set_startup_id(window, startup_id.c_str());
  guint32 time = TimeIn(startup_id);
  if (time == 0) time = gdk_x11_get_server_time(gtk_widget_get_window(GTK_WIDGET(window)));
  gtk_window_present_with_time(window, time);
}

}  // namespace Startup
