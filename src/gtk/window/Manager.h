#pragma once

#include <gtk/gtk.h>

namespace Manager {

// Whether the window manager of a window's screen, if there is one, can do a thing by its name in the
// desktops' standard, such as "_NET_WM_MOVERESIZE".
bool Can(GtkWindow* window, const char* thing);

}  // namespace Manager
