#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/scene/Bitmap.h"
#include "platform/scene/DisplayList.h"

// Where a composed picture goes: a window's bitmap in device pixels.
struct Canvas {
  uint32_t* Pixels = nullptr;  // 0xFFRRGGBB, row after row
  int Width = 0;               // device pixels
  int Height = 0;              // device pixels
  int Scale = 1;               // device pixels to one logical pixel
};

// The largest picture that is taken, in pixels.
constexpr int64_t MaximumPixels = 64'000'000;

// Drawing without a display. Implemented in src/draw.
class Drawing {
 public:
  virtual ~Drawing() = default;

  // The picture in a file. Fails where the file is missing, isn't a picture, is cut short, or claims more
  // than `most` pixels, which may be MaximumPixels and less; and where there is no memory for it.
  virtual Picture LoadPicture(const std::string& path, int64_t most) = 0;
  Picture LoadPicture(const std::string& path) { return LoadPicture(path, MaximumPixels); }

  // The art built into the program, by its file name ("left.bmp"). Fails for a name that isn't there.
  virtual Picture BuiltInPicture(const std::string& name) = 0;

  // Width of one line in the window font, and the height of a line, in logical pixels.
  virtual double TextWidth(std::string_view text) = 0;
  virtual double LineHeight() = 0;

  // Paints the parts of the list that lie in `rects` (logical pixels) onto the canvas.
  virtual void Compose(const Canvas& canvas, const DisplayList& list,
                       const std::vector<PixelRect>& rects) = 0;
};

// The drawing of src/draw.
std::unique_ptr<Drawing> MakeDrawing();
