#include "platform/scene/Colour.h"

#include <array>

namespace {

// The desktop's colours by index, as pixels: scroll bar, background, active and inactive caption, menu,
// window, window frame, menu text, window text, caption text, active and inactive border, application
// workspace, highlight, highlight text, button face, button shadow, grey text, button text, inactive caption
// text, button highlight, 3-D dark shadow, 3-D light, tip text, tip background. What is written on buttons is
// a blue: the built-in skin highlights with it.
constexpr std::array<uint32_t, 25> SystemPixels = {
    0xFFD4D0C8, 0xFF3A6EA5, 0xFF0A246A, 0xFF808080, 0xFFF4F4F4, 0xFFFFFFFF, 0xFF000000,
    0xFF000000, 0xFF000000, 0xFFFFFFFF, 0xFFD4D0C8, 0xFFD4D0C8, 0xFF808080, 0xFF0A246A,
    0xFFFFFFFF, 0xFFD4D0C8, 0xFF808080, 0xFF808080, 0xFF1C3F73, 0xFFD4D0C8, 0xFFFFFFFF,
    0xFF404040, 0xFFD4D0C8, 0xFF000000, 0xFFFFFFE1};

}  // namespace

uint32_t ToPixel(Colour colour) {
  const auto value = static_cast<uint32_t>(colour);
  if (value & 0x80000000u) {
    const uint32_t index = value & 0xFF;
    return index < SystemPixels.size() ? SystemPixels[index] : 0xFF000000;
  }
  return 0xFF000000u | (value & 0xFF) << 16 | (value & 0xFF00) | (value >> 16 & 0xFF);
}
