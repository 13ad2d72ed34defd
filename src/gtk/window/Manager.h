#pragma once

#include <gtk/gtk.h>

namespace Manager {

// Whether the window manager of a window's screen, if there is one, can do a thing by its name in the
// desktops' standard, such as "_NET_WM_MOVERESIZE".
bool Can(GtkWindow* window, const char* thing);

// For a window that is never seen: moves of the mouse come to it without the compositor's word that its last
// frame is on the screen, which would never come.
void WaitForNoFrames(GtkWidget* frame);

}  // namespace Manager
