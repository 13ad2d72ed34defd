#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/scene/Bitmap.h"

// Whole logical pixels of a window.
struct PixelRect {
  int Left = 0, Top = 0, Width = 0, Height = 0;

  bool Empty() const { return Width <= 0 || Height <= 0; }
  int Right() const { return Left + Width; }
  int Bottom() const { return Top + Height; }
  PixelRect Intersect(const PixelRect& other) const;
  // The smallest rectangle around both; an empty one counts for nothing.
  PixelRect Unite(const PixelRect& other) const;
  bool Contains(const PixelRect& other) const;
  bool operator==(const PixelRect&) const = default;
};

// One line of text, its top left corner in pixels of the window.
struct TextRun {
  double X = 0, Y = 0;
  std::string Text;
  uint32_t Pixel = 0xFF000000;
  // Width to cut the line to, with an ellipsis, in pixels; 0: as long as it is.
  double Room = 0;
  bool operator==(const TextRun&) const = default;
};

// What one control shows, from back to front: fill, tiles, picture, text.
struct DrawItem {
  const void* Control = nullptr;
  PixelRect Bounds;  // where it stands; may reach out of Clip
  PixelRect Clip;    // the part of it that can be seen
  bool Fills = false;
  uint32_t BackPixel = 0;
  Picture Tiles;  // repeated from the top left corner of Bounds
  Picture Shown;  // once, at the top left corner of Bounds
  std::vector<TextRun> Texts;
  bool Foreign = false;  // the place of a widget: nothing is drawn here
  bool operator==(const DrawItem&) const = default;
};

// A window's picture as a list, from the back to the front.
using DisplayList = std::vector<DrawItem>;

// The rectangle that has to be painted anew when `shown` is on the screen and `wanted` should be; empty where
// they look the same. Several rectangles, so that two far corners don't repaint what lies between.
std::vector<PixelRect> Damage(const DisplayList& shown, const DisplayList& wanted);
