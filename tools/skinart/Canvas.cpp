#include "Canvas.h"

#include <cmath>
#include <cstring>
#include <numbers>
#include <stdexcept>

namespace skinart {
namespace {

uint32_t packed(Colour colour) {
  return 0xff000000u | static_cast<uint32_t>(colour.red) << 16 | static_cast<uint32_t>(colour.green) << 8 |
         colour.blue;
}

unsigned char* pixel(cairo_surface_t* surface, int x, int y) {
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
  rect(0, 0, width, height, colour);
}

int Canvas::width() const { return cairo_image_surface_get_width(surface_.get()); }
int Canvas::height() const { return cairo_image_surface_get_height(surface_.get()); }

Colour Canvas::at(int x, int y) const {
  cairo_surface_flush(surface_.get());
  uint32_t value = 0;
  std::memcpy(&value, pixel(surface_.get(), std::clamp(x, 0, width() - 1), std::clamp(y, 0, height() - 1)),
              sizeof value);
  return {static_cast<uint8_t>(value >> 16), static_cast<uint8_t>(value >> 8), static_cast<uint8_t>(value)};
}

void Canvas::put(int x, int y, Colour colour) {
  if (x < 0 || y < 0 || x >= width() || y >= height()) return;
  cairo_surface_flush(surface_.get());
  uint32_t value = packed(colour);
  std::memcpy(pixel(surface_.get(), x, y), &value, sizeof value);
  cairo_surface_mark_dirty_rectangle(surface_.get(), x, y, 1, 1);
}

void Canvas::rect(int x, int y, int width, int height, Colour colour) {
  gradient(x, y, width, height, colour, colour);
}

void Canvas::frame(int x, int y, int width, int height, Colour colour) {
  rect(x, y, width, 1, colour);
  rect(x, y + height - 1, width, 1, colour);
  rect(x, y, 1, height, colour);
  rect(x + width - 1, y, 1, height, colour);
}

void Canvas::gradient(int x, int y, int width, int height, Colour top, Colour bottom) {
  for (int row = 0; row < height; ++row) {
    Colour colour = height > 1 ? mix(top, bottom, static_cast<double>(row) / (height - 1)) : top;
    for (int column = 0; column < width; ++column) put(x + column, y + row, colour);
  }
}

void Canvas::blit(const Canvas& source, int x, int y) {
  blit(source, x, y, 0, 0, source.width(), source.height());
}

void Canvas::blit(const Canvas& source, int x, int y, int fromX, int fromY, int width, int height) {
  for (int row = 0; row < height; ++row) {
    for (int column = 0; column < width; ++column) {
      put(x + column, y + row, source.at(fromX + column, fromY + row));
    }
  }
}

void Canvas::tile(const Canvas& source, int x, int y, int width, int height) {
  for (int row = 0; row < height; ++row) {
    for (int column = 0; column < width; ++column) {
      put(x + column, y + row, source.at(column % source.width(), row % source.height()));
    }
  }
}

void Canvas::enlarge(const Canvas& source, int x, int y, int factor) {
  for (int row = 0; row < source.height(); ++row) {
    for (int column = 0; column < source.width(); ++column) {
      rect(x + column * factor, y + row * factor, factor, factor, source.at(column, row));
    }
  }
}

Canvas Canvas::part(int x, int y, int width, int height) const {
  Canvas result(width, height);
  result.blit(*this, 0, 0, x, y, width, height);
  return result;
}

void Canvas::writePng(const std::filesystem::path& file) const {
  cairo_status_t status = cairo_surface_write_to_png(surface_.get(), file.c_str());
  if (status == CAIRO_STATUS_SUCCESS) return;
  throw std::runtime_error(file.string() + " can't be written: " + cairo_status_to_string(status));
}

void setSource(cairo_t* cr, Colour colour, double alpha) {
  cairo_set_source_rgba(cr, colour.red / 255.0, colour.green / 255.0, colour.blue / 255.0, alpha);
}

void roundedRect(cairo_t* cr, double x, double y, double width, double height, double upper, double lower) {
  constexpr double Quarter = std::numbers::pi / 2;
  cairo_new_sub_path(cr);
  cairo_arc(cr, x + width - upper, y + upper, upper, -Quarter, 0);
  cairo_arc(cr, x + width - lower, y + height - lower, lower, 0, Quarter);
  cairo_arc(cr, x + lower, y + height - lower, lower, Quarter, 2 * Quarter);
  cairo_arc(cr, x + upper, y + upper, upper, 2 * Quarter, 3 * Quarter);
  cairo_close_path(cr);
}

void fillGradient(cairo_t* cr, double y, double height, Colour top, Colour bottom) {
  cairo_pattern_t* pattern = cairo_pattern_create_linear(0, y, 0, y + height);
  cairo_pattern_add_color_stop_rgb(pattern, 0, top.red / 255.0, top.green / 255.0, top.blue / 255.0);
  cairo_pattern_add_color_stop_rgb(pattern, 1, bottom.red / 255.0, bottom.green / 255.0, bottom.blue / 255.0);
  cairo_set_source(cr, pattern);
  cairo_pattern_destroy(pattern);
  cairo_fill(cr);
}

void drawText(Canvas& canvas, int x, int y, int width, const std::string& text, Colour colour, Align align,
              double size, bool bold) {
  cairo_t* cr = canvas.cr();
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
  setSource(cr, colour);
  cairo_move_to(cr, left, std::round(y + font.ascent));
  cairo_show_text(cr, text.c_str());
  cairo_restore(cr);
}

}  // namespace skinart
