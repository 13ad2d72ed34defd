#pragma once

#include <array>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "Colour.h"

namespace skinart {

// Everything that tells one theme from another, read from one description file.
// Sizes are in pixels; "outside in" means from the window's border towards its middle.

// A stack of rows, from the top: bands of fixed height, and stretched ones that share what is left.
struct Band {
  int rows = 0;  // 0: stretched
  Colour top;
  Colour bottom;
};
using Bands = std::vector<Band>;

// What a raised or sunken piece is filled with.
struct Face {
  Colour outline;
  Colour light;  // the first row within the outline
  Colour top;
  Colour bottom;
};

enum class TextureKind { None, Brushed, Grain, Stars };
struct Texture {
  TextureKind kind = TextureKind::None;
  int depth = 0;  // largest change of a channel, in levels
  uint32_t seed = 0;
};

struct TextColours {
  Colour menu, menu_highlight, menu_highlight_text, tab, other_tab, status, progress, title;
};

enum class GripStyle { Ridges, Dots, Corner };
struct FrameStyle {
  std::array<Colour, 5> left, right, bottom;  // outside in
  GripStyle grip = GripStyle::Ridges;
  Colour grip_light, grip_dark;
};

enum class TabShape { Round, Chamfer, Pill, Sheet };
struct TabStyle {
  TabShape shape = TabShape::Round;
  Face selected, other;
  Colour accent;  // line along the top of the tab on show
};

enum class SpacerStyle { Etched, Dotted, Hairline };
struct MenuStyle {
  Colour back, outline, light, shade;
  SpacerStyle spacer = SpacerStyle::Etched;
  Colour line_dark, line_light;
  Colour folder, link, arrow, arrow_highlight;
};

// The toolbar buttons' plates and the scrollers.
struct PlateStyle {
  double radius = 0;
  Face hover, down;
  Colour divider, divider_light;  // the line left of a scroller
};

enum class IconFamily { Solid, Line };
enum class LineEnds { Round, Square };
enum class IconFinish { Relief, Engraved, Flat };
enum class IconPart { Arrow, Refresh, Stop, Page, PageTab, Plus, Minus, Clock, Hands, Lens, Rim, Handle };
struct IconStyle {
  IconFamily family = IconFamily::Solid;
  IconFinish finish = IconFinish::Flat;
  int weight = 2;  // thickness of a line icon's strokes
  LineEnds ends = LineEnds::Round;
  Colour rest, hover, down;
  Colour glint;                        // the light edge of an engraved icon
  double mute = 0;                     // share of `rest` mixed into the parts' colours at rest
  std::map<IconPart, Colour> colours;  // parts with a colour of their own
};

enum class WindowButtonStyle { Plate, Disc, Bare };
struct WindowButtonStyles {
  WindowButtonStyle style = WindowButtonStyle::Plate;
  Face rest, down, close, close_down;
  Colour glyph, glyph_close, glyph_down;
};

enum class AnimationKind { Waves, Lamps, Moon, Plane };
struct AnimationStyle {
  AnimationKind kind = AnimationKind::Waves;
  int interval = 0;  // ms between two frames
  Face well;         // the sunken panel that it plays in
  Colour one, two, three;
};

struct Theme {
  std::string name;
  std::string description;
  bool built_in = false;  // no skin.ini: its colours are the program's start values
  double contrast = 4.5;  // least contrast of any text with what is behind it
  TextColours text;
  Texture texture;
  Bands title_bar, menu_bar, tool_bar, strip, status_bar;
  FrameStyle frame;
  TabStyle tab;
  MenuStyle menu;
  PlateStyle plate;
  IconStyle icon;
  WindowButtonStyles window_button;
  AnimationStyle animation;
};

// Reads a description. Throws std::runtime_error naming the file and the key when a key is missing,
// unknown, given twice or has a value that can't be used.
Theme ReadTheme(const std::filesystem::path& file);

}  // namespace skinart
