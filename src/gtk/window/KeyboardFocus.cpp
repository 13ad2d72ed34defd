#include "gtk/window/KeyboardFocus.h"

#include <gdk/gdkx.h>

namespace {

Window FocusOf(GdkDisplay* display) {
  Window focus = None;
  int revert = 0;
  XGetInputFocus(GDK_DISPLAY_XDISPLAY(display), &focus, &revert);
  return focus;
}

}  // namespace

bool KeyboardIsNobodys(GdkDisplay* display) {
  const Window focus = FocusOf(display);
  return focus == None || focus == PointerRoot;
}

bool HasKeyboard(GdkWindow* window) {
  GdkDisplay* display = gdk_window_get_display(window);
  return gdk_x11_window_lookup_for_display(display, FocusOf(display)) == window;
}
