#pragma once

#include "Bars.h"
#include "Icons.h"

namespace skinart {

enum class Side { Left, Right };
enum class WindowButton { Minimise, Maximise, Close };

// A piece filled with `face`: an outline, a lit first row and a gradient, corners rounded by `radius`.
void DrawFace(Canvas& canvas, const Face& face, int x, int y, int width, int height, double radius);

// Left edge of a toolbar button within the toolbar.
int ToolButtonLeft(Icon icon);

// 33 x 33, on the toolbar's row 1.
Canvas ToolButton(const Kit& kit, Icon icon, State state);

// 25 x 35, on the toolbar's row 0.
Canvas Scroller(const Kit& kit, Side side, bool hover);

// 15 x 15, on the title bar's row 5.
Canvas DrawWindowButton(const Kit& kit, WindowButton button, bool down);

}  // namespace skinart
