#pragma once

#include <gtk/gtk.h>

#include <functional>
#include <string>

#include "gtk/base/Callbacks.h"
#include "gtk/base/GObjects.h"

// A page alone on the whole of its monitor: what it consists of moves into a window of its own, over the one
// that it came from, and back. Nothing of the other window changes meanwhile.
class FullScreen {
 public:
  // `content` stands in `place`, a box, and comes back there.
  FullScreen(GtkWidget* place, GtkWidget* content, Callbacks::Runner runner);
  FullScreen(const FullScreen&) = delete;
  ~FullScreen() { Leave(); }

  // A key in the window. True: it was used.
  std::function<bool(const GdkEventKey& event)> Key;
  // The desktop wants the window closed.
  std::function<void()> Closed;

  bool On() const { return window_ != nullptr; }
  // The notice stands over the page for some seconds, also where the page is there already.
  void Enter(const std::string& title, const std::string& notice);
  void Leave();

 private:
  void Cover(GtkWidget* from);
  void Show();
  void Tell(const std::string& notice);

  Owned<GtkWidget> place_, content_;
  GtkWidget *window_ = nullptr, *notice_ = nullptr;
  unsigned hiding_ = 0;  // runs while the notice stands
  Callbacks callbacks_;
};
