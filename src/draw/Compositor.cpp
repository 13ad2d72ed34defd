#include "draw/Compositor.h"

#include <algorithm>
#include <cstring>

namespace {

using Rects = std::vector<PixelRect>;

Rects Within(const Rects& rects, const PixelRect& bounds) {
  Rects within;
  for (const PixelRect& rect : rects)
    if (const PixelRect part = rect.Intersect(bounds); !part.Empty()) within.push_back(part);
  return within;
}

// Cuts a rectangle out of disjoint ones: what is left of each above, below, left and right of it.
void Subtract(Rects& rects, const PixelRect& hole) {
  Rects left;
  for (const PixelRect& rect : rects) {
    const PixelRect cut = rect.Intersect(hole);
    if (cut.Empty()) {
      left.push_back(rect);
      continue;
    }
    const PixelRect parts[] = {{rect.Left, rect.Top, rect.Width, cut.Top - rect.Top},
                               {rect.Left, cut.Bottom(), rect.Width, rect.Bottom() - cut.Bottom()},
                               {rect.Left, cut.Top, cut.Left - rect.Left, cut.Height},
                               {cut.Right(), cut.Top, rect.Right() - cut.Right(), cut.Height}};
    std::copy_if(std::begin(parts), std::end(parts), std::back_inserter(left),
                 [](const PixelRect& part) { return !part.Empty(); });
  }
  rects = std::move(left);
}

// The same area without overlaps, so that no text is drawn over itself.
Rects Disjoint(const Rects& rects) {
  Rects all;
  for (size_t i = 0; i < rects.size(); ++i) {
    Rects rest = {rects[i]};
    for (size_t j = 0; j < i && !rest.empty(); ++j) Subtract(rest, rects[j]);
    all.insert(all.end(), rest.begin(), rest.end());
  }
  return all;
}

// Pixels that repeat to all sides.
struct Tile {
  const uint32_t* Pixels = nullptr;
  int Width = 0, Height = 0;
};

bool Usable(const Picture& picture) {
  return picture && picture->Width > 0 && picture->Height > 0 &&
         picture->Pixels.size() >= static_cast<size_t>(picture->Width) * static_cast<size_t>(picture->Height);
}

Tile ToTile(const Picture& picture) { return {picture->Pixels.data(), picture->Width, picture->Height}; }

int Modulo(int value, int divisor) {
  const int rest = value % divisor;
  return rest < 0 ? rest + divisor : rest;
}

void Copy(uint32_t* to, const uint32_t* from, int pixels) {
  std::memcpy(to, from, static_cast<size_t>(pixels) * sizeof(uint32_t));
}

// `count` pixels of a row that repeats with `period`, from place `phase` on. What already stands there is
// doubled, so that a narrow tile costs few copies.
void RepeatRow(uint32_t* to, int count, const uint32_t* row, int period, int phase) {
  int done = std::min(count, period - phase);
  Copy(to, row + phase, done);
  const int wrapped = std::min(count - done, phase);
  Copy(to + done, row, wrapped);
  done += wrapped;
  while (done < count) {
    const int pixels = std::min(count - done, done / period * period);
    Copy(to + done, to + done - done / period * period, pixels);
    done += pixels;
  }
}

class Compositor {
 public:
  Compositor(TextLayout& text, const Canvas& canvas) : text_(text), canvas_(canvas) {}
  Compositor(const Compositor&) = delete;
  ~Compositor() {
    if (cairo_) cairo_destroy(cairo_);
  }

  void Draw(const DrawItem& item, const Rects& areas) {
    for (const PixelRect& area : areas) {
      if (Usable(item.Tiles))
        Paint(area, ToTile(item.Tiles), item.Bounds);
      else if (item.Fills)
        Paint(area, {&item.BackPixel, 1, 1}, item.Bounds);
      if (!Usable(item.Shown)) continue;
      const PixelRect once = {item.Bounds.Left, item.Bounds.Top, item.Shown->Width, item.Shown->Height};
      Paint(area.Intersect(once), ToTile(item.Shown), item.Bounds);
    }
    if (!item.Texts.empty()) DrawTexts(item, areas);
  }

 private:
  uint32_t* Row(int x, int device_y) const {
    return canvas_.Pixels + static_cast<size_t>(device_y) * static_cast<size_t>(canvas_.Width) +
           static_cast<size_t>(x) * static_cast<size_t>(canvas_.Scale);
  }

  // Repeats a tile over an area, from the top left corner of `bounds`.
  void Paint(const PixelRect& area, const Tile& tile, const PixelRect& bounds) {
    if (area.Empty()) return;
    const int phase = Modulo(area.Left - bounds.Left, tile.Width);
    const int width = area.Width * canvas_.Scale;  // device pixels
    for (int y = area.Top; y < area.Bottom(); ++y) {
      uint32_t* to = Row(area.Left, y * canvas_.Scale);
      const auto line = static_cast<size_t>(Modulo(y - bounds.Top, tile.Height));
      if (tile.Height == 1 && y > area.Top)
        Copy(to, Row(area.Left, (y - 1) * canvas_.Scale), width);
      else
        RepeatScaled(to, area.Width, tile.Pixels + line * static_cast<size_t>(tile.Width), tile.Width, phase);
      for (int copy = 1; copy < canvas_.Scale; ++copy)
        Copy(Row(area.Left, y * canvas_.Scale + copy), to, width);
    }
  }

  void RepeatScaled(uint32_t* to, int count, const uint32_t* row, int period, int phase) {
    if (canvas_.Scale == 1) return RepeatRow(to, count, row, period, phase);
    row_.resize(static_cast<size_t>(count));
    RepeatRow(row_.data(), count, row, period, phase);
    for (const uint32_t pixel : row_) to = std::fill_n(to, canvas_.Scale, pixel);
  }

  void DrawTexts(const DrawItem& item, const Rects& areas) {
    cairo_t* cairo = Cairo();
    cairo_surface_mark_dirty(cairo_get_target(cairo));
    cairo_save(cairo);
    int right = item.Clip.Left;
    for (const PixelRect& area : areas) {
      cairo_rectangle(cairo, area.Left, area.Top, area.Width, area.Height);
      right = std::max(right, area.Right());
    }
    cairo_clip(cairo);
    for (const TextRun& run : item.Texts) text_.Draw(cairo, run, right, canvas_.Scale);
    cairo_restore(cairo);
    cairo_surface_flush(cairo_get_target(cairo));
  }

  // Made for the first text only: much of what is painted has none.
  cairo_t* Cairo() {
    if (cairo_) return cairo_;
    cairo_surface_t* surface = cairo_image_surface_create_for_data(
        reinterpret_cast<unsigned char*>(canvas_.Pixels), CAIRO_FORMAT_RGB24, canvas_.Width, canvas_.Height,
        canvas_.Width * static_cast<int>(sizeof(uint32_t)));
    cairo_ = cairo_create(surface);
    cairo_surface_destroy(surface);
    cairo_scale(cairo_, canvas_.Scale, canvas_.Scale);
    return cairo_;
  }

  TextLayout& text_;
  const Canvas& canvas_;
  cairo_t* cairo_ = nullptr;
  std::vector<uint32_t> row_;  // scratch
};

struct Visible {
  const DrawItem* Item;
  Rects Areas;
};

}  // namespace

void Compose(TextLayout& text, const Canvas& canvas, const DisplayList& list,
             const std::vector<PixelRect>& rects) {
  // From the front to the back, to know what is hidden; then the rest from the back to the front.
  Rects open = Disjoint(Within(rects, {0, 0, canvas.Width / canvas.Scale, canvas.Height / canvas.Scale}));
  std::vector<Visible> visible;
  for (auto item = list.rbegin(); item != list.rend() && !open.empty(); ++item) {
    if (item->Foreign) continue;
    Rects areas = Within(open, item->Clip);
    if (areas.empty()) continue;
    visible.push_back({&*item, std::move(areas)});
    if (item->Fills || Usable(item->Tiles)) Subtract(open, item->Clip);
  }
  Compositor compositor(text, canvas);
  for (auto one = visible.rbegin(); one != visible.rend(); ++one) compositor.Draw(*one->Item, one->Areas);
}
