#pragma once

#include <gtk/gtk.h>

#include <set>
#include <vector>

#include "gtk/base/Callbacks.h"
#include "gtk/base/Widgets.h"
#include "gtk/window/Input.h"
#include "gtk/window/LoneAlt.h"
#include "platform/Events.h"
#include "platform/scene/Window.h"

// All popup windows of the program that are open, however many, as one: they share one grab of the mouse, so
// that a press anywhere else ends them all, and while any is open the keys go to them and to the main
// window's shortcuts, and nowhere else.
class PopupGroup {
 public:
  explicit PopupGroup(Events& gate);
  PopupGroup(const PopupGroup&) = delete;
  ~PopupGroup();

  // The window that the popups stand over: hovering goes on over it, a press on it ends them before it acts.
  // Null: there is none any more.
  void StandOver(GtkWidget* frame, Window* scene);

  // A popup has been shown, the newest in front of the others; it has gone. One that isn't there is passed
  // over.
  void Add(GtkWidget* frame, Window& scene);
  void Remove(const Window& scene);

  bool AnyOpen() const { return !popups_.empty(); }
  // Tells all of them, the newest first, that they have lost their place as the active window.
  // False: there is none.
  bool EndAll();
  // For every event of the program's windows, before they get it. Whether it has been dealt with.
  bool Takes(GdkEvent* event);
  // Takes them off the screen without asking them, and lets the mouse go: the program is at its end.
  void Clear();

 private:
  struct Popup {
    GtkWidget* frame;
    Window* scene;
  };

  bool TakesKey(const GdkEventKey& event);
  bool TakesSideButton(const GdkEventButton& event);
  // Whether an event that is a key of the main window's was reported to that or to a popup, and no dialog
  // keeps it from there.
  bool ReachesMain(const GdkEvent* event) const;
  bool TakesMove(GdkEvent* event);
  bool TakesPress(GdkEvent* event);
  bool TakesWheel(const GdkEventScroll& event);
  // Whether an event was reported to the grab's window or to a popup; which popup lies at its place.
  bool ComesToGroup(const GdkEvent* event) const;
  const Popup* At(const GdkEvent* event) const;
  bool OnMain(GdkEvent* event) const;
  bool Lists(const Window* scene) const;
  void Tell(Window& scene, const GdkEvent* event);

  void MakeHolder();
  void Grab();
  void LetGo();

  Events& gate_;
  std::vector<Popup> popups_;
  GtkWidget* main_frame_ = nullptr;
  Window* main_scene_ = nullptr;
  // Holds the grab, off the screen, so that it stays where it is while popups come and go.
  OwnedToplevel holder_;
  bool grabbed_ = false;
  int tries_ = 0;
  unsigned retry_ = 0;
  LoneAlt lone_alt_;
  Input::Wheel wheel_;
  std::set<guint16> taken_;  // keys whose press was taken: their release is nobody else's either
  Callbacks callbacks_;
};
