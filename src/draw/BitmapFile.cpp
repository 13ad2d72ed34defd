#include "draw/BitmapFile.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <utility>

#include "draw/PictureLimits.h"
#include "platform/Failure.h"

namespace {

constexpr uint32_t Opaque = 0xFF000000;
constexpr size_t FileHeader = 14, OldHeader = 12, Header = 40;

// Numbers stand with their low byte first. What lies behind the end of the text reads as 0.
uint32_t Number(std::string_view text, size_t at, int bytes) {
  uint32_t value = 0;
  for (int i = bytes; i-- > 0;) {
    const size_t place = at + static_cast<size_t>(i);
    value = value << 8 | (place < text.size() ? static_cast<uint8_t>(text[place]) : 0u);
  }
  return value;
}

enum Compression : uint32_t { None = 0, RunLengths8 = 1, RunLengths4 = 2, Masks = 3, AlphaMasks = 6 };

struct Layout {
  int64_t Width = 0, Height = 0;  // pixels
  bool TopDown = false;
  uint32_t Bits = 0;  // to a pixel
  uint32_t Compression = None;
  size_t Offset = 0;                   // of the first row
  size_t PaletteAt = 0, Entry = 4;     // of the palette, and the bytes of one colour in it
  size_t Colours = 0;                  // in the palette
  std::array<uint32_t, 3> Masks = {};  // red, green, blue; 16 and 32 bits

  bool RunLengths() const { return Compression == RunLengths8 || Compression == RunLengths4; }
  // Rows are padded to four bytes.
  size_t RowBytes() const { return (static_cast<size_t>(Width) * Bits + 31) / 32 * 4; }
};

void ReadSizes(std::string_view start, Layout& layout) {
  const uint32_t header = Number(start, FileHeader, 4);
  if (header == OldHeader) {
    layout.Width = Number(start, 18, 2);
    layout.Height = Number(start, 20, 2);
    layout.Bits = Number(start, 24, 2);
    layout.Entry = 3;
  } else {
    if (header < Header) throw Failure("its header makes no sense");
    layout.Width = static_cast<int32_t>(Number(start, 18, 4));
    layout.Height = static_cast<int32_t>(Number(start, 22, 4));
    layout.Bits = Number(start, 28, 2);
    layout.Compression = Number(start, 30, 4);
    layout.Colours = Number(start, 46, 4);
  }
  layout.TopDown = layout.Height < 0;
  layout.Height = std::abs(layout.Height);
  layout.Offset = Number(start, 10, 4);
  layout.PaletteAt = FileHeader + header;
}

void ReadMasks(std::string_view start, Layout& layout) {
  if (layout.Bits != 16 && layout.Bits != 32) return;
  const bool own = layout.Compression == Masks || layout.Compression == AlphaMasks;
  for (size_t i = 0; i < layout.Masks.size(); ++i) {
    const uint32_t usual = layout.Bits == 16 ? 0x7C00u >> 5 * i : 0xFF0000u >> 8 * i;
    layout.Masks[i] = own ? Number(start, FileHeader + Header + 4 * i, 4) : usual;
  }
}

bool Possible(const Layout& layout) {
  switch (layout.Compression) {
    case None:
      return layout.Bits == 1 || layout.Bits == 4 || layout.Bits == 8 || layout.Bits == 16 ||
             layout.Bits == 24 || layout.Bits == 32;
    case RunLengths8:
      return layout.Bits == 8 && !layout.TopDown;
    case RunLengths4:
      return layout.Bits == 4 && !layout.TopDown;
    case Masks:
    case AlphaMasks:
      return layout.Bits == 16 || layout.Bits == 32;
    default:
      return false;
  }
}

Layout ReadLayout(std::string_view start, size_t file_bytes, int64_t most_pixels) {
  if (start.size() < FileHeader + OldHeader) throw Failure("it is cut short");
  Layout layout;
  ReadSizes(start, layout);
  if (layout.Width <= 0 || layout.Height <= 0 || !Possible(layout))
    throw Failure("its header makes no sense");
  if (layout.Width > most_pixels / layout.Height)
    throw Failure("it claims " + std::to_string(layout.Width) + " by " + std::to_string(layout.Height) +
                  " pixels, and there is room for " + std::to_string(most_pixels));
  const int64_t to_a_byte = layout.RunLengths() ? MostRunPixelsToAByte : MostPixelsToAByte;
  if (layout.Width * layout.Height / to_a_byte > static_cast<int64_t>(file_bytes))
    throw Failure("it is cut short");
  if (layout.Offset < layout.PaletteAt) throw Failure("its header makes no sense");
  if (layout.Offset > file_bytes) throw Failure("it is cut short");
  if (!layout.RunLengths() &&
      layout.RowBytes() * static_cast<size_t>(layout.Height) > file_bytes - layout.Offset)
    throw Failure("it is cut short");
  ReadMasks(start, layout);
  const size_t room = (layout.Offset - layout.PaletteAt) / layout.Entry;
  const size_t most = layout.Bits <= 8 ? size_t{1} << layout.Bits : 0;
  layout.Colours = std::min({layout.Colours == 0 ? most : layout.Colours, most, room});
  return layout;
}

// The colours of every index; an index that the file gives no colour is black.
std::array<uint32_t, 256> ReadPalette(std::string_view content, const Layout& layout) {
  std::array<uint32_t, 256> palette{};
  palette.fill(Opaque);
  for (size_t i = 0; i < layout.Colours; ++i)
    palette[i] = Opaque | Number(content, layout.PaletteAt + i * layout.Entry, 3);
  return palette;
}

// One part of a pixel behind a mask, as 0 to 255.
class Channel {
 public:
  explicit Channel(uint32_t mask) : mask_(mask), shift_(mask ? std::countr_zero(mask) : 0) {}
  uint32_t Of(uint32_t value) const {
    const uint64_t most = mask_ >> shift_;
    return most ? static_cast<uint32_t>(((value & mask_) >> shift_) * uint64_t{255} / most) : 0;
  }

 private:
  uint32_t mask_;
  int shift_;
};

class Rows {
 public:
  Rows(std::string_view content, const Layout& layout)
      : layout_(layout),
        palette_(ReadPalette(content, layout)),
        red_(layout.Masks[0]),
        green_(layout.Masks[1]),
        blue_(layout.Masks[2]) {}

  void Decode(const uint8_t* row, uint32_t* to) const {
    const auto width = static_cast<size_t>(layout_.Width);
    switch (layout_.Bits) {
      case 24:
        for (size_t x = 0; x < width; ++x, row += 3)
          to[x] = Opaque | static_cast<uint32_t>(row[2] << 16 | row[1] << 8 | row[0]);
        break;
      case 32:
      case 16:
        for (size_t x = 0; x < width; ++x, row += layout_.Bits / 8) to[x] = Masked(row);
        break;
      default:
        for (size_t x = 0; x < width; ++x) to[x] = palette_[Index(row, x)];
    }
  }

  uint32_t Colour(uint8_t index) const { return palette_[index]; }

 private:
  // Indices stand from the high bits of a byte to the low ones.
  size_t Index(const uint8_t* row, size_t x) const {
    const size_t bit = x * layout_.Bits;
    return row[bit / 8] >> (8 - layout_.Bits - bit % 8) & ((1u << layout_.Bits) - 1);
  }

  uint32_t Masked(const uint8_t* at) const {
    uint32_t value = static_cast<uint32_t>(at[0] | at[1] << 8);
    if (layout_.Bits == 32) value |= static_cast<uint32_t>(at[2]) << 16 | static_cast<uint32_t>(at[3]) << 24;
    return Opaque | red_.Of(value) << 16 | green_.Of(value) << 8 | blue_.Of(value);
  }

  const Layout& layout_;
  std::array<uint32_t, 256> palette_;
  Channel red_, green_, blue_;
};

// Goes through run lengths and calls put(x, y, index) for each pixel, y counted from the bottom. False where
// the data ends before the picture does. What sticks out of a row is left out.
template <class Put>
bool WalkRuns(std::string_view data, const Layout& layout, Put put) {
  const bool half_bytes = layout.Compression == RunLengths4;
  int64_t x = 0, y = 0;
  size_t at = 0;
  const auto byte = [&](size_t place) { return static_cast<uint8_t>(data[place]); };
  const auto next = [&](uint8_t index) {
    if (x < layout.Width) put(x, y, index);
    ++x;
  };
  while (y < layout.Height) {
    if (data.size() - at < 2) return false;
    const uint8_t count = byte(at), value = byte(at + 1);
    at += 2;
    if (count > 0) {
      for (int i = 0; i < count; ++i)
        next(!half_bytes ? value : static_cast<uint8_t>(i % 2 == 0 ? value >> 4 : value & 15));
    } else if (value == 0) {
      x = 0;
      ++y;
    } else if (value == 1) {
      return true;
    } else if (value == 2) {
      if (data.size() - at < 2) return false;
      x += byte(at);
      y += byte(at + 1);
      at += 2;
    } else {
      // `value` indices as they stand, padded to two bytes.
      const size_t bytes = half_bytes ? (value + 1u) / 2 : value;
      if (data.size() - at < bytes) return false;
      for (size_t i = 0; i < value; ++i)
        next(!half_bytes ? byte(at + i)
                         : static_cast<uint8_t>(i % 2 == 0 ? byte(at + i / 2) >> 4 : byte(at + i / 2) & 15));
      at = std::min(data.size(), at + (bytes + 1) / 2 * 2);
    }
  }
  return true;
}

}  // namespace

size_t BitmapFile::Check(std::string_view start, size_t file_bytes, int64_t most) {
  const Layout layout = ReadLayout(start, file_bytes, most);
  const auto height = static_cast<size_t>(layout.Height), width = static_cast<size_t>(layout.Width);
  // A run of one takes two bytes to the pixel, and each row has an end; twice that is room for any sane file.
  const size_t data = layout.RunLengths() ? 4 * (width + 1) * height + 2 : layout.RowBytes() * height;
  return layout.Offset + std::min(data, file_bytes - layout.Offset);
}

Picture BitmapFile::Decode(std::string_view content, int64_t most) {
  const Layout layout = ReadLayout(content, content.size(), most);
  const std::string_view data = content.substr(layout.Offset);
  // Run lengths are gone through once before any memory is taken for what they claim.
  if (layout.RunLengths() && !WalkRuns(data, layout, [](int64_t, int64_t, uint8_t) {}))
    throw Failure("it is cut short");

  auto bitmap = std::make_shared<Bitmap>();
  bitmap->Width = static_cast<int>(layout.Width);
  bitmap->Height = static_cast<int>(layout.Height);
  const Rows rows(content, layout);
  const auto width = static_cast<size_t>(layout.Width), height = static_cast<size_t>(layout.Height);
  bitmap->Pixels.resize(width * height, rows.Colour(0));
  uint32_t* pixels = bitmap->Pixels.data();
  if (layout.RunLengths()) {
    WalkRuns(data, layout, [&](int64_t x, int64_t y, uint8_t index) {
      pixels[(height - 1 - static_cast<size_t>(y)) * width + static_cast<size_t>(x)] = rows.Colour(index);
    });
    return bitmap;
  }
  const auto* row = reinterpret_cast<const uint8_t*>(data.data());
  for (size_t y = 0; y < height; ++y, row += layout.RowBytes())
    rows.Decode(row, pixels + (layout.TopDown ? y : height - 1 - y) * width);
  return bitmap;
}
