#include "fakes/BmpFile.h"

namespace {

std::string Number(uint32_t value, int bytes) {
  std::string text;
  for (; bytes > 0; --bytes, value >>= 8) text += static_cast<char>(value);
  return text;
}

}  // namespace

std::string BmpHeader::Text() const {
  return "BM" + Number(0, 4) + Number(0, 4) + Number(Offset, 4) + Number(HeaderBytes, 4) +
         Number(static_cast<uint32_t>(Width), 4) + Number(static_cast<uint32_t>(Height), 4) + Number(1, 2) +
         Number(Bits, 2) + Number(Compression, 4) + Number(0, 12) + Number(Colours, 4) + Number(0, 4);
}

std::string BmpFile(int width, int height, const std::function<uint32_t(int x, int y)>& pixel) {
  std::string file = BmpHeader{width, height}.Text();
  for (int y = height - 1; y >= 0; --y) {
    for (int x = 0; x < width; ++x) file += Number(pixel(x, y), 3);
    file.append(static_cast<size_t>(-3 * width & 3), '\0');
  }
  return file;
}
