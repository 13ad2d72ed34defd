// Tiling one surface of 1920 x 1080 pixels against a plain fill of the same pixels.

#include "Bench.h"
#include "platform/scene/Drawing.h"

namespace {

constexpr int Width = 1920, Height = 1080;
constexpr double Bound = 1.5;

Picture MakeTile(int width, int height) {
  auto tile = std::make_shared<Bitmap>();
  tile->Width = width;
  tile->Height = height;
  for (int i = 0; i < width * height; ++i)
    tile->Pixels.push_back(0xFF000000u | static_cast<uint32_t>(i * 37));
  return tile;
}

}  // namespace

int main() {
  Report report;
  const auto drawing = MakeDrawing();
  std::vector<uint32_t> plain(Width * Height), tiled(Width * Height);
  for (const auto& [width, height] :
       {std::pair{5, 300}, {800, 26}, {338, 25}, {300, 300}, {1, 1}, {2, 2}, {4000, 2000}}) {
    DrawItem item;
    item.Bounds = item.Clip = {0, 0, Width, Height};
    item.Fills = true;
    item.Tiles = MakeTile(width, height);
    const DisplayList list = {item};
    for (const int scale : {1, 2}) {
      const Canvas canvas{tiled.data(), Width, Height, scale};
      uint32_t colour = 0xFF000000;
      const auto times =
          Medians(51, {[&] { std::fill(plain.begin(), plain.end(), ++colour); },
                       [&] {
                         drawing->Compose(canvas, list, {{0, 0, Width / scale, Height / scale}});
                       }});
      report.Ratio("tiling " + std::to_string(width) + "x" + std::to_string(height) + " at scale " +
                       std::to_string(scale) + " against a fill",
                   times[1] / times[0], Bound);
    }
  }
  return report.Status();
}
