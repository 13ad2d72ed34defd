#include "gtk/window/PopupHost.h"

#include <utility>

PopupHost::PopupHost(Events& gate, PopupGroup& popups, std::shared_ptr<TaskBarEntry> owner, Window& scene)
    : SceneHost(gate, popups, scene, GTK_WINDOW_POPUP), owner_(std::move(owner)) {
  gtk_window_set_type_hint(FrameWindow(), GDK_WINDOW_TYPE_HINT_POPUP_MENU);
}

PopupHost::~PopupHost() { popups_.Remove(scene_); }

void PopupHost::Show() {
  moved_ = sized_ = true;
  if (owner_->frame) gtk_window_set_transient_for(FrameWindow(), GTK_WINDOW(owner_->frame));
  SceneHost::Show();
  popups_.Add(Frame(), scene_);
}

void PopupHost::Hide() {
  popups_.Remove(scene_);
  SceneHost::Hide();
}

// In front of the other popups; the newest is the first to hear of keys.
void PopupHost::Focus() {
  if (!gtk_widget_get_mapped(Frame())) return;
  gdk_window_raise(gtk_widget_get_window(Frame()));
  popups_.Add(Frame(), scene_);
}
