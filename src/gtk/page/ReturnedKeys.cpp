#include "gtk/page/ReturnedKeys.h"

#include <algorithm>
#include <utility>

namespace {

// A process that is further behind than this many keys is busy with other things than the keyboard's place.
constexpr size_t Most = 64;

}  // namespace

ReturnedKeys::ReturnedKeys(Callbacks::Runner runner) : calls_(std::move(runner)) {
  // Nothing else comes before the windows and menus that take all keys while they are up.
  G_GNUC_BEGIN_IGNORE_DEPRECATIONS
  snooper_ = gtk_key_snooper_install(
      +[](GtkWidget*, GdkEventKey* event, gpointer self) -> gint {
        auto* keys = static_cast<ReturnedKeys*>(self);
        bool taken = false;
        keys->calls_.Run([&] { taken = keys->Take(*reinterpret_cast<GdkEvent*>(event)); });
        return taken;
      },
      this);
  G_GNUC_END_IGNORE_DEPRECATIONS
}

ReturnedKeys::~ReturnedKeys() {
  G_GNUC_BEGIN_IGNORE_DEPRECATIONS
  gtk_key_snooper_remove(snooper_);
  G_GNUC_END_IGNORE_DEPRECATIONS
}

void ReturnedKeys::Attach(WebKitWebView* view) {
  view_ = view;
  calls_.On<gboolean(GtkWidget*, GdkEvent*)>(view, "event", [this](auto*, GdkEvent* event) {
    if (event->type == GDK_KEY_PRESS || event->type == GDK_KEY_RELEASE) Give(*event);
    return FALSE;
  });
}

void ReturnedKeys::Detach() {
  if (view_) calls_.Off(view_);
  view_ = nullptr;
  given_.clear();
}

ReturnedKeys::Keys::iterator ReturnedKeys::Find(const GdkEvent& event) {
  return std::find(given_.begin(), given_.end(), Key{event.type, event.key.hardware_keycode, event.key.time});
}

void ReturnedKeys::Give(const GdkEvent& event) {
  const auto before = Find(event);
  is_back_ = before != given_.end();
  if (is_back_) {
    given_.erase(before);
    return;
  }
  given_.push_back({event.type, event.key.hardware_keycode, event.key.time});
  if (given_.size() > Most) given_.pop_front();
}

// True for a key that came back, and that the keyboard's place would get instead of its view.
bool ReturnedKeys::Take(GdkEvent& event) {
  if (given_.empty() || Find(event) == given_.end()) return false;
  if (gtk_widget_has_focus(GTK_WIDGET(view_)) && !gtk_grab_get_current()) return false;
  if (gtk_widget_get_realized(GTK_WIDGET(view_))) gtk_widget_event(GTK_WIDGET(view_), &event);
  return true;
}
