#include "draw/TextLayout.h"

#include <algorithm>
#include <cmath>

#include "platform/Text.h"

namespace {

// The largest at which the widest label of the menu bar, 57 pixels, holds its text.
constexpr double FontPixels = 10.75;
constexpr size_t MostCharacters = 4000;
constexpr size_t KeptWidths = 4096, KeptLines = 1024;
constexpr size_t LongestKept = 1024;  // bytes of a text whose width is kept

// What can be laid out as one line: each control character and each separator of lines becomes a blank.
std::string OneLine(std::string_view text) {
  std::string line = Text::Valid(text);
  for (size_t at = 0; at < line.size(); ++at) {
    const std::string_view rest = std::string_view(line).substr(at);
    const auto byte = static_cast<uint8_t>(line[at]);
    if (byte < 0x20 || byte == 0x7F)
      line[at] = ' ';
    else if (rest.starts_with("\xE2\x80\xA8") || rest.starts_with("\xE2\x80\xA9"))
      line.replace(at, 3, " ");
    else if (byte == 0xC2 && static_cast<uint8_t>(rest[1]) < 0xA0)
      line.replace(at, 2, " ");
  }
  return line;
}

// Letters of the Latin alphabet with what goes along with them, in one run of one font whatever comes before.
bool IsPlain(std::string_view text) {
  bool letter = false;
  for (const char c : text) {
    if (c < 0x20 || c > 0x7E) return false;
    letter = letter || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
  }
  return letter && text.size() <= LongestKept;
}

}  // namespace

double TextLayout::Width(std::string_view text) {
  const auto kept = widths_.find(text);
  if (kept != widths_.end()) return kept->second;
  if (IsPlain(text)) return Keep(text, PlainWidth(text));
  const bool keeps = text.size() <= LongestKept;
  const Layout passing = keeps ? nullptr : LayOut(Text::Left(text, MostCharacters), 1);
  int width = 0;
  // What is measured is drawn soon after, and at a scale of 1 from the same layout.
  pango_layout_get_pixel_size(keeps ? Line(text, 0, 1) : passing.get(), &width, nullptr);
  return keeps ? Keep(text, width) : width;
}

double TextLayout::Keep(std::string_view text, double width) {
  if (widths_.size() >= KeptWidths) widths_.clear();
  return widths_[std::string(text)] = width;
}

// As a layout would have it, at less than half the cost: the menu of a large folder measures thousands.
double TextLayout::PlainWidth(std::string_view text) {
  if (!plain_) {
    PangoAttrList* none = pango_attr_list_new();
    GList* items = pango_itemize(ContextFor(1), "a", 0, 1, none, nullptr);
    plain_.reset(static_cast<PangoItem*>(items->data));
    g_list_free(items);
    pango_attr_list_unref(none);
    glyphs_.reset(pango_glyph_string_new());
  }
  const int bytes = static_cast<int>(text.size());
  pango_shape_with_flags(text.data(), bytes, text.data(), bytes, &plain_->analysis, glyphs_.get(),
                         PANGO_SHAPE_ROUND_POSITIONS);
  return PANGO_PIXELS(pango_glyph_string_get_width(glyphs_.get()));
}

void TextLayout::Draw(cairo_t* cairo, const TextRun& run, int right, int scale) {
  const double visible = std::min(right - run.X, static_cast<double>(MostCharacters));
  if (visible <= 0) return;
  // No character that can be seen is narrower than a pixel: the rest of a long text isn't laid out at all.
  const size_t characters = static_cast<size_t>(visible) + 2;
  const std::string text = Text::Left(run.Text, characters);
  // The last pixel of a line is the space behind its last letter and needs no room.
  const bool fits = run.Room <= 0 || Width(text) <= run.Room + 1;
  PangoLayout* line = Line(text, fits ? 0 : static_cast<int>(run.Room), scale);
  const double base = PANGO_PIXELS(pango_layout_get_baseline(line) * scale) / static_cast<double>(scale);
  cairo_set_source_rgb(cairo, (run.Pixel >> 16 & 255) / 255.0, (run.Pixel >> 8 & 255) / 255.0,
                       (run.Pixel & 255) / 255.0);
  cairo_move_to(cairo, std::floor(run.X * scale) / scale,
                std::floor(run.Y * scale) / scale + BaseLine - base);
  pango_cairo_show_layout(cairo, line);
}

// Fonts are hinted for the device's pixels, so each scale has a context of its own.
PangoContext* TextLayout::ContextFor(int scale) {
  Context& context = contexts_[scale];
  if (context) return context.get();
  context.reset(pango_font_map_create_context(pango_cairo_font_map_get_default()));
  PangoFontDescription* font = pango_font_description_from_string("Sans");
  pango_font_description_set_absolute_size(font, FontPixels * PANGO_SCALE);
  pango_context_set_font_description(context.get(), font);
  pango_font_description_free(font);
  PangoMatrix matrix = PANGO_MATRIX_INIT;
  pango_matrix_scale(&matrix, scale, scale);
  pango_context_set_matrix(context.get(), &matrix);
  cairo_font_options_t* options = cairo_font_options_create();
  cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
  cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_SLIGHT);
  cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_ON);
  pango_cairo_context_set_font_options(context.get(), options);
  cairo_font_options_destroy(options);
  return context.get();
}

TextLayout::Layout TextLayout::LayOut(std::string_view text, int scale) {
  Layout layout(pango_layout_new(ContextFor(scale)));
  pango_layout_set_single_paragraph_mode(layout.get(), TRUE);
  const std::string line = OneLine(text);
  pango_layout_set_text(layout.get(), line.data(), static_cast<int>(line.size()));
  return layout;
}

PangoLayout* TextLayout::Line(std::string_view text, int room, int scale) {
  if (lines_.size() >= KeptLines) lines_.clear();
  Layout& line = lines_[{std::string(text), room, scale}];
  if (line) return line.get();
  line = LayOut(text, scale);
  // A width of its own would move a line that reads from right to left, so only a line too long gets one.
  if (room > 0) {
    pango_layout_set_width(line.get(), room * PANGO_SCALE);
    pango_layout_set_ellipsize(line.get(), PANGO_ELLIPSIZE_END);
  }
  return line.get();
}
