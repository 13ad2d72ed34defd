#pragma once

#include <cstdint>
#include <memory>
#include <vector>

// Opaque pixels, row after row from the top left corner; one pixel is 0xFFRRGGBB.
struct Bitmap {
  int Width = 0;   // pixels
  int Height = 0;  // pixels
  std::vector<uint32_t> Pixels;
};

// A picture never changes once it is made, so surfaces share it freely. Empty: no picture.
using Picture = std::shared_ptr<const Bitmap>;
