#include "gtk/window/LoneAlt.h"

#include <utility>

namespace {

bool IsAlt(const GdkEventKey& key) { return key.keyval == GDK_KEY_Alt_L || key.keyval == GDK_KEY_Meta_L; }

}  // namespace

bool LoneAlt::Completes(const GdkEvent* event) {
  constexpr guint others = GDK_CONTROL_MASK | GDK_SHIFT_MASK | GDK_MOD1_MASK | GDK_SUPER_MASK |
                           GDK_BUTTON1_MASK | GDK_BUTTON2_MASK | GDK_BUTTON3_MASK;
  switch (event->type) {
    case GDK_KEY_PRESS:
      alone_ = IsAlt(event->key) && !(event->key.state & others);
      return false;
    case GDK_KEY_RELEASE:
      return std::exchange(alone_, false) && IsAlt(event->key);
    case GDK_ENTER_NOTIFY:
    case GDK_LEAVE_NOTIFY:
      // The window manager takes the mouse to move a window.
      if (event->crossing.mode != GDK_CROSSING_NORMAL) alone_ = false;
      return false;
    case GDK_BUTTON_PRESS:
    case GDK_SCROLL:
    case GDK_TOUCH_BEGIN:
    case GDK_FOCUS_CHANGE:
      alone_ = false;
      return false;
    default:
      return false;
  }
}
