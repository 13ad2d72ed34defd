#pragma once

#include <cstdint>

#include "platform/scene/Scene.h"

class frmMain;
class Skin;

// The window's self-made frame: the surfaces of the chrome, their layout at any size, moving by the title,
// the three grips, and the program's own maximised state.
class FrameLayout {
 public:
  explicit FrameLayout(frmMain& main);

  // From the back to the front.
  Surface Picture9;     // menu bar
  Surface Picture10;    // status bar
  Surface Picture2;     // tab strip
  Surface Picture1;     // host of the pages
  Surface CoolBar1;     // toolbar strip
  Surface Picture7;     // bottom edge and grip
  Surface Picture3;     // busy animation
  Surface Picture4;     // title bar
  Surface Picture8;     // left edge
  Surface Picture6;     // right edge and grip
  Surface Picture5;     // bottom right corner and grip
  Surface Picture12;    // top left corner
  Surface Picture13;    // top right corner
  Surface Picture14;    // bottom left corner
  Surface picTabRight;  // scroll tabs right
  Surface picTabLeft;   // scroll tabs left

  Surface Image1;    // the program's icon, on the title bar
  Label labCaption;  // window title
  Surface picMin, picMax, picClose;
  Label StatusBar1;  // status text
  // Around the whole place of the progress, and behind it.
  Surface picProgressEdge, picProgressTrough;
  Surface picProgress;      // its width is the progress
  Surface picProgressFoot;  // the lower edge, where the window's own edge lies over it
  Label labDummy;           // hidden: stands for no menu label at all

  int16_t SizingNow = 0;  // 1 during a grip drag

  // The layout. Runs at every change of the window's size or state.
  void Form_Resize();
  // The progress with what is around it.
  void ShowProgress(bool shown);
  // Between the program's maximised state and the rectangle before it.
  void MaxiWindow();

 private:
  using EdgeMove = void (FrameLayout::*)(const Mouse&);
  using StoreOfSkin = Store Skin::*;

  void WireTitle(Control& title);
  void WireGrip(Surface& grip, Pointer pointer, EdgeMove move);
  void WireButton(Surface& button, StoreOfSkin rest, StoreOfSkin pressed);
  void WireButtons();
  void TakeDrag(const Mouse& mouse);
  void MoveWindow(const Mouse& mouse);
  void MoveCorner(const Mouse& mouse);
  void MoveRight(const Mouse& mouse);
  void MoveBottom(const Mouse& mouse);
  // One side of the window follows the mouse, which is `inward` twips nearer to the middle than at the press.
  void MoveEdge(const Mouse& mouse, Control::Property<Twips>& side, Twips least, Twips inward);
  void FillFrame();
  // By the status bar's picture, and the colour of the text on it.
  void DressProgress(const Picture& bar);

  frmMain& main_;
  int16_t MaxiState = 0;  // 1 while maximised
  // Of the last press on a title or grip, twips of that surface. 16 bits would end at 2184 pixels.
  int32_t DragX = 0, DragY = 0;
  int32_t RestoreWidth = 0, RestoreHeight = 0, RestoreTop = 0,
          RestoreLeft = 0;  // before it was maximised, twips
};
