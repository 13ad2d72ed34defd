#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace skinart {

// An opaque colour, 8 bits a channel.
struct Colour {
  uint8_t red = 0;
  uint8_t green = 0;
  uint8_t blue = 0;

  bool operator==(const Colour&) const = default;
};

constexpr Colour Black{0, 0, 0};
constexpr Colour White{255, 255, 255};

// `share` of `to` (0 to 1) and the rest of `from`.
inline Colour Mix(Colour from, Colour to, double share) {
  auto channel = [share](uint8_t a, uint8_t b) {
    return static_cast<uint8_t>(std::lround(a + (b - a) * std::clamp(share, 0.0, 1.0)));
  };
  return {channel(from.red, to.red), channel(from.green, to.green), channel(from.blue, to.blue)};
}

inline Colour Lighter(Colour colour, double share) { return Mix(colour, White, share); }
inline Colour Darker(Colour colour, double share) { return Mix(colour, Black, share); }

// The colour with `levels` added to each channel, held to 0..255.
inline Colour Shifted(Colour colour, int levels) {
  auto channel = [levels](uint8_t value) { return static_cast<uint8_t>(std::clamp(value + levels, 0, 255)); };
  return {channel(colour.red), channel(colour.green), channel(colour.blue)};
}

// Relative luminance, 0 to 1, of an sRGB colour.
inline double Luminance(Colour colour) {
  auto linear = [](uint8_t value) {
    double share = value / 255.0;
    return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(colour.red) + 0.7152 * linear(colour.green) + 0.0722 * linear(colour.blue);
}

// Contrast ratio, 1 to 21.
inline double Contrast(Colour one, Colour other) {
  double a = Luminance(one) + 0.05;
  double b = Luminance(other) + 0.05;
  return std::max(a, b) / std::min(a, b);
}

}  // namespace skinart
