#pragma once

#include "Bars.h"

namespace skinart {

constexpr int BusyFrames = 8;

// 49 x 24, on the menu bar's row 0. Frames 0 to 7 go round without a jump; `IdleFrame` is the picture
// at rest.
constexpr int IdleFrame = 8;
Canvas AnimationFrame(const Kit& kit, int frame);

}  // namespace skinart
