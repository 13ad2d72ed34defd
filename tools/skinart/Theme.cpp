#include "Theme.h"

#include <charconv>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace skinart {
namespace {

template <typename T>
using Words = std::vector<std::pair<const char*, T>>;

const Words<TextureKind> TextureWords = {{"none", TextureKind::None},
                                         {"brushed", TextureKind::Brushed},
                                         {"grain", TextureKind::Grain},
                                         {"stars", TextureKind::Stars}};
const Words<GripStyle> GripWords = {
    {"ridges", GripStyle::Ridges}, {"dots", GripStyle::Dots}, {"corner", GripStyle::Corner}};
const Words<TabShape> TabWords = {{"round", TabShape::Round},
                                  {"chamfer", TabShape::Chamfer},
                                  {"pill", TabShape::Pill},
                                  {"sheet", TabShape::Sheet}};
const Words<SpacerStyle> SpacerWords = {
    {"etched", SpacerStyle::Etched}, {"dotted", SpacerStyle::Dotted}, {"hairline", SpacerStyle::Hairline}};
const Words<IconFamily> FamilyWords = {{"solid", IconFamily::Solid}, {"line", IconFamily::Line}};
const Words<LineEnds> EndWords = {{"round", LineEnds::Round}, {"square", LineEnds::Square}};
const Words<IconFinish> FinishWords = {
    {"relief", IconFinish::Relief}, {"engraved", IconFinish::Engraved}, {"flat", IconFinish::Flat}};
const Words<WindowButtonStyle> WindowButtonWords = {{"plate", WindowButtonStyle::Plate},
                                                    {"disc", WindowButtonStyle::Disc},
                                                    {"bare", WindowButtonStyle::Bare}};
const Words<AnimationKind> AnimationWords = {{"waves", AnimationKind::Waves},
                                             {"lamps", AnimationKind::Lamps},
                                             {"moon", AnimationKind::Moon},
                                             {"plane", AnimationKind::Plane}};
const Words<bool> YesWords = {{"yes", true}, {"no", false}};
const Words<IconPart> PartWords = {
    {"arrow", IconPart::Arrow}, {"refresh", IconPart::Refresh}, {"stop", IconPart::Stop},
    {"page", IconPart::Page},   {"pagetab", IconPart::PageTab}, {"plus", IconPart::Plus},
    {"minus", IconPart::Minus}, {"clock", IconPart::Clock},     {"hands", IconPart::Hands},
    {"lens", IconPart::Lens},   {"rim", IconPart::Rim},         {"handle", IconPart::Handle}};

std::string trimmed(const std::string& text) {
  auto first = text.find_first_not_of(" \t\r");
  if (first == std::string::npos) return "";
  return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

/// The settings of one description file, each of which has to be asked for.
class Settings {
 public:
  explicit Settings(const std::filesystem::path& file) : file_(file.string()) {
    std::ifstream stream(file);
    if (!stream) throw std::runtime_error(file_ + " can't be opened");
    for (std::string line; std::getline(stream, line);) {
      line = trimmed(line);
      if (line.empty() || line.front() == ';') continue;
      auto equals = line.find('=');
      if (equals == std::string::npos) fail("the line \"" + line + "\" has no equals sign");
      std::string key = trimmed(line.substr(0, equals));
      if (!values_.emplace(key, trimmed(line.substr(equals + 1))).second) fail(key + " is given twice");
    }
  }

  std::string text(const std::string& key) {
    auto found = values_.find(key);
    if (found == values_.end()) fail(key + " is missing");
    std::string value = found->second;
    values_.erase(found);
    return value;
  }

  std::vector<std::string> words(const std::string& key) {
    std::istringstream stream(text(key));
    std::vector<std::string> result;
    for (std::string word; stream >> word;) result.push_back(word);
    return result;
  }

  double number(const std::string& key) { return parseNumber(key, text(key)); }
  int whole(const std::string& key) { return static_cast<int>(std::lround(number(key))); }
  Colour colour(const std::string& key) { return parseColour(key, text(key)); }

  std::vector<Colour> colours(const std::string& key, size_t count) {
    std::vector<Colour> result;
    for (const std::string& word : words(key)) result.push_back(parseColour(key, word));
    if (result.size() != count) fail(key + " needs " + std::to_string(count) + " colours");
    return result;
  }

  template <typename T>
  T word(const std::string& key, const Words<T>& known) {
    return parseWord(key, text(key), known);
  }

  Face face(const std::string& key) {
    auto all = colours(key, 4);
    return {all[0], all[1], all[2], all[3]};
  }

  std::array<Colour, 5> edge(const std::string& key) {
    auto all = colours(key, 5);
    return {all[0], all[1], all[2], all[3], all[4]};
  }

  /// "1:#rrggbb" is one row, "*:#rrggbb-#rrggbb" a gradient over the rows that are left.
  Bands bands(const std::string& key) {
    Bands result;
    for (const std::string& word : words(key)) {
      auto colon = word.find(':');
      if (colon == std::string::npos) fail(key + ": \"" + word + "\" has no colon");
      Band band;
      if (word.substr(0, colon) != "*") band.rows = static_cast<int>(parseNumber(key, word.substr(0, colon)));
      std::string colours = word.substr(colon + 1);
      auto dash = colours.find('-');
      band.top = parseColour(key, colours.substr(0, dash));
      band.bottom = dash == std::string::npos ? band.top : parseColour(key, colours.substr(dash + 1));
      result.push_back(band);
    }
    if (result.empty()) fail(key + " has no rows");
    return result;
  }

  /// "arrow:#rrggbb stop:#rrggbb" and so on.
  std::map<IconPart, Colour> parts(const std::string& key) {
    std::map<IconPart, Colour> result;
    for (const std::string& word : words(key)) {
      auto colon = word.find(':');
      if (colon == std::string::npos) fail(key + ": \"" + word + "\" has no colon");
      result[parseWord(key, word.substr(0, colon), PartWords)] = parseColour(key, word.substr(colon + 1));
    }
    return result;
  }

  void finish() const {
    if (!values_.empty()) fail(values_.begin()->first + " is no setting of a theme");
  }

 private:
  [[noreturn]] void fail(const std::string& what) const { throw std::runtime_error(file_ + ": " + what); }

  double parseNumber(const std::string& key, const std::string& text) const {
    double value = 0;
    auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || value < 0) {
      fail(key + ": \"" + text + "\" is no number");
    }
    return value;
  }

  Colour parseColour(const std::string& key, const std::string& text) const {
    uint32_t value = 0;
    const char* last = text.data() + text.size();
    if (text.size() == 7 && text[0] == '#') {
      auto [end, error] = std::from_chars(text.data() + 1, last, value, 16);
      if (error == std::errc() && end == last) {
        return {static_cast<uint8_t>(value >> 16), static_cast<uint8_t>(value >> 8),
                static_cast<uint8_t>(value)};
      }
    }
    fail(key + ": \"" + text + "\" is no colour (#rrggbb)");
  }

  template <typename T>
  T parseWord(const std::string& key, const std::string& text, const Words<T>& known) const {
    for (const auto& [word, value] : known) {
      if (text == word) return value;
    }
    fail(key + ": \"" + text + "\" is none of the words known");
  }

  std::string file_;
  std::map<std::string, std::string> values_;
};

TextColours readText(Settings& in) {
  return {.menu = in.colour("text.menu"),
          .menuHighlight = in.colour("text.menuhighlight"),
          .menuHighlightText = in.colour("text.menutexthighlight"),
          .tab = in.colour("text.tab"),
          .otherTab = in.colour("text.tabdisabled"),
          .status = in.colour("text.status"),
          .progress = in.colour("text.progressbar"),
          .title = in.colour("text.title")};
}

FrameStyle readFrame(Settings& in) {
  return {.left = in.edge("frame.left"),
          .right = in.edge("frame.right"),
          .bottom = in.edge("frame.bottom"),
          .grip = in.word("frame.grip", GripWords),
          .gripLight = in.colour("frame.grip.light"),
          .gripDark = in.colour("frame.grip.dark")};
}

TabStyle readTab(Settings& in) {
  return {.shape = in.word("tab.shape", TabWords),
          .selected = in.face("tab.selected"),
          .other = in.face("tab.other"),
          .accent = in.colour("tab.accent")};
}

MenuStyle readMenu(Settings& in) {
  return {.back = in.colour("menu.back"),
          .outline = in.colour("menu.outline"),
          .light = in.colour("menu.light"),
          .shade = in.colour("menu.shade"),
          .spacer = in.word("menu.spacer", SpacerWords),
          .lineDark = in.colour("menu.line.dark"),
          .lineLight = in.colour("menu.line.light"),
          .folder = in.colour("menu.folder"),
          .link = in.colour("menu.link"),
          .arrow = in.colour("menu.arrow"),
          .arrowHighlight = in.colour("menu.arrow.highlight")};
}

PlateStyle readPlate(Settings& in) {
  return {.radius = in.number("plate.radius"),
          .hover = in.face("plate.hover"),
          .down = in.face("plate.down"),
          .divider = in.colour("plate.divider"),
          .dividerLight = in.colour("plate.divider.light")};
}

IconStyle readIcon(Settings& in) {
  return {.family = in.word("icon.family", FamilyWords),
          .finish = in.word("icon.finish", FinishWords),
          .weight = in.whole("icon.weight"),
          .ends = in.word("icon.ends", EndWords),
          .rest = in.colour("icon.rest"),
          .hover = in.colour("icon.hover"),
          .down = in.colour("icon.down"),
          .glint = in.colour("icon.glint"),
          .mute = in.number("icon.mute"),
          .colours = in.parts("icon.colours")};
}

WindowButtonStyles readWindowButton(Settings& in) {
  return {.style = in.word("windowbutton.style", WindowButtonWords),
          .rest = in.face("windowbutton.rest"),
          .down = in.face("windowbutton.down"),
          .close = in.face("windowbutton.close"),
          .closeDown = in.face("windowbutton.close.down"),
          .glyph = in.colour("windowbutton.glyph"),
          .glyphClose = in.colour("windowbutton.glyph.close"),
          .glyphDown = in.colour("windowbutton.glyph.down")};
}

AnimationStyle readAnimation(Settings& in) {
  return {.kind = in.word("animation.kind", AnimationWords),
          .interval = in.whole("animation.interval"),
          .well = in.face("animation.well"),
          .one = in.colour("animation.one"),
          .two = in.colour("animation.two"),
          .three = in.colour("animation.three")};
}

}  // namespace

Theme readTheme(const std::filesystem::path& file) {
  Settings in(file);
  Theme theme{.name = in.text("name"),
              .description = in.text("description"),
              .builtIn = in.word("builtin", YesWords),
              .contrast = in.number("contrast"),
              .text = readText(in),
              .texture = {in.word("texture", TextureWords), in.whole("texture.depth"),
                          static_cast<uint32_t>(in.whole("texture.seed"))},
              .titleBar = in.bands("bar.title"),
              .menuBar = in.bands("bar.menu"),
              .toolBar = in.bands("bar.tool"),
              .strip = in.bands("bar.strip"),
              .statusBar = in.bands("bar.status"),
              .frame = readFrame(in),
              .tab = readTab(in),
              .menu = readMenu(in),
              .plate = readPlate(in),
              .icon = readIcon(in),
              .windowButton = readWindowButton(in),
              .animation = readAnimation(in)};
  in.finish();
  return theme;
}

}  // namespace skinart
