#pragma once

#include <gdk/gdk.h>

// Who has the keyboard by the X server's word, which is ahead of the events. A file of its own, since X11's
// names and the scene's don't go together.

// Whether nobody has it, or the window under the mouse, whichever that is.
bool KeyboardIsNobodys(GdkDisplay* display);
// Whether this toplevel window has it.
bool HasKeyboard(GdkWindow* window);
