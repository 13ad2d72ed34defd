#include "Texture.h"

#include <random>
#include <vector>

namespace skinart {
namespace {

constexpr int BrushLength = 36;   // pixels that one stroke of the brush smears over
constexpr int StarSpacing = 230;  // pixels of area for each star

// Uniform in -1..1 from the generator's raw bits, so that it is the same on every library.
double Uniform(std::mt19937& random) { return random() / 2147483648.0 - 1.0; }

// One stroke of the brush: noise smeared along the line, which closes on itself.
std::vector<double> Stroke(std::mt19937& random, int length) {
  std::vector<double> noise(static_cast<size_t>(length));
  for (double& value : noise) value = Uniform(random);
  for (int pass = 0; pass < 2; ++pass) {
    std::vector<double> smeared(noise.size());
    double sum = 0;
    for (int i = 0; i < BrushLength; ++i) sum += noise[static_cast<size_t>(i % length)];
    for (int i = 0; i < length; ++i) {
      smeared[static_cast<size_t>(i)] = sum / BrushLength;
      sum += noise[static_cast<size_t>((i + BrushLength) % length)] - noise[static_cast<size_t>(i)];
    }
    noise = smeared;
  }
  double whole = Uniform(random);
  for (double& value : noise) value = value * 4 + whole * 0.6;
  return noise;
}

void Brush(Canvas& canvas, const Texture& texture, int x, int y, int width, int height, Grain grain,
           std::mt19937& random) {
  bool lying = grain == Grain::Lying;
  int lines = lying ? height : width;
  int length = lying ? width : height;
  for (int line = 0; line < lines; ++line) {
    std::vector<double> values = Stroke(random, length);
    for (int i = 0; i < length; ++i) {
      double value = std::clamp(values[static_cast<size_t>(i)], -1.0, 1.0);
      int column = x + (lying ? i : line);
      int row = y + (lying ? line : i);
      canvas.Put(column, row,
                 Shifted(canvas.At(column, row), static_cast<int>(std::lround(value * texture.depth))));
    }
  }
}

void Speckle(Canvas& canvas, const Texture& texture, int x, int y, int width, int height,
             std::mt19937& random) {
  for (int row = y; row < y + height; ++row) {
    for (int column = x; column < x + width; ++column) {
      double value = Uniform(random);
      canvas.Put(column, row,
                 Shifted(canvas.At(column, row),
                         static_cast<int>(std::lround(value * value * value * texture.depth))));
    }
  }
}

}  // namespace

void ApplyTexture(Canvas& canvas, const Texture& texture, int x, int y, int width, int height, Grain grain,
                  uint32_t stream) {
  std::mt19937 random(texture.seed * 7919 + stream);
  if (texture.kind == TextureKind::Brushed) Brush(canvas, texture, x, y, width, height, grain, random);
  if (texture.kind == TextureKind::Grain) Speckle(canvas, texture, x, y, width, height, random);
}

void ScatterStars(Canvas& canvas, const Texture& texture, int y, int height, uint32_t stream) {
  if (texture.kind != TextureKind::Stars) return;
  std::mt19937 random(texture.seed * 7919 + stream);
  for (int i = 0; i < canvas.Width() * height / StarSpacing; ++i) {
    int column = static_cast<int>(random() % static_cast<uint32_t>(canvas.Width()));
    int row = y + static_cast<int>(random() % static_cast<uint32_t>(height));
    int brightness = static_cast<int>(random() % static_cast<uint32_t>(texture.depth)) + texture.depth / 3;
    canvas.Put(column, row, Shifted(canvas.At(column, row), brightness));
  }
}

}  // namespace skinart
