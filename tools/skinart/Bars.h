#pragma once

#include "Canvas.h"
#include "Theme.h"

namespace skinart {

// How many rows of each bar the program shows; the pictures may be higher.
namespace shown {
constexpr int TitleBar = 20;
constexpr int MenuBar = 24;
constexpr int ToolBar = 35;
constexpr int Strip = 25;
constexpr int StatusBar = 17;
}  // namespace shown

// Thickness of the window's frame.
constexpr int FrameWidth = 5;

// A theme with its bars and the ground of its menus painted. Every other piece stands on one of them and
// copies what is behind it, since the program knows no transparent pixels.
struct Kit {
  explicit Kit(const Theme& theme);

  const Theme& theme;
  Canvas title_bar;   // 800 x 26
  Canvas menu_bar;    // 338 x 25
  Canvas tool_bar;    // 800 x 40
  Canvas strip;       // 338 x 25, without the points that only bare places have
  Canvas status_bar;  // 500 x 20
  Canvas menu_back;   // 300 x 300
};

Canvas TitleBar(const Kit& kit);
Canvas MenuBar(const Kit& kit);
Canvas ToolBar(const Kit& kit);
Canvas TabStrip(const Kit& kit);
Canvas StatusBar(const Kit& kit);

Canvas LeftEdge(const Kit& kit);
Canvas RightEdge(const Kit& kit);
Canvas BottomEdge(const Kit& kit);
Canvas TopLeftCorner(const Kit& kit);
Canvas TopRightCorner(const Kit& kit);
Canvas BottomLeftCorner(const Kit& kit);
// The corner that resizes the window, with its grip.
Canvas BottomRightCorner(const Kit& kit);

}  // namespace skinart
