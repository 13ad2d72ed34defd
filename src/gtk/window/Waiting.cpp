#include "gtk/window/Waiting.h"

#include <glib.h>

#include <utility>

namespace {

// In microseconds. Nothing that is waited for takes a tenth of it on a slow machine.
constexpr gint64 Longest = 10 * G_USEC_PER_SEC;

// What the user does, as distinct from what happens to windows.
bool IsInput(const GdkEvent* event) {
  switch (event->type) {
    case GDK_DELETE:
    case GDK_BUTTON_PRESS:
    case GDK_2BUTTON_PRESS:
    case GDK_3BUTTON_PRESS:
    case GDK_BUTTON_RELEASE:
    case GDK_SCROLL:
    case GDK_KEY_PRESS:
    case GDK_KEY_RELEASE:
    case GDK_TOUCH_BEGIN:
    case GDK_TOUCH_UPDATE:
    case GDK_TOUCH_END:
    case GDK_TOUCH_CANCEL:
      return true;
    default:
      return false;
  }
}

}  // namespace

void Waiting::For(const std::function<bool()>& done) {
  const gint64 last = g_get_monotonic_time() + Longest;
  const std::function<bool()> over = [&done, last] { return done() || g_get_monotonic_time() > last; };
  // Something else may be waited for in a handler that the pump serves.
  const auto* outer = std::exchange(done_, &over);
  const bool passed = std::exchange(passing_, false);
  // Nothing else may wake the pump by then.
  const guint alarm = g_timeout_add(
      Longest / 1000 + 1, +[](gpointer) -> gboolean { return G_SOURCE_CONTINUE; }, nullptr);
  while (!over()) g_main_context_iteration(nullptr, TRUE);
  g_source_remove(alarm);
  done_ = outer;
  passing_ = passed;
  if (!done_) LetGo();
}

void Waiting::Pass(int most) {
  const int depth = g_main_depth();
  // Further down there is another pump, of a dialog.
  const std::function<bool()> over = [depth] { return g_main_depth() > depth + 1; };
  const auto* outer = std::exchange(done_, &over);
  const bool passed = std::exchange(passing_, true);
  for (int i = 0; i < most && g_main_context_pending(nullptr); ++i) g_main_context_iteration(nullptr, FALSE);
  done_ = outer;
  passing_ = passed;
  if (!done_) LetGo();
}

bool Waiting::Holds(const GdkEvent* event) {
  if (!IsInput(event)) return false;
  // What was waited for may be there, and a dialog of a page stand in the way of whoever waits.
  const bool over = !done_ || (*done_)();
  if (over && held_.empty()) return false;
  held_.emplace_back(gdk_event_copy(event));
  if (over) LetGo();
  return true;
}

void Waiting::LetGo() {
  for (const auto& event : std::exchange(held_, {}))
    gdk_display_put_event(gdk_display_get_default(), event.get());
}
