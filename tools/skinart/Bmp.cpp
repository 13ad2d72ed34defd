#include "Bmp.h"

#include <fstream>
#include <stdexcept>

namespace skinart {
namespace {

constexpr uint32_t FileHeaderBytes = 14;
constexpr uint32_t InfoHeaderBytes = 40;
constexpr uint32_t PixelsPerMetre = 3780;  // 96 dots an inch

void Append(std::string& out, uint32_t value, int bytes) {
  for (int i = 0; i < bytes; ++i) out.push_back(static_cast<char>(value >> (8 * i) & 0xff));
}

}  // namespace

void WriteBmp(const Canvas& canvas, const std::filesystem::path& file) {
  auto width = static_cast<uint32_t>(canvas.Width());
  auto height = static_cast<uint32_t>(canvas.Height());
  uint32_t stride = (width * 3 + 3) / 4 * 4;
  uint32_t offset = FileHeaderBytes + InfoHeaderBytes;

  std::string out = "BM";
  Append(out, offset + stride * height, 4);
  Append(out, 0, 4);
  Append(out, offset, 4);
  Append(out, InfoHeaderBytes, 4);
  Append(out, width, 4);
  Append(out, height, 4);
  Append(out, 1, 2);   // planes
  Append(out, 24, 2);  // bits a pixel
  Append(out, 0, 4);   // no compression
  Append(out, stride * height, 4);
  Append(out, PixelsPerMetre, 4);
  Append(out, PixelsPerMetre, 4);
  Append(out, 0, 4);  // no palette
  Append(out, 0, 4);
  for (int y = canvas.Height() - 1; y >= 0; --y) {
    for (int x = 0; x < canvas.Width(); ++x) {
      Colour colour = canvas.At(x, y);
      Append(out, colour.blue, 1);
      Append(out, colour.green, 1);
      Append(out, colour.red, 1);
    }
    Append(out, 0, static_cast<int>(stride - width * 3));
  }
  WriteText(out, file);
}

void WriteText(const std::string& text, const std::filesystem::path& file) {
  std::ofstream stream(file, std::ios::binary);
  stream << text;
  stream.close();
  if (!stream) throw std::runtime_error(file.string() + " can't be written");
}

}  // namespace skinart
