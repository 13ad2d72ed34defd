#pragma once

#include <string_view>

#include "platform/Text.h"

// A key as the desktop names it: a letter or digit is itself, in either case; "Tab", "F5", "plus", "KP_Add".
struct KeyPress {
  // What is held with it, as a sum. AnyShift: with Shift or without, which for a sign is up to the keyboard's
  // layout.
  static constexpr int HeldControl = 1, HeldShift = 2, HeldAlt = 4, AnyShift = 8;

  std::string_view Name;
  bool Control = false, Shift = false, Alt = false;

  bool Is(std::string_view name, int held) const {
    const int pressed = (Control ? HeldControl : 0) + (Shift ? HeldShift : 0) + (Alt ? HeldAlt : 0);
    const bool holds = held & AnyShift ? (pressed & ~HeldShift) == (held & ~AnyShift) : pressed == held;
    return holds && Text::SameWithoutCase(Name, name);
  }
};
