#pragma once

#include <gtk/gtk.h>

// A control of the scene whose place a real widget fills.
class HasWidget {
 public:
  virtual ~HasWidget() = default;
  virtual GtkWidget* Widget() = 0;
};
