#pragma once

#include <vector>

#include "platform/DisplayList.h"
#include "platform/Drawing.h"
#include "platform/draw/TextLayout.h"

// Paints the parts of a list that lie in `rects` onto a canvas, each pixel once where nothing but fills,
// tiles and pictures lie over it.
void Compose(TextLayout& text, const Canvas& canvas, const DisplayList& list,
             const std::vector<PixelRect>& rects);
