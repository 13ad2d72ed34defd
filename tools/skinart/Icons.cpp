#include "Icons.h"

#include <functional>
#include <numbers>
#include <vector>

namespace skinart {
namespace {

constexpr int Field = 33;
constexpr double Middle = 16.5;
constexpr double Turn = 2 * std::numbers::pi;

using Path = std::function<void(cairo_t*)>;

// One shape of an icon. Shapes of one layer share an outline; the next layer lies on top.
struct Shape {
  IconPart part;
  Path path;
  double stroke = 0;  //< width of the line, 0 for a filled shape
  int layer = 0;
  bool outlined = true;
};
using Shapes = std::vector<Shape>;

Path Polygon(std::vector<std::pair<double, double>> points) {
  return [points = std::move(points)](cairo_t* cr) {
    cairo_new_sub_path(cr);
    for (const auto& [x, y] : points) cairo_line_to(cr, x, y);
    cairo_close_path(cr);
  };
}

Path Polyline(std::vector<std::pair<double, double>> points) {
  return [points = std::move(points)](cairo_t* cr) {
    cairo_new_sub_path(cr);
    for (const auto& [x, y] : points) cairo_line_to(cr, x, y);
  };
}

Path Disc(double x, double y, double radius) {
  return [=](cairo_t* cr) {
    cairo_new_sub_path(cr);
    cairo_arc(cr, x, y, radius, 0, Turn);
  };
}

// Clockwise from `first` to `last`, in degrees from the right.
Path Arc(double x, double y, double radius, double first, double last) {
  return [=](cairo_t* cr) {
    cairo_new_sub_path(cr);
    cairo_arc(cr, x, y, radius, first / 360 * Turn, last / 360 * Turn);
  };
}

Path Box(double x, double y, double width, double height) {
  return [=](cairo_t* cr) { cairo_rectangle(cr, x, y, width, height); };
}

Path RoundedTop(double x, double y, double width, double height, double radius) {
  return [=](cairo_t* cr) { RoundedRect(cr, x, y, width, height, radius, 0); };
}

// The same path seen in a mirror standing at `middle`.
Path Mirrored(const Path& path, double middle) {
  return [=](cairo_t* cr) {
    cairo_save(cr);
    cairo_translate(cr, 2 * middle, 0);
    cairo_scale(cr, -1, 1);
    path(cr);
    cairo_restore(cr);
  };
}

// Solid icons: full shapes on whole pixels.

// A page under a tab of its own; the rest of its head is the tab behind.
Shapes SolidPage() {
  return {{.part = IconPart::PageTab, .path = RoundedTop(6, 7, 20, 19, 2)},
          {.part = IconPart::Page, .path = Box(8, 14, 16, 10), .layer = 1, .outlined = false},
          {.part = IconPart::Page, .path = Box(8, 9, 7, 5), .layer = 1, .outlined = false}};
}

Shapes SolidIcon(Icon icon) {
  const Path arrow = Polygon({{6, Middle}, {16, 6.5}, {16, 13}, {26, 13}, {26, 20}, {16, 20}, {16, 26.5}});
  switch (icon) {
    case Icon::Back:
      return {{.part = IconPart::Arrow, .path = arrow}};
    case Icon::Forward:
      return {{.part = IconPart::Arrow, .path = Mirrored(arrow, Middle)}};
    case Icon::Refresh:
      return {{.part = IconPart::Refresh, .path = Arc(16, 17, 7.5, 20, 318), .stroke = 4},
              {.part = IconPart::Refresh, .path = Polygon({{26, 6}, {26, 15}, {17, 15}})}};
    case Icon::Stop:
      return {{.part = IconPart::Stop,
               .path = Polygon({{12, 8},
                                {Middle, 12.5},
                                {21, 8},
                                {25, 12},
                                {20.5, Middle},
                                {25, 21},
                                {21, 25},
                                {Middle, 20.5},
                                {12, 25},
                                {8, 21},
                                {12.5, Middle},
                                {8, 12}})}};
    case Icon::NewTab: {
      Shapes shapes = SolidPage();
      shapes.push_back({.part = IconPart::Plus,
                        .path = Polygon({{21, 17},
                                         {24, 17},
                                         {24, 20},
                                         {27, 20},
                                         {27, 23},
                                         {24, 23},
                                         {24, 26},
                                         {21, 26},
                                         {21, 23},
                                         {18, 23},
                                         {18, 20},
                                         {21, 20}}),
                        .layer = 2});
      return shapes;
    }
    case Icon::RemoveTab: {
      Shapes shapes = SolidPage();
      shapes.push_back({.part = IconPart::Minus, .path = Box(18, 20, 9, 3), .layer = 2});
      return shapes;
    }
    case Icon::History:
      return {{.part = IconPart::Rim, .path = Disc(17, 17, 10)},
              {.part = IconPart::Clock, .path = Disc(17, 17, 7.5), .layer = 1, .outlined = false},
              {.part = IconPart::Hands,
               .path = Polygon({{16, 11}, {18, 11}, {18, 16}, {22, 16}, {22, 18}, {16, 18}}),
               .layer = 2,
               .outlined = false}};
    case Icon::Search:
      return {{.part = IconPart::Handle, .path = Polyline({{18.5, 18.5}, {25.5, 25.5}}), .stroke = 4},
              {.part = IconPart::Rim, .path = Disc(14, 14, 8), .layer = 1},
              {.part = IconPart::Lens, .path = Disc(14, 14, 5.5), .layer = 2, .outlined = false}};
  }
  return {};
}

// Line icons: strokes of one weight, on whole coordinates, where lines of even weight are sharp.

Shapes LinePage(double weight) {
  double head = 11 + weight;
  return {{.part = IconPart::Page,
           .path = Polyline({{14, 26}, {7, 26}, {7, 8}, {26, 8}, {26, 16}}),
           .stroke = weight},
          {.part = IconPart::Page, .path = Polyline({{15, 8}, {15, head}, {26, head}}), .stroke = weight}};
}

Shapes LineIcon(Icon icon, double weight) {
  static constexpr double C = 17;
  const Path arrow = [](cairo_t* cr) {
    Polyline({{C + 9, C}, {C - 9, C}})(cr);
    Polyline({{C - 2, C - 8}, {C - 10, C}, {C - 2, C + 8}})(cr);
  };
  switch (icon) {
    case Icon::Back:
      return {{.part = IconPart::Arrow, .path = arrow, .stroke = weight}};
    case Icon::Forward:
      return {{.part = IconPart::Arrow, .path = Mirrored(arrow, C), .stroke = weight}};
    case Icon::Refresh:
      return {{.part = IconPart::Refresh, .path = Arc(C, C, 8, 25, 320), .stroke = weight},
              {.part = IconPart::Refresh,
               .path = Polyline({{C + 8, C - 10}, {C + 8, C - 4}, {C + 2, C - 4}}),
               .stroke = weight}};
    case Icon::Stop:
      return {{.part = IconPart::Stop, .path = Polyline({{C - 7, C - 7}, {C + 7, C + 7}}), .stroke = weight},
              {.part = IconPart::Stop, .path = Polyline({{C + 7, C - 7}, {C - 7, C + 7}}), .stroke = weight}};
    case Icon::NewTab: {
      Shapes shapes = LinePage(weight);
      shapes.push_back(
          {.part = IconPart::Plus, .path = Polyline({{18, 22}, {28, 22}}), .stroke = weight, .layer = 1});
      shapes.push_back(
          {.part = IconPart::Plus, .path = Polyline({{23, 17}, {23, 27}}), .stroke = weight, .layer = 1});
      return shapes;
    }
    case Icon::RemoveTab: {
      Shapes shapes = LinePage(weight);
      shapes.push_back(
          {.part = IconPart::Minus, .path = Polyline({{18, 22}, {28, 22}}), .stroke = weight, .layer = 1});
      return shapes;
    }
    case Icon::History:
      return {{.part = IconPart::Rim, .path = Disc(C, C, 9), .stroke = weight},
              {.part = IconPart::Hands,
               .path = Polyline({{C, C - 6}, {C, C}, {C + 5, C}}),
               .stroke = weight,
               .layer = 1}};
    case Icon::Search:
      return {{.part = IconPart::Rim, .path = Disc(C - 2, C - 2, 7), .stroke = weight},
              {.part = IconPart::Handle,
               .path = Polyline({{C + 3.5, C + 3.5}, {C + 9, C + 9}}),
               .stroke = weight}};
  }
  return {};
}

bool IsHollow(IconPart part) {
  return part == IconPart::Page || part == IconPart::Clock || part == IconPart::Lens;
}

// Chooses the colours of one icon in one state.
struct Inks {
  const IconStyle& style;
  State state = {};
  Colour behind;

  Colour Plain() const {
    if (state == State::Rest) return style.rest;
    return state == State::Hover ? style.hover : style.down;
  }

  // Parts without a colour of their own are ink; hollow ones of a solid icon show what is behind.
  Colour Of(IconPart part) const {
    auto found = style.colours.find(part);
    if (found == style.colours.end()) {
      return style.family == IconFamily::Solid && IsHollow(part) ? behind : Plain();
    }
    if (IsHollow(part)) return found->second;
    if (state == State::Rest) return Mix(found->second, style.rest, style.mute);
    bool shaded = state == State::Down && style.finish == IconFinish::Relief;
    return shaded ? Darker(found->second, 0.18) : found->second;
  }
};

void Trace(cairo_t* cr, const Shape& shape, double grow) {
  cairo_new_path(cr);
  shape.path(cr);
  if (shape.stroke > 0) {
    cairo_set_line_width(cr, shape.stroke + grow);
    cairo_stroke(cr);
  } else if (grow > 0) {
    cairo_set_line_width(cr, grow);
    cairo_stroke_preserve(cr);
    cairo_fill(cr);
  } else {
    cairo_fill(cr);
  }
}

void ReliefFill(cairo_t* cr, const Shape& shape, Colour colour) {
  cairo_pattern_t* pattern = cairo_pattern_create_linear(0, 6, 0, 27);
  Colour top = Lighter(colour, 0.35);
  Colour bottom = Darker(colour, 0.12);
  cairo_pattern_add_color_stop_rgb(pattern, 0, top.red / 255.0, top.green / 255.0, top.blue / 255.0);
  cairo_pattern_add_color_stop_rgb(pattern, 1, bottom.red / 255.0, bottom.green / 255.0, bottom.blue / 255.0);
  cairo_set_source(cr, pattern);
  cairo_pattern_destroy(pattern);
  Trace(cr, shape, 0);
}

void DrawLayer(cairo_t* cr, const Shapes& shapes, int layer, const Inks& inks) {
  bool relief = inks.style.finish == IconFinish::Relief;
  for (const Shape& shape : shapes) {
    if (!relief || shape.layer != layer || !shape.outlined) continue;
    SetSource(cr, Darker(inks.Of(shape.part), 0.45));
    Trace(cr, shape, 2);
  }
  for (const Shape& shape : shapes) {
    if (shape.layer != layer) continue;
    if (relief) {
      ReliefFill(cr, shape, inks.Of(shape.part));
    } else {
      SetSource(cr, inks.Of(shape.part));
      Trace(cr, shape, 0);
    }
  }
}

bool IsBadge(IconPart part) { return part == IconPart::Plus || part == IconPart::Minus; }

// Where the colours don't part the sign from its page, the page stops short of it.
void ClipBadge(cairo_t* cr) {
  cairo_new_path(cr);
  cairo_rectangle(cr, -1, -1, Field + 2, Field + 2);
  cairo_rectangle(cr, 16, 16, Field - 16, Field - 16);
  cairo_set_fill_rule(cr, CAIRO_FILL_RULE_EVEN_ODD);
  cairo_clip(cr);
  cairo_set_fill_rule(cr, CAIRO_FILL_RULE_WINDING);
}

void DrawShapes(cairo_t* cr, const Shapes& shapes, const Inks& inks) {
  int last_layer = 0;
  for (const Shape& shape : shapes) last_layer = std::max(last_layer, shape.layer);
  if (inks.style.finish == IconFinish::Engraved) {
    cairo_save(cr);
    cairo_translate(cr, 0, 1);
    SetSource(cr, inks.style.glint);
    for (const Shape& shape : shapes) {
      if (inks.style.family == IconFamily::Line || !IsHollow(shape.part)) Trace(cr, shape, 0);
    }
    cairo_restore(cr);
  }
  for (int layer = 0; layer <= last_layer; ++layer) DrawLayer(cr, shapes, layer, inks);
}

}  // namespace

void DrawIcon(Canvas& canvas, const IconStyle& style, Icon icon, State state, int x, int y) {
  const Inks inks{style, state, canvas.At(x + Field / 2, y + Field / 2)};
  const Shapes shapes = style.family == IconFamily::Solid ? SolidIcon(icon) : LineIcon(icon, style.weight);
  Shapes ground;
  Shapes badges;
  for (const Shape& shape : shapes) (IsBadge(shape.part) ? badges : ground).push_back(shape);

  cairo_t* cr = canvas.Cr();
  cairo_save(cr);
  cairo_translate(cr, x, y);
  bool line = style.family == IconFamily::Line;
  bool round = line && style.ends == LineEnds::Round;
  if (line && style.weight % 2 != 0) cairo_translate(cr, -0.5, -0.5);
  cairo_set_line_cap(cr, round ? CAIRO_LINE_CAP_ROUND : CAIRO_LINE_CAP_BUTT);
  cairo_set_line_join(cr, round ? CAIRO_LINE_JOIN_ROUND : CAIRO_LINE_JOIN_MITER);
  cairo_save(cr);
  if (!badges.empty() && style.finish != IconFinish::Relief) ClipBadge(cr);
  DrawShapes(cr, ground, inks);
  cairo_restore(cr);
  DrawShapes(cr, badges, inks);
  cairo_restore(cr);
}

}  // namespace skinart
