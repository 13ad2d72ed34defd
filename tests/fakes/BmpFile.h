#pragma once

#include <cstdint>
#include <functional>
#include <string>

// A BMP file of 24 bits, written by hand; `pixel(x, y)` is 0xRRGGBB, y from the top.
std::string BmpFile(int width, int height, const std::function<uint32_t(int x, int y)>& pixel);

// The header of a BMP file with whatever it should claim; what follows it is the caller's.
struct BmpHeader {
  int32_t Width = 0, Height = 0;
  uint16_t Bits = 24;
  uint32_t Compression = 0;
  uint32_t Colours = 0;  // in the palette
  uint32_t Offset = 54;
  uint32_t HeaderBytes = 40;

  std::string Text() const;
};
