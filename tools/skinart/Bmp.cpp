#include "Bmp.h"

#include <fstream>
#include <stdexcept>

namespace skinart {
namespace {

constexpr uint32_t FileHeaderBytes = 14;
constexpr uint32_t InfoHeaderBytes = 40;
constexpr uint32_t PixelsPerMetre = 3780;  // 96 dots an inch

void append(std::string& out, uint32_t value, int bytes) {
  for (int i = 0; i < bytes; ++i) out.push_back(static_cast<char>(value >> (8 * i) & 0xff));
}

}  // namespace

void writeBmp(const Canvas& canvas, const std::filesystem::path& file) {
  auto width = static_cast<uint32_t>(canvas.width());
  auto height = static_cast<uint32_t>(canvas.height());
  uint32_t stride = (width * 3 + 3) / 4 * 4;
  uint32_t offset = FileHeaderBytes + InfoHeaderBytes;

  std::string out = "BM";
  append(out, offset + stride * height, 4);
  append(out, 0, 4);
  append(out, offset, 4);
  append(out, InfoHeaderBytes, 4);
  append(out, width, 4);
  append(out, height, 4);
  append(out, 1, 2);   // planes
  append(out, 24, 2);  // bits a pixel
  append(out, 0, 4);   // no compression
  append(out, stride * height, 4);
  append(out, PixelsPerMetre, 4);
  append(out, PixelsPerMetre, 4);
  append(out, 0, 4);  // no palette
  append(out, 0, 4);
  for (int y = canvas.height() - 1; y >= 0; --y) {
    for (int x = 0; x < canvas.width(); ++x) {
      Colour colour = canvas.at(x, y);
      append(out, colour.blue, 1);
      append(out, colour.green, 1);
      append(out, colour.red, 1);
    }
    append(out, 0, static_cast<int>(stride - width * 3));
  }
  writeText(out, file);
}

void writeText(const std::string& text, const std::filesystem::path& file) {
  std::ofstream stream(file, std::ios::binary);
  stream << text;
  stream.close();
  if (!stream) throw std::runtime_error(file.string() + " can't be written");
}

}  // namespace skinart
