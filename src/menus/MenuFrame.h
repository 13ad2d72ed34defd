#pragma once

#include "platform/scene/Scene.h"

class Skin;

// The frame of a menu's window: four edges and, over them, four corners, each 30 twips thick, in the skin's
// art. Positions are in twips of the surface that carries them.
class MenuFrame {
 public:
  explicit MenuFrame(Control* parent);

  Surface picTop, picRight, picBottom, picLeft;
  Surface picTopLeft, picTopRight, picBotRight, picBotLeft;

  // Around an area of this size that begins at the parent's corner.
  void Surround(Twips width, Twips height);
  // In front of what has come into the parent since.
  void ToFront();
  // Only the lower edge, and the length of the sides.
  void PlaceBottom(Twips height);
  // Only the upper edge, and where the sides begin.
  void PlaceTop(Twips top);

  void Tile(Skin& skin);
};
