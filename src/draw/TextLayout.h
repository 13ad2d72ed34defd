#pragma once

#include <pango/pangocairo.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <tuple>
#include <unordered_map>

#include "platform/scene/DisplayList.h"

struct GObjectUnref {
  void operator()(void* object) const { g_object_unref(object); }
};

struct FreePango {
  void operator()(PangoItem* item) const { pango_item_free(item); }
  void operator()(PangoGlyphString* glyphs) const { pango_glyph_string_free(glyphs); }
};

// Single lines of text in the window font, "Sans" of not quite 11 pixels. Lines that were laid out are kept
// for the next time, up to a limit.
class TextLayout {
 public:
  // Every line has the same height and the same base line, whatever fonts its characters come from: two
  // rows above the capitals, three below the base line.
  static constexpr int LineHeight = 13, BaseLine = 10;  // pixels

  // Width of a line in pixels. Characters behind the first 4,000 count for nothing.
  double Width(std::string_view text);

  // Draws the part of a line that begins left of `right`, in pixels. `scale` is the device's, which `cairo`
  // has as its transformation.
  void Draw(cairo_t* cairo, const TextRun& run, int right, int scale);

 private:
  // Lets a text be looked up without a copy of it.
  struct TextHash : std::hash<std::string_view> {
    using is_transparent = void;
  };
  using Layout = std::unique_ptr<PangoLayout, GObjectUnref>;
  using Context = std::unique_ptr<PangoContext, GObjectUnref>;

  PangoContext* ContextFor(int scale);
  Layout LayOut(std::string_view text, int scale);
  // Kept until the next call; cut to `room` pixels unless that is 0.
  PangoLayout* Line(std::string_view text, int room, int scale);
  double PlainWidth(std::string_view text);
  double Keep(std::string_view text, double width);

  std::map<int, Context> contexts_;  // by scale
  // For measuring plain text: what a letter is shaped with, and room for the result.
  std::unique_ptr<PangoItem, FreePango> plain_;
  std::unique_ptr<PangoGlyphString, FreePango> glyphs_;
  std::unordered_map<std::string, double, TextHash, std::equal_to<>> widths_;
  std::map<std::tuple<std::string, int, int>, Layout> lines_;  // by text, room and scale
};
