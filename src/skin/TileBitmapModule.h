#pragma once

#include "platform/scene/Scene.h"
#include "platform/scene/Window.h"

// Clears a surface and repeats the picture of a store over it from the top left corner, neither scaled nor
// centred. A store without a picture only clears.
void TileBitmap(Surface& Destination, const Surface& Source);
// The same for a window's own background.
void TileBitmapForm(Window& Destination, const Surface& Source);
