#pragma once

#include "Bars.h"

namespace skinart {

// The tabs (150 x 21, on the strip's row 4).

Canvas selectedTab(const Kit& kit);
Canvas otherTab(const Kit& kit);

// The pieces of a menu, 2 pixels thick.

Canvas menuTopLeft(const Kit& kit);
Canvas menuTop(const Kit& kit);
Canvas menuTopRight(const Kit& kit);
Canvas menuRight(const Kit& kit);
Canvas menuBottomRight(const Kit& kit);
Canvas menuBottom(const Kit& kit);
Canvas menuBottomLeft(const Kit& kit);
Canvas menuLeft(const Kit& kit);

Canvas menuBackground(const Kit& kit);
/// 140 x 8, repeated sideways.
Canvas menuSpacer(const Kit& kit);

// Icons of a menu's rows, 14 x 14.

Canvas folderIcon(const Kit& kit);
Canvas linkIcon(const Kit& kit);
Canvas subMenuArrow(const Kit& kit);
/// On black, which is the colour of a highlighted row of favourites in every skin.
Canvas subMenuArrowHighlighted(const Kit& kit);
Canvas scrollDownIcon(const Kit& kit);
Canvas scrollUpIcon(const Kit& kit);

}  // namespace skinart
