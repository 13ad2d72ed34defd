#pragma once

#include <cstdint>

#include "platform/scene/Drawing.h"

// The largest file that is taken: what the largest picture needs at four bytes to the pixel.
constexpr int64_t MaximumFileBytes = 4 * MaximumPixels + 64 * 1024;

// No kind of picture packs more pixels into a byte of its file; a header that claims more is wrong. A run of
// a bitmap has at most 255 pixels.
constexpr int64_t MostPixelsToAByte = 10'000, MostRunPixelsToAByte = 255;
