#pragma once

#include <cstdint>

// The largest picture that is taken, in pixels; and the largest file, which is what the largest picture
// needs at four bytes to the pixel.
constexpr int64_t MaximumPixels = 64'000'000;
constexpr int64_t MaximumFileBytes = 4 * MaximumPixels + 64 * 1024;

// No kind of picture packs more pixels into a byte of its file; a header that claims more is wrong.
constexpr int64_t MostPixelsToAByte = 10'000;
