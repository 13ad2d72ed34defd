#include "Pieces.h"

namespace skinart {
namespace {

constexpr int TabWidth = 150;
constexpr int TabHeight = 21;
constexpr int TabTop = 4;      // row of the strip
constexpr int OtherStart = 5;  // the tabs in the back stand lower

void Chamfer(cairo_t* cr, double x, double y, double width, double height, double cut) {
  cairo_move_to(cr, x, y + height);
  cairo_line_to(cr, x, y + cut);
  cairo_line_to(cr, x + cut, y);
  cairo_line_to(cr, x + width - cut, y);
  cairo_line_to(cr, x + width, y + cut);
  cairo_line_to(cr, x + width, y + height);
  cairo_close_path(cr);
}

// The outline of a tab, drawn in by `inset` at its sides and its top.
void TabPath(cairo_t* cr, TabShape shape, double top, double height, double inset) {
  double x = 1 + inset;
  double y = top + inset;
  double width = TabWidth - 2 - 2 * inset;
  cairo_new_path(cr);
  switch (shape) {
    case TabShape::Round:
      RoundedRect(cr, x, y, width, height - inset, 5 - inset, 0);
      break;
    case TabShape::Chamfer:
      Chamfer(cr, x, y, width, height - inset, 6 - inset / 2);
      break;
    case TabShape::Pill:
      RoundedRect(cr, x, y, width, height - inset, 8 - inset, 0);
      break;
    case TabShape::Sheet:
      cairo_rectangle(cr, x, y, width, height - inset);
      break;
  }
}

// Rows of plain lines at the foot of the strip, which run on below the tabs in the back.
int BaseRows(const Bands& strip) {
  int rows = 0;
  for (auto band = strip.rbegin(); band != strip.rend() && band->rows > 0; ++band) rows += band->rows;
  return rows;
}

// Columns that the rounded or cut corner takes from the top row.
int CornerWidth(TabShape shape) {
  switch (shape) {
    case TabShape::Round:
      return 5;
    case TabShape::Chamfer:
      return 7;
    case TabShape::Pill:
      return 8;
    case TabShape::Sheet:
      return 1;
  }
  return 0;
}

void DrawTab(Canvas& canvas, TabShape shape, const Face& face, int top, int height) {
  cairo_t* cr = canvas.Cr();
  TabPath(cr, shape, top, height, 0);
  SetSource(cr, face.outline);
  cairo_fill(cr);
  TabPath(cr, shape, top, height, 1);
  FillGradient(cr, top + 1, height - 1, face.top, face.bottom);
  int corner = 1 + CornerWidth(shape);
  canvas.Rect(corner, top + 1, TabWidth - 2 * corner, 1, face.light);
}

void DrawPill(Canvas& canvas, const Face& face, int top, int height) {
  cairo_t* cr = canvas.Cr();
  cairo_new_path(cr);
  RoundedRect(cr, 2, top, TabWidth - 4, height, 6, 6);
  SetSource(cr, face.outline);
  cairo_fill(cr);
  RoundedRect(cr, 3, top + 1, TabWidth - 6, height - 2, 5, 5);
  FillGradient(cr, top + 1, height - 2, face.top, face.bottom);
}

void DrawAccent(Canvas& canvas, const TabStyle& tab) {
  switch (tab.shape) {
    case TabShape::Round:
      return;
    case TabShape::Chamfer:
      canvas.Rect(8, 1, TabWidth - 16, 1, tab.accent);
      return;
    case TabShape::Pill:
      canvas.Rect(10, 0, TabWidth - 20, 2, tab.accent);
      return;
    case TabShape::Sheet:
      canvas.Rect(1, 0, TabWidth - 2, 2, tab.accent);
      return;
  }
}

}  // namespace

Canvas SelectedTab(const Kit& kit) {
  Canvas canvas = kit.strip.Part(0, TabTop, TabWidth, TabHeight);
  DrawTab(canvas, kit.theme.tab.shape, kit.theme.tab.selected, 0, TabHeight);
  DrawAccent(canvas, kit.theme.tab);
  return canvas;
}

Canvas OtherTab(const Kit& kit) {
  Canvas canvas = kit.strip.Part(0, TabTop, TabWidth, TabHeight);
  const TabStyle& tab = kit.theme.tab;
  int height = TabHeight - OtherStart - BaseRows(kit.theme.strip);
  if (tab.shape == TabShape::Pill) {
    DrawPill(canvas, tab.other, OtherStart, height);
  } else {
    DrawTab(canvas, tab.shape, tab.other, OtherStart, height);
  }
  return canvas;
}

}  // namespace skinart
