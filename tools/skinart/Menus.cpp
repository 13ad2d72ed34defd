#include "Pieces.h"
#include "Texture.h"

namespace skinart {
namespace {

constexpr int Thickness = 2;
constexpr int IconSize = 14;
constexpr uint32_t SpacerStream = 20;

/// What is behind an icon in the first row of a menu of favourites.
Canvas iconField(const Kit& kit) { return kit.menuBack.part(6, 8, IconSize, IconSize); }

bool isLine(const Kit& kit) { return kit.theme.icon.family == IconFamily::Line; }

/// A triangle of four columns, the point to the right.
void pointRight(Canvas& canvas, Colour colour) {
  for (int i = 0; i < 4; ++i) canvas.rect(5 + i, 3 + i, 1, 7 - 2 * i, colour);
}

/// An angle two pixels thick, the point to the right.
void angleRight(Canvas& canvas, Colour colour) {
  for (int i = 0; i < 7; ++i) canvas.rect(5 + (i < 4 ? i : 6 - i), 3 + i, 2, 1, colour);
}

/// The same two, seven columns wide, the point down or up.
void pointVertical(Canvas& canvas, Colour colour, bool down) {
  for (int i = 0; i < 4; ++i) canvas.rect(3 + i, down ? 5 + i : 8 - i, 7 - 2 * i, 1, colour);
}

void angleVertical(Canvas& canvas, Colour colour, bool down) {
  for (int i = 0; i < 7; ++i) {
    int depth = i < 4 ? i : 6 - i;
    canvas.rect(3 + i, down ? 5 + depth : 7 - depth, 1, 2, colour);
  }
}

Canvas arrow(Canvas canvas, Colour colour, bool line) {
  line ? angleRight(canvas, colour) : pointRight(canvas, colour);
  return canvas;
}

Canvas scrollIcon(const Kit& kit, bool down) {
  Canvas canvas = iconField(kit);
  isLine(kit) ? angleVertical(canvas, kit.theme.menu.arrow, down)
              : pointVertical(canvas, kit.theme.menu.arrow, down);
  return canvas;
}

}  // namespace

Canvas menuTop(const Kit& kit) {
  Canvas piece(121, Thickness, kit.theme.menu.outline);
  piece.rect(0, 1, 121, 1, kit.theme.menu.light);
  return piece;
}

Canvas menuBottom(const Kit& kit) {
  Canvas piece(174, Thickness, kit.theme.menu.outline);
  piece.rect(0, 0, 174, 1, kit.theme.menu.shade);
  return piece;
}

Canvas menuLeft(const Kit& kit) {
  Canvas piece(Thickness, 229, kit.theme.menu.outline);
  piece.rect(1, 0, 1, 229, kit.theme.menu.light);
  return piece;
}

Canvas menuRight(const Kit& kit) {
  Canvas piece(Thickness, 189, kit.theme.menu.outline);
  piece.rect(0, 0, 1, 189, kit.theme.menu.shade);
  return piece;
}

Canvas menuTopLeft(const Kit& kit) {
  Canvas piece(Thickness, Thickness, kit.theme.menu.outline);
  piece.put(1, 1, kit.theme.menu.light);
  return piece;
}

Canvas menuTopRight(const Kit& kit) {
  Canvas piece(Thickness, Thickness, kit.theme.menu.outline);
  piece.put(0, 1, kit.theme.menu.light);
  return piece;
}

Canvas menuBottomRight(const Kit& kit) {
  Canvas piece(Thickness, Thickness, kit.theme.menu.outline);
  piece.put(0, 0, kit.theme.menu.shade);
  return piece;
}

Canvas menuBottomLeft(const Kit& kit) {
  Canvas piece(Thickness, Thickness, kit.theme.menu.outline);
  piece.put(1, 0, kit.theme.menu.light);
  return piece;
}

Canvas menuBackground(const Kit& kit) { return kit.menuBack.part(0, 0, 300, 300); }

Canvas menuSpacer(const Kit& kit) {
  const MenuStyle& menu = kit.theme.menu;
  Canvas spacer(140, 8, menu.back);
  applyTexture(spacer, kit.theme.texture, 0, 0, 140, 8, Grain::Lying, SpacerStream);
  switch (menu.spacer) {
    case SpacerStyle::Etched:
      spacer.rect(0, 3, 140, 1, menu.lineDark);
      spacer.rect(0, 4, 140, 1, menu.lineLight);
      break;
    case SpacerStyle::Dotted:
      for (int x = 0; x < 140; x += 4) spacer.rect(x, 3, 2, 1, menu.lineDark);
      break;
    case SpacerStyle::Hairline:
      spacer.rect(0, 4, 140, 1, menu.lineDark);
      break;
  }
  return spacer;
}

Canvas folderIcon(const Kit& kit) {
  Canvas canvas = iconField(kit);
  Colour colour = kit.theme.menu.folder;
  if (isLine(kit)) {
    canvas.frame(1, 4, 12, 8, colour);
    canvas.rect(1, 2, 5, 1, colour);
    canvas.rect(1, 3, 1, 1, colour);
    canvas.rect(6, 3, 1, 1, colour);
    canvas.rect(2, 4, 4, 1, kit.theme.menu.back);
    return canvas;
  }
  bool relief = kit.theme.icon.finish == IconFinish::Relief;
  Colour outline = relief ? darker(colour, 0.45) : colour;
  canvas.rect(1, 2, 6, 2, outline);
  canvas.rect(1, 4, 12, 8, outline);
  if (!relief) {
    canvas.rect(1, 5, 12, 1, kit.theme.menu.back);
    return canvas;
  }
  canvas.rect(2, 3, 4, 1, lighter(colour, 0.3));
  canvas.gradient(2, 5, 10, 6, lighter(colour, 0.45), colour);
  canvas.rect(2, 4, 5, 1, lighter(colour, 0.3));
  return canvas;
}

Canvas linkIcon(const Kit& kit) {
  Canvas canvas = iconField(kit);
  Colour colour = kit.theme.menu.link;
  bool relief = kit.theme.icon.finish == IconFinish::Relief;
  canvas.frame(2, 1, 10, 12, colour);
  if (relief) canvas.gradient(3, 2, 8, 10, White, lighter(colour, 0.75));
  // The turned-down corner of the page.
  canvas.rect(9, 1, 3, 3, kit.theme.menu.back);
  for (int i = 0; i < 4; ++i) canvas.put(8 + i, 1 + i, colour);
  canvas.rect(8, 1, 1, 4, colour);
  canvas.rect(8, 4, 4, 1, colour);
  for (int y : {6, 8, 10}) canvas.rect(4, y, y == 10 ? 4 : 6, 1, relief ? lighter(colour, 0.25) : colour);
  return canvas;
}

Canvas subMenuArrow(const Kit& kit) { return arrow(iconField(kit), kit.theme.menu.arrow, isLine(kit)); }

Canvas subMenuArrowHighlighted(const Kit& kit) {
  return arrow({IconSize, IconSize, Black}, kit.theme.menu.arrowHighlight, isLine(kit));
}

Canvas scrollDownIcon(const Kit& kit) { return scrollIcon(kit, true); }
Canvas scrollUpIcon(const Kit& kit) { return scrollIcon(kit, false); }

}  // namespace skinart
