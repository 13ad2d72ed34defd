#pragma once

#include "gtk/window/SceneHost.h"

// The splash: in the middle of the screen, without the window manager.
class SplashHost : public SceneHost {
 public:
  SplashHost(Events& gate, PopupGroup& popups, Window& scene);
  void Show() override;
};
