#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "platform/scene/Bitmap.h"

// BMP files: what skins are made of. Palettes of 1, 4 and 8 bits, 16, 24 and 32 bits with and without masks,
// run lengths of 4 and 8 bits; the fourth byte of a 32-bit pixel says nothing here.
//
// Both fail with a text that only says what is wrong, as in "it is cut short".
namespace BitmapFile {

// As much of a file's start as Check needs to see, where the file has that much.
constexpr size_t HeaderBytes = 70;

// What a header claims is held against the file's real size and the `most` pixels that are wanted, so that a
// lie costs neither time nor memory. Returns the number of bytes from the start of the file that its picture
// may take.
size_t Check(std::string_view start, size_t file_bytes, int64_t most);

// The picture in a file's content, of at most so many pixels.
Picture Decode(std::string_view content, int64_t most);

}  // namespace BitmapFile
