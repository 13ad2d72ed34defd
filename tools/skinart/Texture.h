#pragma once

#include "Canvas.h"
#include "Theme.h"

namespace skinart {

// Which way the brush went: bars and menus lie, the window's edges stand.
enum class Grain { Lying, Standing };

// Lays the theme's texture over a rectangle of `canvas`, which must be as long as the picture in the
// direction in which the picture is repeated: the texture joins up with itself there. The same
// `stream` gives the same texture every time. Stars are laid by `ScatterStars` alone.
void ApplyTexture(Canvas& canvas, const Texture& texture, int x, int y, int width, int height, Grain grain,
                  uint32_t stream);

// Sets faint points on the rows `y` to `y + height - 1`, for themes with the texture "stars".
void ScatterStars(Canvas& canvas, const Texture& texture, int y, int height, uint32_t stream);

}  // namespace skinart
