#pragma once

#include "Canvas.h"
#include "Theme.h"

namespace skinart {

// The toolbar's commands, in the order of the bar.
enum class Icon { Back, Forward, Refresh, Stop, NewTab, RemoveTab, History, Search };

enum class State { Rest, Hover, Down };

// Draws an icon of the toolbar, made for a field of 33 x 33 pixels, with that field's corner at `x`, `y`.
void DrawIcon(Canvas& canvas, const IconStyle& style, Icon icon, State state, int x, int y);

}  // namespace skinart
