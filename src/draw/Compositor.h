#pragma once

#include <vector>

#include "draw/TextLayout.h"
#include "platform/scene/DisplayList.h"
#include "platform/scene/Drawing.h"

// Paints the parts of a list that lie in `rects` onto a canvas, each pixel once where nothing but fills,
// tiles and pictures lie over it.
void Compose(TextLayout& text, const Canvas& canvas, const DisplayList& list,
             const std::vector<PixelRect>& rects);
