#include "gtk/window/SplashHost.h"

#include "gtk/window/WorkArea.h"

SplashHost::SplashHost(Events& gate, PopupGroup& popups, Window& scene)
    : SceneHost(gate, popups, scene, GTK_WINDOW_POPUP) {}

void SplashHost::Show() {
  const ScreenRect area = WorkAreaOf(scene_);
  sized_ = true;
  scene_.Move(area.Left + (area.Right - area.Left - scene_.Width) / 2,
              area.Top + (area.Bottom - area.Top - scene_.Height) / 2);
  SceneHost::Show();
}
