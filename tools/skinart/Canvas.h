#pragma once

#include <cairo.h>

#include <filesystem>
#include <memory>
#include <string>

#include "Colour.h"

namespace skinart {

// A picture in memory, opaque, measured in pixels from its top left corner.
// Straight edges are set pixel by pixel and stay crisp; curves go through `cr()`.
class Canvas {
 public:
  Canvas(int width, int height, Colour colour = Black);

  int Width() const;
  int Height() const;

  // The cairo context that draws on this picture.
  cairo_t* Cr() const { return context_.get(); }

  // Outside the picture, `at` gives the nearest pixel and `put` does nothing.
  Colour At(int x, int y) const;
  void Put(int x, int y, Colour colour);

  void Rect(int x, int y, int width, int height, Colour colour);
  void Frame(int x, int y, int width, int height, Colour colour);
  // One colour a row, from `top` in the first row to `bottom` in the last.
  void Gradient(int x, int y, int width, int height, Colour top, Colour bottom);

  // Copies `source` to `x`, `y`.
  void Blit(const Canvas& source, int x, int y);
  // Copies the part of `source` at `from_x`, `from_y`.
  void Blit(const Canvas& source, int x, int y, int from_x, int from_y, int width, int height);
  // Repeats `source` over a rectangle from the rectangle's top left corner.
  void Tile(const Canvas& source, int x, int y, int width, int height);
  // Copies `source` with each of its pixels a square of `factor` pixels.
  void Enlarge(const Canvas& source, int x, int y, int factor);

  // This picture at half its size: each pixel is the mean of four.
  Canvas Halved() const;

  // A part of this picture as a picture of its own.
  Canvas Part(int x, int y, int width, int height) const;

  // Throws std::runtime_error with the file's name if it can't be written.
  void WritePng(const std::filesystem::path& file) const;

 private:
  struct Free {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
    void operator()(cairo_t* context) const { cairo_destroy(context); }
  };
  std::unique_ptr<cairo_surface_t, Free> surface_;
  std::unique_ptr<cairo_t, Free> context_;
};

void SetSource(cairo_t* cr, Colour colour, double alpha = 1);

// Adds a rectangle with rounded upper and lower corners, radii in pixels, to the path.
void RoundedRect(cairo_t* cr, double x, double y, double width, double height, double upper, double lower);

// Fills the path, from `top` at the height `y` to `bottom` at `y + height`.
void FillGradient(cairo_t* cr, double y, double height, Colour top, Colour bottom);

enum class Align { Left, Centre };

// One line of text with its top at `y`, cut to `width` pixels.
void DrawText(Canvas& canvas, int x, int y, int width, const std::string& text, Colour colour,
              Align align = Align::Left, double size = 11, bool bold = false);

}  // namespace skinart
