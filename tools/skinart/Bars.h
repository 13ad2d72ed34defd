#pragma once

#include "Canvas.h"
#include "Theme.h"

namespace skinart {

/// How many rows of each bar the program shows; the pictures may be higher.
namespace shown {
constexpr int TitleBar = 20;
constexpr int MenuBar = 24;
constexpr int ToolBar = 35;
constexpr int Strip = 25;
constexpr int StatusBar = 17;
}  // namespace shown

/// Thickness of the window's frame.
constexpr int FrameWidth = 5;

/// A theme with its bars and the ground of its menus painted. Every other piece stands on one of them and
/// copies what is behind it, since the program knows no transparent pixels.
struct Kit {
  explicit Kit(const Theme& theme);

  const Theme& theme;
  Canvas titleBar;   ///< 800 x 26
  Canvas menuBar;    ///< 338 x 25
  Canvas toolBar;    ///< 800 x 40
  Canvas strip;      ///< 338 x 25, without the points that only bare places have
  Canvas statusBar;  ///< 500 x 20
  Canvas menuBack;   ///< 300 x 300
};

Canvas titleBar(const Kit& kit);
Canvas menuBar(const Kit& kit);
Canvas toolBar(const Kit& kit);
Canvas tabStrip(const Kit& kit);
Canvas statusBar(const Kit& kit);

Canvas leftEdge(const Kit& kit);
Canvas rightEdge(const Kit& kit);
Canvas bottomEdge(const Kit& kit);
Canvas topLeftCorner(const Kit& kit);
Canvas topRightCorner(const Kit& kit);
Canvas bottomLeftCorner(const Kit& kit);
/// The corner that resizes the window, with its grip.
Canvas bottomRightCorner(const Kit& kit);

}  // namespace skinart
