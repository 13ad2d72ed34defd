#include "menus/MenuFrame.h"

#include <array>

#include "skin/Skin.h"
#include "skin/TileBitmapModule.h"

namespace {

constexpr Twips Thickness = 30;
constexpr Place Piece = {0, 0, Thickness, Thickness};

struct Art {
  Surface MenuFrame::*Piece;
  Store Skin::*Source;
};

// Clockwise from the top left corner.
constexpr std::array<Art, 8> Pieces = {{
    {&MenuFrame::picTopLeft, &Skin::picMnuTopLeft},
    {&MenuFrame::picTop, &Skin::picMnuTop},
    {&MenuFrame::picTopRight, &Skin::picMnuTopRight},
    {&MenuFrame::picRight, &Skin::picMnuRight},
    {&MenuFrame::picBotRight, &Skin::picMnuBotRight},
    {&MenuFrame::picBottom, &Skin::picMnuBottom},
    {&MenuFrame::picBotLeft, &Skin::picMnuBotLeft},
    {&MenuFrame::picLeft, &Skin::picMnuLeft},
}};
static_assert(Pieces.back().Source, "art for each piece");

}  // namespace

MenuFrame::MenuFrame(Control* parent)
    : picTop(parent, Piece),
      picRight(parent, Piece),
      picBottom(parent, Piece),
      picLeft(parent, Piece),
      picTopLeft(parent, Piece),
      picTopRight(parent, Piece),
      picBotRight(parent, Piece),
      picBotLeft(parent, Piece) {}

void MenuFrame::Surround(Twips width, Twips height) {
  for (Surface* left : {&picTopLeft, &picTop, &picLeft, &picBotLeft, &picBottom}) left->Left = 0;
  picTopRight.Left = width - picTopRight.Width;
  picRight.Left = picTopRight.Left;
  picBotRight.Left = picTopRight.Left;
  picTop.Width = width;
  picBottom.Width = width;
  PlaceTop(0);
  PlaceBottom(height);
}

void MenuFrame::ToFront() {
  for (Surface* edge : {&picTop, &picRight, &picBottom, &picLeft}) edge->ZOrder(0);
  for (Surface* corner : {&picTopLeft, &picTopRight, &picBotRight, &picBotLeft}) corner->ZOrder(0);
}

void MenuFrame::PlaceBottom(Twips height) {
  picBotRight.Top = height - picBotRight.Height;
  picBotLeft.Top = picBotRight.Top;
  picBottom.Top = picBotRight.Top;
  picLeft.Height = height;
  picRight.Height = height;
}

void MenuFrame::PlaceTop(Twips top) {
  for (Surface* upper : {&picTopLeft, &picTop, &picTopRight, &picLeft, &picRight}) upper->Top = top;
}

void MenuFrame::Tile(Skin& skin) {
  for (const Art& art : Pieces) TileBitmap(this->*art.Piece, skin.*art.Source);
}
