#pragma once

#include <gtk/gtk.h>

#include "gtk/base/Callbacks.h"
#include "gtk/base/Widgets.h"
#include "gtk/window/PopupGroup.h"
#include "gtk/window/SceneView.h"
#include "platform/scene/Window.h"

// A window of the program's on the screen.
class SceneHost : public WindowHost {
 public:
  SceneHost(Events& gate, PopupGroup& popups, Window& scene, GtkWindowType type);
  ~SceneHost() override;

  void Show() override;
  void Hide() override;
  void Move() override;
  void Resize() override;
  void Caption() override {}
  void State() override {}
  void Focus() override {}
  void Invalidate() override { view_.Invalidate(); }
  void Repaint() override { view_.Repaint(); }

 protected:
  // Carries out moves and sizes that were asked for since the last time: at most one of each a frame.
  virtual void ApplyPlace();
  GtkWidget* Frame() const { return frame_.get(); }
  GtkWidget* View() const { return view_.Widget(); }
  GtkWindow* FrameWindow() const { return GTK_WINDOW(frame_.get()); }

  Events& gate_;
  PopupGroup& popups_;
  Window& scene_;
  bool moved_ = false, sized_ = false;
  // What the window manager has put to the left of the window and above it though it was told not to, in
  // pixels.
  GdkPoint border_{};

 private:
  OwnedToplevel frame_;
  SceneView view_;
};
