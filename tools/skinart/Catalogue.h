#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "Bars.h"

namespace skinart {

// One bitmap of a skin: its file, its size in pixels, and what paints it.
struct Entry {
  const char* file;
  int width;
  int height;
  std::function<Canvas(const Kit&)> paint;
};

// Every bitmap of a skin, in the order in which the program loads them, then the animation's frames.
const std::vector<Entry>& Catalogue();

// The painted bitmaps of one theme under their file names.
using Art = std::map<std::string, Canvas>;

// Paints the whole catalogue. Throws std::logic_error if a painter misses the size of its entry.
Art PaintAll(const Kit& kit);

}  // namespace skinart
