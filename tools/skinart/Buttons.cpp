#include "Buttons.h"

#include <array>
#include <numbers>

namespace skinart {
namespace {

constexpr int ButtonSize = 33;
constexpr int ButtonTop = 1;
constexpr int WindowButtonSize = 15;
constexpr int WindowButtonTop = 5;

// A triangle that points to `side`, seven rows high, drawn row by row.
void ScrollArrow(Canvas& canvas, Side side, int x, int y, Colour colour) {
  for (int i = 0; i < 6; ++i) {
    int column = side == Side::Left ? x + i : x + 5 - i;
    canvas.Rect(column, y + 5 - i, 1, 2 * i + 1, colour);
  }
}

void DrawDisc(Canvas& canvas, const Face& face, double x, double y, double radius) {
  cairo_t* cr = canvas.Cr();
  auto ring = [&](double r) {
    cairo_new_path(cr);
    cairo_arc(cr, x, y, r, 0, 2 * std::numbers::pi);
  };
  ring(radius);
  SetSource(cr, face.outline);
  cairo_fill(cr);
  ring(radius - 1);
  FillGradient(cr, y - radius, 2 * radius, face.light, face.bottom);
  ring(radius - 2);
  FillGradient(cr, y - radius + 2, 2 * radius - 4, face.top, face.bottom);
}

void DrawGlyph(Canvas& canvas, WindowButton button, int x, int y, Colour colour) {
  switch (button) {
    case WindowButton::Minimise:
      canvas.Rect(x + 4, y + 9, 7, 2, colour);
      return;
    case WindowButton::Maximise:
      canvas.Frame(x + 4, y + 4, 7, 7, colour);
      canvas.Rect(x + 4, y + 5, 7, 1, colour);
      return;
    case WindowButton::Close:
      cairo_t* cr = canvas.Cr();
      cairo_new_path(cr);
      cairo_move_to(cr, x + 4.4, y + 4.4);
      cairo_line_to(cr, x + 10.6, y + 10.6);
      cairo_move_to(cr, x + 10.6, y + 4.4);
      cairo_line_to(cr, x + 4.4, y + 10.6);
      cairo_set_line_width(cr, 2);
      SetSource(cr, colour);
      cairo_stroke(cr);
      return;
  }
}

}  // namespace

void DrawFace(Canvas& canvas, const Face& face, int x, int y, int width, int height, double radius) {
  cairo_t* cr = canvas.Cr();
  cairo_new_path(cr);
  RoundedRect(cr, x, y, width, height, radius, radius);
  SetSource(cr, face.outline);
  cairo_fill(cr);
  double inner = std::max(0.0, radius - 1);
  cairo_save(cr);
  RoundedRect(cr, x + 1, y + 1, width - 2, height - 2, inner, inner);
  cairo_clip_preserve(cr);
  FillGradient(cr, y + 1, height - 2, face.top, face.bottom);
  cairo_rectangle(cr, x + 1, y + 1, width - 2, 1);
  SetSource(cr, face.light);
  cairo_fill(cr);
  cairo_restore(cr);
}

int ToolButtonLeft(Icon icon) {
  static constexpr std::array<int, 8> Left = {8, 41, 74, 107, 140, 173, 206, 239};
  return Left[static_cast<size_t>(icon)];
}

Canvas ToolButton(const Kit& kit, Icon icon, State state) {
  Canvas canvas = kit.tool_bar.Part(ToolButtonLeft(icon), ButtonTop, ButtonSize, ButtonSize);
  const PlateStyle& plate = kit.theme.plate;
  if (state == State::Hover)
    DrawFace(canvas, plate.hover, 1, 1, ButtonSize - 2, ButtonSize - 2, plate.radius);
  if (state == State::Down) DrawFace(canvas, plate.down, 1, 1, ButtonSize - 2, ButtonSize - 2, plate.radius);
  int push = state == State::Down ? 1 : 0;
  DrawIcon(canvas, kit.theme.icon, icon, state, push, push);
  return canvas;
}

Canvas Scroller(const Kit& kit, Side side, bool hover) {
  constexpr int Width = 25;
  const Theme& theme = kit.theme;
  Canvas canvas = kit.tool_bar.Part(0, 0, Width, shown::ToolBar);
  if (hover) {
    DrawFace(canvas, theme.plate.hover, 2, 2, Width - 3, ButtonSize - 2, theme.plate.radius);
  }
  canvas.Rect(0, 4, 1, ButtonSize - 6, theme.plate.divider);
  if (!hover) canvas.Rect(1, 4, 1, ButtonSize - 6, theme.plate.divider_light);
  Colour ink = hover ? theme.icon.hover : theme.icon.rest;
  if (theme.icon.finish == IconFinish::Engraved) ScrollArrow(canvas, side, 10, 13, theme.icon.glint);
  ScrollArrow(canvas, side, 10, 12, ink);
  return canvas;
}

Canvas DrawWindowButton(const Kit& kit, WindowButton button, bool down) {
  const WindowButtonStyles& styles = kit.theme.window_button;
  Canvas canvas = kit.title_bar.Part(0, WindowButtonTop, WindowButtonSize, WindowButtonSize);
  bool close = button == WindowButton::Close;
  const Face& face = close ? (down ? styles.close_down : styles.close) : (down ? styles.down : styles.rest);
  switch (styles.style) {
    case WindowButtonStyle::Plate:
      DrawFace(canvas, face, 1, 1, 13, 13, 2.5);
      break;
    case WindowButtonStyle::Disc:
      DrawDisc(canvas, face, 7.5, 7.5, 6.5);
      break;
    case WindowButtonStyle::Bare:
      if (down) canvas.Rect(1, 1, 13, 13, face.top);
      break;
  }
  Colour glyph = close ? styles.glyph_close : styles.glyph;
  DrawGlyph(canvas, button, 0, 0, down ? styles.glyph_down : glyph);
  return canvas;
}

}  // namespace skinart
