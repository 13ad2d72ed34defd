#pragma once

#include <gtk/gtk.h>

#include <functional>
#include <string>

#include "gtk/base/Callbacks.h"
#include "gtk/base/GObjects.h"
#include "platform/Safety.h"

// The marks at the start of an address field: what vouches for the page, and, where that is so, that pages
// run without a sandbox. Each is a button with its meaning as its name. Drawn here, so that they are the same
// with every theme of the desktop and sharp at every scale.
class FieldMark {
 public:
  // Of one mark, in pixels.
  static constexpr int Width = 20;

  FieldMark(std::function<void()> pressed, const Callbacks::Runner& runner);
  FieldMark(const FieldMark&) = delete;

  GtkWidget* Widget() { return box_.get(); }
  void Show(Safety safety, bool outside_sandbox);
  // How many marks are shown.
  int Count() const { return outside_sandbox_ ? 2 : 1; }

 private:
  GtkWidget* AddButton(std::function<void(cairo_t*)> draw);
  void Name(GtkWidget* button, const std::string& name);

  Owned<GtkWidget> box_;
  GtkWidget *safety_button_, *sandbox_button_;  // in the box
  std::function<void()> pressed_;
  Safety safety_ = Safety::Unknown;
  bool outside_sandbox_ = false;
  Callbacks callbacks_;
};
