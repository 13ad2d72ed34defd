#pragma once

#include <gdk/gdk.h>

// Finds the Alt key that is pressed and released with nothing between: no other key, no mouse, no other
// window.
class LoneAlt {
 public:
  // For each event in turn. True: this one is its release.
  bool Completes(const GdkEvent* event);

 private:
  bool alone_ = false;
};
