#include "gtk/window/WorkArea.h"

#include <gdk/gdk.h>

#include "platform/scene/Window.h"

ScreenRect WorkAreaOf(const Window& window) {
  GdkMonitor* monitor = gdk_display_get_monitor_at_point(
      gdk_display_get_default(), static_cast<int>((window.Left + window.Width / 2) / TwipsPerPixel),
      static_cast<int>((window.Top + window.Height / 2) / TwipsPerPixel));
  GdkRectangle area{};
  gdk_monitor_get_workarea(monitor, &area);
  return {area.x * TwipsPerPixel, area.y * TwipsPerPixel, (area.x + area.width) * TwipsPerPixel,
          (area.y + area.height) * TwipsPerPixel};
}
