#include "Canvas.h"

#include <cmath>
#include <cstring>
#include <numbers>
#include <stdexcept>

namespace skinart {
namespace {

uint32_t Packed(Colour colour) {
  return 0xff000000u | static_cast<uint32_t>(colour.red) << 16 | static_cast<uint32_t>(colour.green) << 8 |
         colour.blue;
}

unsigned char* Pixel(cairo_surface_t* surface, int x, int y) {
  return cairo_image_surface_get_data(surface) + y * cairo_image_surface_get_stride(surface) + x * 4;
}

}  // namespace

Canvas::Canvas(int width, int height, Colour colour)
    : surface_(cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height)),
      context_(cairo_create(surface_.get())) {
  if (cairo_status(context_.get()) != CAIRO_STATUS_SUCCESS) {
    throw std::runtime_error("no memory for a picture of " + std::to_string(width) + " x " +
                             std::to_string(height) + " pixels");
  }
  Rect(0, 0, width, height, colour);
}

int Canvas::Width() const { return cairo_image_surface_get_width(surface_.get()); }
int Canvas::Height() const { return cairo_image_surface_get_height(surface_.get()); }

Colour Canvas::At(int x, int y) const {
  cairo_surface_flush(surface_.get());
  uint32_t value = 0;
  std::memcpy(&value, Pixel(surface_.get(), std::clamp(x, 0, Width() - 1), std::clamp(y, 0, Height() - 1)),
              sizeof value);
  return {static_cast<uint8_t>(value >> 16), static_cast<uint8_t>(value >> 8), static_cast<uint8_t>(value)};
}

void Canvas::Put(int x, int y, Colour colour) {
  if (x < 0 || y < 0 || x >= Width() || y >= Height()) return;
  cairo_surface_flush(surface_.get());
  uint32_t value = Packed(colour);
  std::memcpy(Pixel(surface_.get(), x, y), &value, sizeof value);
  cairo_surface_mark_dirty_rectangle(surface_.get(), x, y, 1, 1);
}

void Canvas::Rect(int x, int y, int width, int height, Colour colour) {
  Gradient(x, y, width, height, colour, colour);
}

void Canvas::Frame(int x, int y, int width, int height, Colour colour) {
  Rect(x, y, width, 1, colour);
  Rect(x, y + height - 1, width, 1, colour);
  Rect(x, y, 1, height, colour);
  Rect(x + width - 1, y, 1, height, colour);
}

void Canvas::Gradient(int x, int y, int width, int height, Colour top, Colour bottom) {
  for (int row = 0; row < height; ++row) {
    Colour colour = height > 1 ? Mix(top, bottom, static_cast<double>(row) / (height - 1)) : top;
    for (int column = 0; column < width; ++column) Put(x + column, y + row, colour);
  }
}

void Canvas::Blit(const Canvas& source, int x, int y) {
  Blit(source, x, y, 0, 0, source.Width(), source.Height());
}

void Canvas::Blit(const Canvas& source, int x, int y, int from_x, int from_y, int width, int height) {
  for (int row = 0; row < height; ++row) {
    for (int column = 0; column < width; ++column) {
      Put(x + column, y + row, source.At(from_x + column, from_y + row));
    }
  }
}

void Canvas::Tile(const Canvas& source, int x, int y, int width, int height) {
  for (int row = 0; row < height; ++row) {
    for (int column = 0; column < width; ++column) {
      Put(x + column, y + row, source.At(column % source.Width(), row % source.Height()));
    }
  }
}

void Canvas::Enlarge(const Canvas& source, int x, int y, int factor) {
  for (int row = 0; row < source.Height(); ++row) {
    for (int column = 0; column < source.Width(); ++column) {
      Rect(x + column * factor, y + row * factor, factor, factor, source.At(column, row));
    }
  }
}

Canvas Canvas::Part(int x, int y, int width, int height) const {
  Canvas result(width, height);
  result.Blit(*this, 0, 0, x, y, width, height);
  return result;
}

Canvas Canvas::Halved() const {
  Canvas result(Width() / 2, Height() / 2);
  for (int y = 0; y < result.Height(); ++y) {
    for (int x = 0; x < result.Width(); ++x) {
      int red = 2, green = 2, blue = 2;  // halves are rounded up
      for (const Colour colour :
           {At(2 * x, 2 * y), At(2 * x + 1, 2 * y), At(2 * x, 2 * y + 1), At(2 * x + 1, 2 * y + 1)}) {
        red += colour.red;
        green += colour.green;
        blue += colour.blue;
      }
      result.Put(
          x, y,
          {static_cast<uint8_t>(red / 4), static_cast<uint8_t>(green / 4), static_cast<uint8_t>(blue / 4)});
    }
  }
  return result;
}

void Canvas::WritePng(const std::filesystem::path& file) const {
  cairo_status_t status = cairo_surface_write_to_png(surface_.get(), file.c_str());
  if (status == CAIRO_STATUS_SUCCESS) return;
  throw std::runtime_error(file.string() + " can't be written: " + cairo_status_to_string(status));
}

void SetSource(cairo_t* cr, Colour colour, double alpha) {
  cairo_set_source_rgba(cr, colour.red / 255.0, colour.green / 255.0, colour.blue / 255.0, alpha);
}

void RoundedRect(cairo_t* cr, double x, double y, double width, double height, double upper, double lower) {
  constexpr double Quarter = std::numbers::pi / 2;
  cairo_new_sub_path(cr);
  cairo_arc(cr, x + width - upper, y + upper, upper, -Quarter, 0);
  cairo_arc(cr, x + width - lower, y + height - lower, lower, 0, Quarter);
  cairo_arc(cr, x + lower, y + height - lower, lower, Quarter, 2 * Quarter);
  cairo_arc(cr, x + upper, y + upper, upper, 2 * Quarter, 3 * Quarter);
  cairo_close_path(cr);
}

void FillGradient(cairo_t* cr, double y, double height, Colour top, Colour bottom) {
  cairo_pattern_t* pattern = cairo_pattern_create_linear(0, y, 0, y + height);
  cairo_pattern_add_color_stop_rgb(pattern, 0, top.red / 255.0, top.green / 255.0, top.blue / 255.0);
  cairo_pattern_add_color_stop_rgb(pattern, 1, bottom.red / 255.0, bottom.green / 255.0, bottom.blue / 255.0);
  cairo_set_source(cr, pattern);
  cairo_pattern_destroy(pattern);
  cairo_fill(cr);
}

void DrawText(Canvas& canvas, int x, int y, int width, const std::string& text, Colour colour, Align align,
              double size, bool bold) {
  cairo_t* cr = canvas.Cr();
  cairo_save(cr);
  cairo_rectangle(cr, x, y - 2, width, size * 2);
  cairo_clip(cr);
  cairo_select_font_face(cr, "sans-serif", CAIRO_FONT_SLANT_NORMAL,
                         bold ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
  cairo_set_font_size(cr, size);
  cairo_font_extents_t font;
  cairo_font_extents(cr, &font);
  cairo_text_extents_t extents;
  cairo_text_extents(cr, text.c_str(), &extents);
  double left = align == Align::Centre ? std::floor(x + (width - extents.x_advance) / 2) : x;
  SetSource(cr, colour);
  cairo_move_to(cr, left, std::round(y + font.ascent));
  cairo_show_text(cr, text.c_str());
  cairo_restore(cr);
}

}  // namespace skinart
