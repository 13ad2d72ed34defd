#include "Pieces.h"
#include "Texture.h"

namespace skinart {
namespace {

constexpr int Thickness = 2;
constexpr int IconSize = 14;
constexpr uint32_t SpacerStream = 20;

// What is behind an icon in the first row of a menu of favourites.
Canvas IconField(const Kit& kit) { return kit.menu_back.Part(6, 8, IconSize, IconSize); }

bool IsLine(const Kit& kit) { return kit.theme.icon.family == IconFamily::Line; }

// A triangle of four columns, the point to the right.
void PointRight(Canvas& canvas, Colour colour) {
  for (int i = 0; i < 4; ++i) canvas.Rect(5 + i, 3 + i, 1, 7 - 2 * i, colour);
}

// An angle two pixels thick, the point to the right.
void AngleRight(Canvas& canvas, Colour colour) {
  for (int i = 0; i < 7; ++i) canvas.Rect(5 + (i < 4 ? i : 6 - i), 3 + i, 2, 1, colour);
}

// The same two, seven columns wide, the point down or up.
void PointVertical(Canvas& canvas, Colour colour, bool down) {
  for (int i = 0; i < 4; ++i) canvas.Rect(3 + i, down ? 5 + i : 8 - i, 7 - 2 * i, 1, colour);
}

void AngleVertical(Canvas& canvas, Colour colour, bool down) {
  for (int i = 0; i < 7; ++i) {
    int depth = i < 4 ? i : 6 - i;
    canvas.Rect(3 + i, down ? 5 + depth : 7 - depth, 1, 2, colour);
  }
}

Canvas Arrow(Canvas canvas, Colour colour, bool line) {
  line ? AngleRight(canvas, colour) : PointRight(canvas, colour);
  return canvas;
}

Canvas ScrollIcon(const Kit& kit, bool down) {
  Canvas canvas = IconField(kit);
  IsLine(kit) ? AngleVertical(canvas, kit.theme.menu.arrow, down)
              : PointVertical(canvas, kit.theme.menu.arrow, down);
  return canvas;
}

}  // namespace

Canvas MenuTop(const Kit& kit) {
  Canvas piece(121, Thickness, kit.theme.menu.outline);
  piece.Rect(0, 1, 121, 1, kit.theme.menu.light);
  return piece;
}

Canvas MenuBottom(const Kit& kit) {
  Canvas piece(174, Thickness, kit.theme.menu.outline);
  piece.Rect(0, 0, 174, 1, kit.theme.menu.shade);
  return piece;
}

Canvas MenuLeft(const Kit& kit) {
  Canvas piece(Thickness, 229, kit.theme.menu.outline);
  piece.Rect(1, 0, 1, 229, kit.theme.menu.light);
  return piece;
}

Canvas MenuRight(const Kit& kit) {
  Canvas piece(Thickness, 189, kit.theme.menu.outline);
  piece.Rect(0, 0, 1, 189, kit.theme.menu.shade);
  return piece;
}

Canvas MenuTopLeft(const Kit& kit) {
  Canvas piece(Thickness, Thickness, kit.theme.menu.outline);
  piece.Put(1, 1, kit.theme.menu.light);
  return piece;
}

Canvas MenuTopRight(const Kit& kit) {
  Canvas piece(Thickness, Thickness, kit.theme.menu.outline);
  piece.Put(0, 1, kit.theme.menu.light);
  return piece;
}

Canvas MenuBottomRight(const Kit& kit) {
  Canvas piece(Thickness, Thickness, kit.theme.menu.outline);
  piece.Put(0, 0, kit.theme.menu.shade);
  return piece;
}

Canvas MenuBottomLeft(const Kit& kit) {
  Canvas piece(Thickness, Thickness, kit.theme.menu.outline);
  piece.Put(1, 0, kit.theme.menu.light);
  return piece;
}

Canvas MenuBackground(const Kit& kit) { return kit.menu_back.Part(0, 0, 300, 300); }

Canvas MenuSpacer(const Kit& kit) {
  const MenuStyle& menu = kit.theme.menu;
  Canvas spacer(140, 8, menu.back);
  ApplyTexture(spacer, kit.theme.texture, 0, 0, 140, 8, Grain::Lying, SpacerStream);
  switch (menu.spacer) {
    case SpacerStyle::Etched:
      spacer.Rect(0, 3, 140, 1, menu.line_dark);
      spacer.Rect(0, 4, 140, 1, menu.line_light);
      break;
    case SpacerStyle::Dotted:
      for (int x = 0; x < 140; x += 4) spacer.Rect(x, 3, 2, 1, menu.line_dark);
      break;
    case SpacerStyle::Hairline:
      spacer.Rect(0, 4, 140, 1, menu.line_dark);
      break;
  }
  return spacer;
}

Canvas FolderIcon(const Kit& kit) {
  Canvas canvas = IconField(kit);
  Colour colour = kit.theme.menu.folder;
  if (IsLine(kit)) {
    canvas.Frame(1, 4, 12, 8, colour);
    canvas.Rect(1, 2, 5, 1, colour);
    canvas.Rect(1, 3, 1, 1, colour);
    canvas.Rect(6, 3, 1, 1, colour);
    canvas.Rect(2, 4, 4, 1, kit.theme.menu.back);
    return canvas;
  }
  bool relief = kit.theme.icon.finish == IconFinish::Relief;
  Colour outline = relief ? Darker(colour, 0.45) : colour;
  canvas.Rect(1, 2, 6, 2, outline);
  canvas.Rect(1, 4, 12, 8, outline);
  if (!relief) {
    canvas.Rect(1, 5, 12, 1, kit.theme.menu.back);
    return canvas;
  }
  canvas.Rect(2, 3, 4, 1, Lighter(colour, 0.3));
  canvas.Gradient(2, 5, 10, 6, Lighter(colour, 0.45), colour);
  canvas.Rect(2, 4, 5, 1, Lighter(colour, 0.3));
  return canvas;
}

Canvas LinkIcon(const Kit& kit) {
  Canvas canvas = IconField(kit);
  Colour colour = kit.theme.menu.link;
  bool relief = kit.theme.icon.finish == IconFinish::Relief;
  canvas.Frame(2, 1, 10, 12, colour);
  if (relief) canvas.Gradient(3, 2, 8, 10, White, Lighter(colour, 0.75));
  // The turned-down corner of the page.
  canvas.Rect(9, 1, 3, 3, kit.theme.menu.back);
  for (int i = 0; i < 4; ++i) canvas.Put(8 + i, 1 + i, colour);
  canvas.Rect(8, 1, 1, 4, colour);
  canvas.Rect(8, 4, 4, 1, colour);
  for (int y : {6, 8, 10}) canvas.Rect(4, y, y == 10 ? 4 : 6, 1, relief ? Lighter(colour, 0.25) : colour);
  return canvas;
}

Canvas SubMenuArrow(const Kit& kit) { return Arrow(IconField(kit), kit.theme.menu.arrow, IsLine(kit)); }

Canvas SubMenuArrowHighlighted(const Kit& kit) {
  return Arrow({IconSize, IconSize, Black}, kit.theme.menu.arrow_highlight, IsLine(kit));
}

Canvas ScrollDownIcon(const Kit& kit) { return ScrollIcon(kit, true); }
Canvas ScrollUpIcon(const Kit& kit) { return ScrollIcon(kit, false); }

}  // namespace skinart
