#pragma once

#include "platform/Desktop.h"

// The part of the screen that panels leave free, on the monitor where the middle of a window is. Twips.
ScreenRect WorkAreaOf(const Window& window);
