#include <gtest/gtest.h>

#include <algorithm>

#include "platform/scene/Drawing.h"

namespace {

constexpr uint32_t Untouched = 0xFF123456, Paper = 0xFFFFFFFF, Ink = 0xFF000000;

// A canvas of logical pixels that is looked at by logical pixels.
class Sheet {
 public:
  Sheet(int width, int height, int scale)
      : scale_(scale),
        width_(width * scale),
        pixels_(static_cast<size_t>(width_ * height * scale), Untouched) {}

  void Compose(Drawing& drawing, const DisplayList& list, const std::vector<PixelRect>& rects) {
    drawing.Compose({pixels_.data(), width_, static_cast<int>(pixels_.size()) / width_, scale_}, list, rects);
  }

  // The pixel, which has to be the same in all its device pixels.
  uint32_t At(int x, int y) const {
    const uint32_t pixel = Device(x * scale_, y * scale_);
    for (int i = 0; i < scale_ * scale_; ++i)
      EXPECT_EQ(Device(x * scale_ + i % scale_, y * scale_ + i / scale_), pixel) << x << ", " << y;
    return pixel;
  }
  uint32_t Device(int x, int y) const { return pixels_[static_cast<size_t>(y * width_ + x)]; }
  const std::vector<uint32_t>& Pixels() const { return pixels_; }

 private:
  int scale_, width_;
  std::vector<uint32_t> pixels_;
};

// Every pixel of it is another one.
Picture Numbered(int width, int height) {
  auto bitmap = std::make_shared<Bitmap>();
  bitmap->Width = width;
  bitmap->Height = height;
  for (int i = 0; i < width * height; ++i) bitmap->Pixels.push_back(0xFF800000u + static_cast<uint32_t>(i));
  return bitmap;
}

DrawItem Item(const PixelRect& place) {
  DrawItem item;
  item.Bounds = item.Clip = place;
  return item;
}

DrawItem Filled(const PixelRect& place, uint32_t pixel) {
  DrawItem item = Item(place);
  item.Fills = true;
  item.BackPixel = pixel;
  return item;
}

DrawItem Written(const PixelRect& place, const std::string& text, double room = 0) {
  DrawItem item = Filled(place, Paper);
  item.Texts = {{static_cast<double>(place.Left), static_cast<double>(place.Top), text, Ink, room}};
  return item;
}

class ComposeAt : public testing::TestWithParam<int> {
 protected:
  const std::unique_ptr<Drawing> drawing = MakeDrawing();
};
INSTANTIATE_TEST_SUITE_P(Scale, ComposeAt, testing::Values(1, 2, 3));

TEST_P(ComposeAt, TilesRepeatFromTheCornerOfTheControl) {
  constexpr int width = 23, height = 17;
  const PixelRect bounds = {4, 3, 15, 11};
  for (const auto& [tile_width, tile_height] :
       {std::pair{1, 1}, {2, 3}, {5, 4}, {15, 11}, {15, 1}, {1, 11}, {40, 30}, {14, 10}, {16, 12}}) {
    const Picture tile = Numbered(tile_width, tile_height);
    DrawItem item = Filled(bounds, Paper);
    item.Tiles = tile;
    item.Clip = {6, 3, 13, 9};  // the left and the foot are hidden
    Sheet sheet(width, height, GetParam());
    // In parts that overlap and reach outside.
    sheet.Compose(*drawing, {item}, {{-5, -5, 16, 40}, {9, 5, 100, 100}, {8, 2, 5, 4}, {12, 0, 100, 5}});
    for (int y = 0; y < height; ++y)
      for (int x = 0; x < width; ++x) {
        const bool inside = item.Clip.Contains({x, y, 1, 1});
        const int from = (y - bounds.Top) % tile_height * tile_width + (x - bounds.Left) % tile_width;
        ASSERT_EQ(sheet.At(x, y), inside ? tile->Pixels[static_cast<size_t>(from)] : Untouched)
            << tile_width << " x " << tile_height << " at " << x << ", " << y;
      }
  }
}

TEST_P(ComposeAt, PicturesStandOnceOverTheirFillAndUnderWhatIsInFront) {
  DrawItem back = Filled({0, 0, 10, 10}, 0xFF111111);
  DrawItem picture = Filled({2, 2, 6, 6}, 0xFF222222);
  picture.Shown = Numbered(4, 20);
  DrawItem front = Filled({3, 4, 2, 2}, 0xFF333333);
  DrawItem bare = Item({0, 9, 10, 1});  // shows what is behind it
  DrawItem widget = Filled({0, 0, 2, 2}, 0xFF444444);
  widget.Foreign = true;
  Sheet sheet(10, 10, GetParam());
  sheet.Compose(*drawing, {back, picture, front, bare, widget}, {{0, 0, 10, 10}});
  EXPECT_EQ(sheet.At(0, 0), 0xFF111111) << "nothing is drawn for a widget";
  EXPECT_EQ(sheet.At(9, 9), 0xFF111111);
  EXPECT_EQ(sheet.At(2, 2), 0xFF800000);
  EXPECT_EQ(sheet.At(5, 7), 0xFF800000 + 5 * 4 + 3) << "cut at the control's foot";
  EXPECT_EQ(sheet.At(5, 8), 0xFF111111);
  EXPECT_EQ(sheet.At(6, 2), 0xFF222222) << "a smaller picture leaves the fill";
  EXPECT_EQ(sheet.At(3, 4), 0xFF333333);
  EXPECT_EQ(sheet.At(4, 6), 0xFF800000 + 4 * 4 + 2);
}

TEST_P(ComposeAt, PartsLookAsTheWholeDoes) {
  const DisplayList list = {
      Filled({0, 0, 80, 40}, Paper), Written({5, 5, 60, 13}, "Wide gjpq texts that go on"),
      Filled({30, 8, 9, 6}, 0xFF336699), Written({10, 20, 65, 15}, "An ellipsis belongs here", 65)};
  Sheet whole(80, 40, GetParam()), parts(80, 40, GetParam());
  whole.Compose(*drawing, list, {{0, 0, 80, 40}});
  parts.Compose(*drawing, list, {{0, 0, 80, 40}});
  parts.Compose(*drawing, list, {{0, 0, 37, 12}, {20, 7, 30, 21}, {33, 0, 47, 40}, {0, 10, 60, 30}});
  EXPECT_EQ(whole.Pixels(), parts.Pixels());
}

TEST_P(ComposeAt, TextStaysInItsClip) {
  const std::string texts[] = {"Åj|Q",
                               std::string(10000, 'W'),
                               std::string(10000, '\n'),
                               "\xFF\xFE\xC3(",
                               "a\tb\r\nc\x01\x7F\xC2\x85",
                               "\u05E9\u05DC\u05D5\u05DD \u0645\u0631\u062D\u0628\u0627",
                               "Z\u0351\u0323\u0355\u0300\u0301\u0302\u0303\u0304",
                               "\U0001F600\U0001F468\u200D\U0001F469",
                               "\u2028\u2029\u202E\u2066\uFEFF",
                               std::string("nul\0nul", 7)};
  for (const std::string& text : texts)
    for (const double room : {0.0, 20.0}) {
      Sheet sheet(40, 30, GetParam());
      sheet.Compose(*drawing, {Written({8, 8, 20, 13}, text, room)}, {{0, 0, 40, 30}});
      for (int y = 0; y < 30 * GetParam(); ++y)
        for (int x = 0; x < 40 * GetParam(); ++x) {
          if (PixelRect{8, 8, 20, 13}.Contains({x / GetParam(), y / GetParam(), 1, 1})) continue;
          ASSERT_EQ(sheet.Device(x, y), Untouched) << text;
        }
    }
}

TEST(Compose, TextIsWrittenInFullResolutionOnOneBaseLine) {
  const auto drawing = MakeDrawing();
  const auto lowest_ink = [&](const std::string& text, int scale) {
    Sheet sheet(60, 13, scale);
    sheet.Compose(*drawing, {Written({0, 0, 60, 13}, text)}, {{0, 0, 60, 13}});
    for (int y = 13 * scale; y-- > 0;)
      for (int x = 0; x < 7 * scale; ++x)
        if (sheet.Device(x, y) != Paper) return y;
    return -1;
  };
  const int base = lowest_ink("H", 1);
  EXPECT_EQ(lowest_ink("H \u05E9\u0645\U0001F600\u65E5", 1), base) << "other fonts on the line move nothing";
  EXPECT_EQ(lowest_ink("H", 2), 2 * base + 1);
  EXPECT_EQ(drawing->LineHeight(), 13);
  EXPECT_LT(lowest_ink("gjpqy", 1), 13);

  Sheet sheet(60, 13, 2);
  sheet.Compose(*drawing, {Written({0, 0, 60, 13}, "SOS&")}, {{0, 0, 60, 13}});
  bool finer = false;
  for (int y = 0; y < 26; y += 2)
    for (int x = 0; x < 120; x += 2) finer = finer || sheet.Device(x, y) != sheet.Device(x + 1, y + 1);
  EXPECT_TRUE(finer);
}

TEST(Compose, WidthsAreOfWhatIsDrawn) {
  const auto drawing = MakeDrawing();
  EXPECT_EQ(drawing->TextWidth(""), 0);
  EXPECT_GT(drawing->TextWidth("0"), 3);
  EXPECT_EQ(drawing->TextWidth("00000"), 5 * drawing->TextWidth("0")) << "in whole pixels";
  EXPECT_EQ(drawing->TextWidth("a\nb"), drawing->TextWidth("a b"));
  // A line's end becomes a blank: however a text is measured, it is as wide.
  for (const std::string text : {"AVATAR To. Wave", "office fluff fiji", "12 Yes, 3/4 (No)", "~\"T\"o'@#W;a"})
    EXPECT_EQ(drawing->TextWidth(text + " "), drawing->TextWidth(text + "\n")) << text;
  EXPECT_GT(drawing->TextWidth(std::string(10000, 'i')), 5000);
  for (int i = 0; i < 10000; ++i) drawing->TextWidth(std::to_string(i));
  EXPECT_EQ(drawing->TextWidth("12"), 2 * drawing->TextWidth("0"));
  // A line whose letters fit its room isn't cut; with a pixel less it is.
  const auto ink = [&](double room) {
    Sheet sheet(80, 13, 1);
    sheet.Compose(*drawing, {Written({0, 0, 80, 13}, "Eleven", room)}, {{0, 0, 80, 13}});
    return sheet.Pixels();
  };
  const double width = drawing->TextWidth("Eleven");
  EXPECT_EQ(ink(width), ink(0));
  EXPECT_EQ(ink(width - 1), ink(0)) << "there is a blank column behind the n";
  EXPECT_NE(ink(width - 2), ink(0));
}

TEST(Damage, IsWhereListsDiffer) {
  int controls[4];
  DisplayList shown;
  for (int i = 0; i < 4; ++i) {
    shown.push_back(Filled({i * 10, 0, 10, 10}, Paper));
    shown.back().Control = &controls[i];
  }
  EXPECT_TRUE(Damage(shown, shown).empty());

  const auto area = [](const std::vector<PixelRect>& rects) {
    PixelRect all;
    for (const PixelRect& rect : rects) all = all.Unite(rect);
    return all;
  };
  DisplayList wanted = shown;
  wanted[1].Texts = {{10, 0, "new", Ink, 0}};
  EXPECT_EQ(area(Damage(shown, wanted)), (PixelRect{10, 0, 10, 10}));
  wanted = shown;
  wanted[3].Bounds = wanted[3].Clip = {30, 5, 10, 10};
  EXPECT_EQ(area(Damage(shown, wanted)), (PixelRect{30, 0, 10, 15})) << "where it was and where it is";
  wanted = shown;
  wanted.erase(wanted.begin() + 2);
  EXPECT_EQ(area(Damage(shown, wanted)), (PixelRect{20, 0, 10, 10}));
  EXPECT_EQ(area(Damage(wanted, shown)), (PixelRect{20, 0, 10, 10}));
  wanted = shown;
  std::swap(wanted[1], wanted[2]);
  EXPECT_EQ(area(Damage(shown, wanted)), (PixelRect{10, 0, 20, 10})) << "what changed its order";
}

}  // namespace
