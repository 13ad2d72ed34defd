#pragma once

#include <cstdint>

// Red in the low byte, then green, then blue; with the top bit set, a system colour by the index in its low
// byte.
using Colour = int32_t;

constexpr Colour SystemColour(int index) {
  return static_cast<Colour>(0x80000000u | static_cast<uint32_t>(index));
}
constexpr Colour ButtonTextColour = SystemColour(0x12);
constexpr Colour ButtonFaceColour = SystemColour(0x0F);
constexpr Colour GreyTextColour = SystemColour(0x11);
constexpr Colour WindowBackgroundColour = SystemColour(0x05);

// The colour as a pixel, 0xFFRRGGBB. An unknown system colour is black.
uint32_t ToPixel(Colour colour);
