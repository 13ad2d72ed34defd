#include "gtk/window/SceneHost.h"

#include <algorithm>

SceneHost::SceneHost(Events& gate, PopupGroup& popups, Window& scene, GtkWindowType type)
    : gate_(gate), popups_(popups), scene_(scene), frame_(gtk_window_new(type)), view_(gate, scene) {
  gtk_window_set_decorated(FrameWindow(), FALSE);
  gtk_window_set_title(FrameWindow(), scene.Caption->c_str());
  gtk_container_add(GTK_CONTAINER(Frame()), view_.Widget());
  gtk_widget_show(view_.Widget());
  view_.BeforeFrame = [this] { ApplyPlace(); };
  // As with the mouse: a press outside an open menu ends it first.
  if (scene.WindowKind() != Window::Kind::Popup) view_.accessible.BeforePress = [this] { popups_.EndAll(); };
}

SceneHost::~SceneHost() = default;

void SceneHost::Show() {
  ApplyPlace();
  gtk_widget_show(Frame());
}

void SceneHost::Hide() { gtk_widget_hide(Frame()); }

void SceneHost::Move() {
  moved_ = true;
  if (!gtk_widget_get_mapped(Frame())) ApplyPlace();
}

void SceneHost::Resize() {
  sized_ = true;
  if (!gtk_widget_get_mapped(Frame())) ApplyPlace();
}

void SceneHost::ApplyPlace() {
  const int width = std::max(1, ToPixels(scene_.Width)), height = std::max(1, ToPixels(scene_.Height));
  if (sized_) {
    // An unmapped window takes its first size from the default, later ones from a resize.
    gtk_window_set_default_size(FrameWindow(), width, height);
    gtk_window_resize(FrameWindow(), width, height);
  }
  if (moved_)
    gtk_window_move(FrameWindow(), ToPixels(scene_.Left) - border_.x, ToPixels(scene_.Top) - border_.y);
  moved_ = sized_ = false;
}
