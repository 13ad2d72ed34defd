#pragma once

#include <gtkmm/window.h>

#include <memory>

#include "gtk/window/SceneView.h"
#include "platform/scene/Window.h"

class GtkDesktop;

// A window of the program's on the screen.
class SceneHost : public WindowHost {
 public:
  SceneHost(GtkDesktop& desktop, Window& scene, Gtk::WindowType type);
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

  Gtk::Window& Frame() { return frame_; }

 protected:
  // Carries out moves and sizes that were asked for since the last time: at most one of each a frame.
  void ApplyPlace();

  GtkDesktop& desktop_;
  Window& scene_;
  Gtk::Window frame_;
  SceneView view_;
  bool moved_ = false, sized_ = false;
};

// The splash: in the middle of the screen, without the window manager.
class SplashHost : public SceneHost {
 public:
  SplashHost(GtkDesktop& desktop, Window& scene);
  ~SplashHost() override;
  void Show() override;
};

// A popup menu: above everything, without the keyboard. It grabs the mouse, so that a press anywhere else
// ends it.
class PopupHost : public SceneHost {
 public:
  PopupHost(GtkDesktop& desktop, Window& scene);
  ~PopupHost() override;
  void Show() override;
  void Hide() override;
  // The menu has lost its place as the active window.
  void End();
  // Whether a point of the screen, in pixels, lies on the menu.
  bool Contains(double x, double y);

 private:
  bool Grab();

  bool grabbed_ = false;
  sigc::connection retry_;
};

// The main window: managed, without a system frame. It is the one entry on the task bar; what the window
// manager does to it goes to the window that stands for the entry.
class MainHost : public SceneHost {
 public:
  MainHost(GtkDesktop& desktop, Window& scene);
  void Show() override;
  void Hide() override;
  void Move() override;
  void Resize() override;
  void State() override;
  void Focus() override;

  // The mouse at a point of the screen, in pixels, while a menu has the grab.
  void HoverFromMenu(double x, double y);
  void PressFromMenu(int button, double x, double y);

  // The task bar entry's window, none while there is none.
  Window* relay = nullptr;

 private:
  bool OnConfigure(GdkEventConfigure* event);
  void AdoptPlace();
  bool OnState(GdkEventWindowState* event);
  bool OnKey(GdkEventKey* event);

  bool iconified_ = false;
  gint64 settled_at_ = 0;  // microseconds; until then, places that the window manager reports may be old ones
  bool waiting_ = false;
  bool ask_again_ = false;  // the last move of the program's own hasn't been repeated yet
};

// The task bar entry.
class RelayHost : public WindowHost {
 public:
  RelayHost(GtkDesktop& desktop, Window& scene);
  ~RelayHost() override;
  void Show() override {}
  void Hide() override {}
  void Move() override {}
  void Resize() override {}
  void Caption() override;
  void State() override;
  void Focus() override;
  void Invalidate() override {}
  void Repaint() override {}

 private:
  GtkDesktop& desktop_;
  Window& scene_;
};
