#include "Animation.h"

#include <numbers>

#include "Buttons.h"

namespace skinart {
namespace {

constexpr int Width = 49;
constexpr int Height = 24;
// The well that the picture plays in, and its inside.
constexpr int WellX = 2, WellY = 2, WellWidth = 45, WellHeight = 19;
constexpr int X = WellX + 1, Y = WellY + 1, W = WellWidth - 2, H = WellHeight - 2;
constexpr double Turn = 2 * std::numbers::pi;

double TurnOf(int frame) { return Turn * frame / BusyFrames; }

// Height of a swell that moves on by one of its lengths in eight frames.
double Swell(double x, double length, double height, double phase) {
  return height * std::sin(Turn * x / length - phase);
}

void Sea(cairo_t* cr, double level, double length, double height, double phase, Colour colour) {
  cairo_new_path(cr);
  cairo_move_to(cr, X, Y + H);
  for (int x = 0; x <= W; ++x) cairo_line_to(cr, X + x, level + Swell(x, length, height, phase));
  cairo_line_to(cr, X + W, Y + H);
  cairo_close_path(cr);
  SetSource(cr, colour);
  cairo_fill(cr);
}

// A small sailing boat with its waterline at the origin.
void Boat(cairo_t* cr, Colour sail, Colour hull) {
  auto triangle = [cr](double x1, double y1, double x2, double y2, double x3, double y3) {
    cairo_move_to(cr, x1, y1);
    cairo_line_to(cr, x2, y2);
    cairo_line_to(cr, x3, y3);
    cairo_close_path(cr);
    cairo_fill(cr);
  };
  SetSource(cr, sail);
  triangle(-0.5, -10, -0.5, -3, -6, -3);
  triangle(1, -8, 1, -3, 5, -3);
  SetSource(cr, hull);
  cairo_move_to(cr, -6, -2);
  cairo_line_to(cr, 6, -2);
  cairo_line_to(cr, 4, 1);
  cairo_line_to(cr, -4, 1);
  cairo_close_path(cr);
  cairo_fill(cr);
}

// Swells pass under a boat; at rest the sea is calm.
void Waves(cairo_t* cr, const AnimationStyle& style, int frame) {
  bool idle = frame == IdleFrame;
  double height = idle ? 0.7 : 2;
  double phase = idle ? 0 : TurnOf(frame);
  double level = Y + H - 4;
  Sea(cr, level - 1, 17, height * 0.7, phase + 2, style.two);
  double middle = W / 2.0;
  double slope = idle ? 0 : Swell(middle + 1, 22, height, phase) - Swell(middle - 1, 22, height, phase);
  cairo_save(cr);
  cairo_translate(cr, X + middle, level - 1 + Swell(middle, 22, height, phase));
  cairo_rotate(cr, slope * 0.35);
  Boat(cr, White, style.three);
  cairo_restore(cr);
  Sea(cr, level + 1, 22, height, phase, style.one);
}

// Five lamps in a row; the light runs to the end and back.
void Lamps(cairo_t* cr, const AnimationStyle& style, int frame) {
  constexpr int Count = 5;
  constexpr double Step = 8;
  int lit = frame < Count ? frame : BusyFrames - frame;
  int last = frame == 0 ? 1 : (frame <= Count - 1 ? frame - 1 : lit + 1);
  for (int i = 0; i < Count; ++i) {
    double x = X + W / 2.0 + (i - (Count - 1) / 2.0) * Step;
    double y = Y + H / 2.0;
    Colour colour = style.two;
    if (frame != IdleFrame && i == last) colour = Mix(style.two, style.one, 0.45);
    if (frame != IdleFrame && i == lit) colour = style.one;
    cairo_new_path(cr);
    cairo_arc(cr, x, y, 3.2, 0, Turn);
    SetSource(cr, style.three);
    cairo_fill(cr);
    cairo_arc(cr, x, y, 2.5, 0, Turn);
    SetSource(cr, colour);
    cairo_fill(cr);
    cairo_arc(cr, x - 0.7, y - 0.7, 0.8, 0, Turn);
    SetSource(cr, White, colour == style.one ? 0.9 : 0.35);
    cairo_fill(cr);
  }
}

// A moon whose lit part is `share` of a month on, 0 and 1 being the new moon.
void MoonDisc(cairo_t* cr, double x, double y, double radius, double share, Colour dark, Colour lit) {
  cairo_new_path(cr);
  cairo_arc(cr, x, y, radius, 0, Turn);
  SetSource(cr, dark);
  cairo_fill(cr);
  double bulge = std::cos(Turn * share);  // 1 at new moon, -1 at full
  bool waxing = share < 0.5;
  cairo_save(cr);
  cairo_translate(cr, x, y);
  if (!waxing) cairo_scale(cr, -1, 1);
  cairo_arc(cr, 0, 0, radius, -Turn / 4, Turn / 4);
  cairo_scale(cr, bulge == 0 ? 0.001 : bulge, 1);
  cairo_arc_negative(cr, 0, 0, radius, Turn / 4, -Turn / 4);
  cairo_close_path(cr);
  cairo_restore(cr);
  SetSource(cr, lit);
  cairo_fill(cr);
}

// The moon goes through its phases among stars that twinkle in turn.
void Moon(Canvas& canvas, const AnimationStyle& style, int frame) {
  static constexpr int Stars[][3] = {{5, 4, 0}, {11, 11, 3}, {7, 13, 6}, {33, 3, 2}, {38, 9, 5}, {32, 13, 7}};
  for (const auto& [x, y, turn] : Stars) {
    double glow = frame == IdleFrame ? 0.35 : 0.5 + 0.5 * std::cos(TurnOf(frame - turn));
    canvas.Put(X + x, Y + y, Mix(style.well.top, style.two, 0.15 + 0.85 * glow));
  }
  double share = frame == IdleFrame ? 0.16 : (frame + 0.5) / BusyFrames;
  MoonDisc(canvas.Cr(), X + W / 2.0, Y + H / 2.0, 6.5, share, style.three, style.one);
}

void PaperPlane(cairo_t* cr, const AnimationStyle& style) {
  auto fold = [cr](Colour colour, std::initializer_list<std::pair<double, double>> points) {
    cairo_new_path(cr);
    for (const auto& [x, y] : points) cairo_line_to(cr, x, y);
    cairo_close_path(cr);
    SetSource(cr, colour);
    cairo_fill(cr);
  };
  fold(style.one, {{8, -4}, {-8, -1}, {-3, 1}});
  fold(style.two, {{8, -4}, {-3, 1}, {-2, 6}});
  fold(style.one, {{8, -4}, {-1, 2}, {3, 5}});
}

// A paper plane crosses the well and comes in again on the other side.
void Plane(cairo_t* cr, const AnimationStyle& style, int frame) {
  bool idle = frame == IdleFrame;
  double x = X + (idle ? W / 2.0 : W * (frame + 0.5) / BusyFrames);
  for (double wrapped : {x - W, x, x + W}) {
    double y = Y + H / 2.0 - 1 + (idle ? 0 : 1.5 * std::sin(TurnOf(frame)));
    if (!idle) {
      SetSource(cr, style.three);
      for (int dot = 0; dot < 3; ++dot) {
        double back = 14 + 4 * dot;
        double rise = 1.5 * std::sin(TurnOf(frame) - Turn * back / W);
        cairo_rectangle(cr, std::round(wrapped - back), std::round(Y + H / 2.0 + rise), 2, 1);
        cairo_fill(cr);
      }
    }
    cairo_save(cr);
    cairo_translate(cr, wrapped, y);
    PaperPlane(cr, style);
    cairo_restore(cr);
  }
}

}  // namespace

Canvas AnimationFrame(const Kit& kit, int frame) {
  const AnimationStyle& style = kit.theme.animation;
  Canvas canvas = kit.menu_bar.Part(0, 0, Width, Height);
  DrawFace(canvas, style.well, WellX, WellY, WellWidth, WellHeight, std::min(3.0, kit.theme.plate.radius));
  cairo_t* cr = canvas.Cr();
  cairo_save(cr);
  cairo_rectangle(cr, X, Y, W, H);
  cairo_clip(cr);
  switch (style.kind) {
    case AnimationKind::Waves:
      Waves(cr, style, frame);
      break;
    case AnimationKind::Lamps:
      Lamps(cr, style, frame);
      break;
    case AnimationKind::Moon:
      Moon(canvas, style, frame);
      break;
    case AnimationKind::Plane:
      Plane(cr, style, frame);
      break;
  }
  cairo_restore(cr);
  return canvas;
}

}  // namespace skinart
