#pragma once

#include "Bars.h"

namespace skinart {

// The tabs (150 x 21, on the strip's row 4).

Canvas SelectedTab(const Kit& kit);
Canvas OtherTab(const Kit& kit);

// The pieces of a menu, 2 pixels thick.

Canvas MenuTopLeft(const Kit& kit);
Canvas MenuTop(const Kit& kit);
Canvas MenuTopRight(const Kit& kit);
Canvas MenuRight(const Kit& kit);
Canvas MenuBottomRight(const Kit& kit);
Canvas MenuBottom(const Kit& kit);
Canvas MenuBottomLeft(const Kit& kit);
Canvas MenuLeft(const Kit& kit);

Canvas MenuBackground(const Kit& kit);
// 140 x 8, repeated sideways.
Canvas MenuSpacer(const Kit& kit);

// Icons of a menu's rows, 14 x 14.

Canvas FolderIcon(const Kit& kit);
Canvas LinkIcon(const Kit& kit);
Canvas SubMenuArrow(const Kit& kit);
// On black, which is the colour of a highlighted row of favourites in every skin.
Canvas SubMenuArrowHighlighted(const Kit& kit);
Canvas ScrollDownIcon(const Kit& kit);
Canvas ScrollUpIcon(const Kit& kit);

}  // namespace skinart
