#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/KeptPage.h"

// The tabs of a run, as they stand in a file.
struct KeptTabs {
  std::vector<KeptPage> Pages;
  size_t Shown = 0;  // the place in Pages of the one on show

  std::string Pack() const;
  // Takes any bytes: what is whole before the first fault is taken, the rest is left out.
  static KeptTabs Unpack(std::string_view content);
};
