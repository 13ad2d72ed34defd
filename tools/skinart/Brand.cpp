#include "Brand.h"

#include <cairo-svg.h>

#include <cmath>
#include <memory>
#include <numbers>
#include <stdexcept>
#include <string>

#include "Canvas.h"

namespace skinart {
namespace {

constexpr double Turn = 2 * std::numbers::pi;

constexpr Colour Navy{0x1f, 0x3a, 0x68};
constexpr Colour DeepSea{0x17, 0x2c, 0x52};
constexpr Colour Sea{0x2c, 0x5a, 0x9c};
constexpr Colour Foam{0x9f, 0xc3, 0xee};
constexpr Colour Sky{0xdd, 0xe9, 0xf7};
constexpr Colour HighSky{0x8f, 0xb4, 0xe0};
constexpr Colour Haze{0xe6, 0xee, 0xf8};
constexpr Colour Hull{0x8a, 0x33, 0x24};
constexpr Colour Sun{0xff, 0xd9, 0x8a};

// A picture with transparent places.
class Picture {
 public:
  Picture(int width, int height)
      : surface_(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height), cairo_surface_destroy),
        context_(cairo_create(surface_.get()), cairo_destroy) {}

  cairo_t* Cr() const { return context_.get(); }

  void Write(const std::filesystem::path& file) const {
    cairo_status_t status = cairo_surface_write_to_png(surface_.get(), file.c_str());
    if (status == CAIRO_STATUS_SUCCESS) return;
    throw std::runtime_error(file.string() + " can't be written: " + cairo_status_to_string(status));
  }

 private:
  std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)> surface_;
  std::unique_ptr<cairo_t, decltype(&cairo_destroy)> context_;
};

void Triangle(cairo_t* cr, double x1, double y1, double x2, double y2, double x3, double y3) {
  cairo_move_to(cr, x1, y1);
  cairo_line_to(cr, x2, y2);
  cairo_line_to(cr, x3, y3);
  cairo_close_path(cr);
}

void WavePath(cairo_t* cr, double left, double right, double bottom, double level, double length,
              double height, double phase) {
  cairo_new_path(cr);
  cairo_move_to(cr, left, bottom);
  auto surface = [&](double x) { return level + height * std::sin(Turn * x / length - phase); };
  for (double x = left; x < right; x += length / 32) cairo_line_to(cr, x, surface(x));
  cairo_line_to(cr, right, surface(right));
  cairo_line_to(cr, right, bottom);
  cairo_close_path(cr);
}

// A sailing boat about 16 units wide with its waterline at the origin.
void DrawBoat(cairo_t* cr) {
  Triangle(cr, -0.5, -15, -0.5, -3, -7, -3);
  FillGradient(cr, -15, 12, White, Sky);
  Triangle(cr, 0.5, -12.5, 0.5, -3, 6, -3);
  FillGradient(cr, -13, 10, Foam, HighSky);
  cairo_rectangle(cr, -0.5, -15, 0.6, 13);
  SetSource(cr, Navy);
  cairo_fill(cr);
  cairo_move_to(cr, -8, -2);
  cairo_line_to(cr, 8, -2);
  cairo_curve_to(cr, 7, 1, 5, 2, 4, 2);
  cairo_line_to(cr, -5, 2);
  cairo_curve_to(cr, -6, 2, -7.5, 0, -8, -2);
  cairo_close_path(cr);
  FillGradient(cr, -2, 4, Lighter(Hull, 0.25), Hull);
}

void WriteIcon(int size, const std::filesystem::path& file) {
  Picture icon(size, size);
  cairo_scale(icon.Cr(), size / 16.0, size / 16.0);
  DrawSign(icon.Cr());
  icon.Write(file);
}

void WriteScalable(const std::filesystem::path& file) {
  const std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)> surface(
      cairo_svg_surface_create(file.c_str(), 16, 16), cairo_surface_destroy);
  const std::unique_ptr<cairo_t, decltype(&cairo_destroy)> context(cairo_create(surface.get()),
                                                                   cairo_destroy);
  DrawSign(context.get());
  cairo_surface_finish(surface.get());
  const cairo_status_t status = cairo_surface_status(surface.get());
  if (status != CAIRO_STATUS_SUCCESS)
    throw std::runtime_error(file.string() + " can't be written: " + cairo_status_to_string(status));
}

// 400 x 180: a boat off the coast at sunrise. The lowest 60 rows are calm water for the texts.
void WriteSplash(const std::filesystem::path& folder) {
  constexpr int Width = 400, Height = 180, HazeTop = 50, Horizon = 92, TextTop = 120;
  Picture splash(Width, Height);
  cairo_t* cr = splash.Cr();
  cairo_rectangle(cr, 0, 0, Width, Height);
  FillGradient(cr, 0, HazeTop, HighSky, Haze);
  cairo_rectangle(cr, 0, HazeTop, Width, Height);
  FillGradient(cr, HazeTop, Horizon - HazeTop, Haze, {0xff, 0xef, 0xd6});
  cairo_arc(cr, 292, Horizon - 12, 22, 0, Turn);
  SetSource(cr, Sun);
  cairo_fill(cr);

  // The coast, far and near.
  WavePath(cr, 0, Width, Height, Horizon - 14, 260, 9, 1.9);
  SetSource(cr, {0xa9, 0xbf, 0xdc});
  cairo_fill(cr);
  WavePath(cr, 0, Width, Height, Horizon - 4, 340, 9, 4.4);
  SetSource(cr, {0x7d, 0x9a, 0xc2});
  cairo_fill(cr);

  cairo_rectangle(cr, 0, Horizon, Width, Height - Horizon);
  FillGradient(cr, Horizon, TextTop - Horizon, {0x6f, 0x9a, 0xd0}, Sea);
  for (int i = 0; i < 7; ++i) {  // the sun on the water
    cairo_rectangle(cr, 292 - 20 + 2 * i, Horizon + 3 + 4 * i, 40 - 4 * i, 1);
    SetSource(cr, Sun, 0.8 - 0.09 * i);
    cairo_fill(cr);
  }
  cairo_save(cr);
  cairo_translate(cr, 116, 111);
  cairo_scale(cr, 4.6, 4.6);
  DrawBoat(cr);
  cairo_restore(cr);

  struct Swell {
    double level = 0, length = 0, height = 0, phase = 0;
    Colour colour;
  };
  static constexpr Swell Swells[] = {{112, 74, 3, 0.4, {0x2c, 0x5a, 0x9c}},
                                     {119, 96, 3, 2.3, {0x24, 0x4b, 0x86}}};
  for (const Swell& swell : Swells) {
    WavePath(cr, 0, Width, Height, swell.level, swell.length, swell.height, swell.phase);
    SetSource(cr, swell.colour);
    cairo_fill(cr);
  }
  cairo_rectangle(cr, 0, TextTop + 3, Width, Height - TextTop - 3);
  FillGradient(cr, TextTop + 3, Height - TextTop - 3, {0x24, 0x4b, 0x86}, DeepSea);

  cairo_rectangle(cr, 0.5, 0.5, Width - 1, Height - 1);
  cairo_set_line_width(cr, 1);
  SetSource(cr, DeepSea);
  cairo_stroke(cr);
  splash.Write(folder / "splash.png");
}

void SmallWindow(cairo_t* cr, double x, double y, double width, double height, Colour title) {
  cairo_rectangle(cr, x, y, width, height);
  SetSource(cr, DeepSea);
  cairo_fill(cr);
  cairo_rectangle(cr, x + 1, y + 1, width - 2, height - 2);
  SetSource(cr, White);
  cairo_fill(cr);
  cairo_rectangle(cr, x + 1, y + 1, width - 2, 4);
  SetSource(cr, title);
  cairo_fill(cr);
  for (int i = 0; i < 2; ++i) {
    cairo_rectangle(cr, x + width - 4 - 3 * i, y + 2, 2, 2);
    SetSource(cr, White);
    cairo_fill(cr);
  }
}

// 32 x 32: a window that another one has sent up.
void WritePopup(const std::filesystem::path& folder) {
  Picture popup(32, 32);
  cairo_t* cr = popup.Cr();
  SmallWindow(cr, 1, 10, 22, 19, HighSky);
  for (int i = 0; i < 3; ++i) {
    cairo_rectangle(cr, 4, 18 + 3 * i, 7, 1);
    SetSource(cr, {0xb4, 0xc2, 0xd6});
    cairo_fill(cr);
  }
  SmallWindow(cr, 11, 2, 20, 18, Sea);
  Triangle(cr, 21, 8, 25.5, 13, 16.5, 13);
  SetSource(cr, {0xd8, 0x7a, 0x1c});
  cairo_fill(cr);
  cairo_rectangle(cr, 20, 12, 2, 5);
  cairo_fill(cr);
  popup.Write(folder / "popup.png");
}

}  // namespace

void DrawSign(cairo_t* cr) {
  cairo_new_path(cr);
  RoundedRect(cr, 0, 0, 16, 16, 3, 3);
  cairo_save(cr);
  cairo_clip_preserve(cr);
  FillGradient(cr, 0, 16, Sea, DeepSea);

  Triangle(cr, 8, 2, 8, 11, 3, 11);
  SetSource(cr, White);
  cairo_fill(cr);
  Triangle(cr, 9, 4, 9, 11, 13, 11);
  SetSource(cr, Foam);
  cairo_fill(cr);
  WavePath(cr, 0, 16, 16, 12.5, 8, 0.7, 1.2);
  SetSource(cr, Foam);
  cairo_fill(cr);
  WavePath(cr, 0, 16, 16, 13.7, 8, 0.7, 1.2);
  SetSource(cr, Navy);
  cairo_fill(cr);
  cairo_restore(cr);
}

void WriteBrand(const std::filesystem::path& folder) {
  std::filesystem::create_directories(folder);
  for (int size : {16, 32, 48, 128}) WriteIcon(size, folder / ("icon-" + std::to_string(size) + ".png"));
  WriteSplash(folder);
  WritePopup(folder);
}

void WriteIcons(const std::filesystem::path& folder, const std::string& name) {
  const auto place = [&folder](const std::string& size) {
    std::filesystem::path apps = folder / size / "apps";
    std::filesystem::create_directories(apps);
    return apps;
  };
  for (int size : {16, 22, 24, 32, 48, 64, 96, 128, 256, 512}) {
    const std::string side = std::to_string(size);
    WriteIcon(size, place(side + "x" + side) / (name + ".png"));
  }
  WriteScalable(place("scalable") / (name + ".svg"));
}

}  // namespace skinart
