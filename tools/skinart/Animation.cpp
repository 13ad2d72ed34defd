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

double turnOf(int frame) { return Turn * frame / BusyFrames; }

/// Height of a swell that moves on by one of its lengths in eight frames.
double swell(double x, double length, double height, double phase) {
  return height * std::sin(Turn * x / length - phase);
}

void sea(cairo_t* cr, double level, double length, double height, double phase, Colour colour) {
  cairo_new_path(cr);
  cairo_move_to(cr, X, Y + H);
  for (int x = 0; x <= W; ++x) cairo_line_to(cr, X + x, level + swell(x, length, height, phase));
  cairo_line_to(cr, X + W, Y + H);
  cairo_close_path(cr);
  setSource(cr, colour);
  cairo_fill(cr);
}

/// A small sailing boat with its waterline at the origin.
void boat(cairo_t* cr, Colour sail, Colour hull) {
  auto triangle = [cr](double x1, double y1, double x2, double y2, double x3, double y3) {
    cairo_move_to(cr, x1, y1);
    cairo_line_to(cr, x2, y2);
    cairo_line_to(cr, x3, y3);
    cairo_close_path(cr);
    cairo_fill(cr);
  };
  setSource(cr, sail);
  triangle(-0.5, -10, -0.5, -3, -6, -3);
  triangle(1, -8, 1, -3, 5, -3);
  setSource(cr, hull);
  cairo_move_to(cr, -6, -2);
  cairo_line_to(cr, 6, -2);
  cairo_line_to(cr, 4, 1);
  cairo_line_to(cr, -4, 1);
  cairo_close_path(cr);
  cairo_fill(cr);
}

/// Swells pass under a boat; at rest the sea is calm.
void waves(cairo_t* cr, const AnimationStyle& style, int frame) {
  bool idle = frame == IdleFrame;
  double height = idle ? 0.7 : 2;
  double phase = idle ? 0 : turnOf(frame);
  double level = Y + H - 4;
  sea(cr, level - 1, 17, height * 0.7, phase + 2, style.two);
  double middle = W / 2.0;
  double slope = idle ? 0 : swell(middle + 1, 22, height, phase) - swell(middle - 1, 22, height, phase);
  cairo_save(cr);
  cairo_translate(cr, X + middle, level - 1 + swell(middle, 22, height, phase));
  cairo_rotate(cr, slope * 0.35);
  boat(cr, White, style.three);
  cairo_restore(cr);
  sea(cr, level + 1, 22, height, phase, style.one);
}

/// Five lamps in a row; the light runs to the end and back.
void lamps(cairo_t* cr, const AnimationStyle& style, int frame) {
  constexpr int Count = 5;
  constexpr double Step = 8;
  int lit = frame < Count ? frame : BusyFrames - frame;
  int last = frame == 0 ? 1 : (frame <= Count - 1 ? frame - 1 : lit + 1);
  for (int i = 0; i < Count; ++i) {
    double x = X + W / 2.0 + (i - (Count - 1) / 2.0) * Step;
    double y = Y + H / 2.0;
    Colour colour = style.two;
    if (frame != IdleFrame && i == last) colour = mix(style.two, style.one, 0.45);
    if (frame != IdleFrame && i == lit) colour = style.one;
    cairo_new_path(cr);
    cairo_arc(cr, x, y, 3.2, 0, Turn);
    setSource(cr, style.three);
    cairo_fill(cr);
    cairo_arc(cr, x, y, 2.5, 0, Turn);
    setSource(cr, colour);
    cairo_fill(cr);
    cairo_arc(cr, x - 0.7, y - 0.7, 0.8, 0, Turn);
    setSource(cr, White, colour == style.one ? 0.9 : 0.35);
    cairo_fill(cr);
  }
}

/// A moon whose lit part is `share` of a month on, 0 and 1 being the new moon.
void moonDisc(cairo_t* cr, double x, double y, double radius, double share, Colour dark, Colour lit) {
  cairo_new_path(cr);
  cairo_arc(cr, x, y, radius, 0, Turn);
  setSource(cr, dark);
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
  setSource(cr, lit);
  cairo_fill(cr);
}

/// The moon goes through its phases among stars that twinkle in turn.
void moon(Canvas& canvas, const AnimationStyle& style, int frame) {
  static constexpr int Stars[][3] = {{5, 4, 0}, {11, 11, 3}, {7, 13, 6}, {33, 3, 2}, {38, 9, 5}, {32, 13, 7}};
  for (const auto& [x, y, turn] : Stars) {
    double glow = frame == IdleFrame ? 0.35 : 0.5 + 0.5 * std::cos(turnOf(frame - turn));
    canvas.put(X + x, Y + y, mix(style.well.top, style.two, 0.15 + 0.85 * glow));
  }
  double share = frame == IdleFrame ? 0.16 : (frame + 0.5) / BusyFrames;
  moonDisc(canvas.cr(), X + W / 2.0, Y + H / 2.0, 6.5, share, style.three, style.one);
}

void paperPlane(cairo_t* cr, const AnimationStyle& style) {
  auto fold = [cr](Colour colour, std::initializer_list<std::pair<double, double>> points) {
    cairo_new_path(cr);
    for (const auto& [x, y] : points) cairo_line_to(cr, x, y);
    cairo_close_path(cr);
    setSource(cr, colour);
    cairo_fill(cr);
  };
  fold(style.one, {{8, -4}, {-8, -1}, {-3, 1}});
  fold(style.two, {{8, -4}, {-3, 1}, {-2, 6}});
  fold(style.one, {{8, -4}, {-1, 2}, {3, 5}});
}

/// A paper plane crosses the well and comes in again on the other side.
void plane(cairo_t* cr, const AnimationStyle& style, int frame) {
  bool idle = frame == IdleFrame;
  double x = X + (idle ? W / 2.0 : W * (frame + 0.5) / BusyFrames);
  for (double wrapped : {x - W, x, x + W}) {
    double y = Y + H / 2.0 - 1 + (idle ? 0 : 1.5 * std::sin(turnOf(frame)));
    if (!idle) {
      setSource(cr, style.three);
      for (int dot = 0; dot < 3; ++dot) {
        double back = 14 + 4 * dot;
        double rise = 1.5 * std::sin(turnOf(frame) - Turn * back / W);
        cairo_rectangle(cr, std::round(wrapped - back), std::round(Y + H / 2.0 + rise), 2, 1);
        cairo_fill(cr);
      }
    }
    cairo_save(cr);
    cairo_translate(cr, wrapped, y);
    paperPlane(cr, style);
    cairo_restore(cr);
  }
}

}  // namespace

Canvas animationFrame(const Kit& kit, int frame) {
  const AnimationStyle& style = kit.theme.animation;
  Canvas canvas = kit.menuBar.part(0, 0, Width, Height);
  drawFace(canvas, style.well, WellX, WellY, WellWidth, WellHeight, std::min(3.0, kit.theme.plate.radius));
  cairo_t* cr = canvas.cr();
  cairo_save(cr);
  cairo_rectangle(cr, X, Y, W, H);
  cairo_clip(cr);
  switch (style.kind) {
    case AnimationKind::Waves:
      waves(cr, style, frame);
      break;
    case AnimationKind::Lamps:
      lamps(cr, style, frame);
      break;
    case AnimationKind::Moon:
      moon(canvas, style, frame);
      break;
    case AnimationKind::Plane:
      plane(cr, style, frame);
      break;
  }
  cairo_restore(cr);
  return canvas;
}

}  // namespace skinart
