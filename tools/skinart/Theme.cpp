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

std::string Trimmed(const std::string& text) {
  auto first = text.find_first_not_of(" \t\r");
  if (first == std::string::npos) return "";
  return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

// The settings of one description file, each of which has to be asked for.
class Settings {
 public:
  explicit Settings(const std::filesystem::path& file) : file_(file.string()) {
    std::ifstream stream(file);
    if (!stream) throw std::runtime_error(file_ + " can't be opened");
    for (std::string line; std::getline(stream, line);) {
      line = Trimmed(line);
      if (line.empty() || line.front() == ';') continue;
      auto equals = line.find('=');
      if (equals == std::string::npos) Fail("the line \"" + line + "\" has no equals sign");
      std::string key = Trimmed(line.substr(0, equals));
      if (!values_.emplace(key, Trimmed(line.substr(equals + 1))).second) Fail(key + " is given twice");
    }
  }

  std::string TakeText(const std::string& key) {
    auto found = values_.find(key);
    if (found == values_.end()) Fail(key + " is missing");
    std::string value = found->second;
    values_.erase(found);
    return value;
  }

  std::vector<std::string> TakeWords(const std::string& key) {
    std::istringstream stream(TakeText(key));
    std::vector<std::string> result;
    for (std::string word; stream >> word;) result.push_back(word);
    return result;
  }

  double TakeNumber(const std::string& key) { return ParseNumber(key, TakeText(key)); }
  int TakeWhole(const std::string& key) { return static_cast<int>(std::lround(TakeNumber(key))); }
  Colour TakeColour(const std::string& key) { return ParseColour(key, TakeText(key)); }

  std::vector<Colour> TakeColours(const std::string& key, size_t count) {
    std::vector<Colour> result;
    for (const std::string& word : TakeWords(key)) result.push_back(ParseColour(key, word));
    if (result.size() != count) Fail(key + " needs " + std::to_string(count) + " colours");
    return result;
  }

  template <typename T>
  T TakeWord(const std::string& key, const Words<T>& known) {
    return ParseWord(key, TakeText(key), known);
  }

  Face TakeFace(const std::string& key) {
    auto all = TakeColours(key, 4);
    return {all[0], all[1], all[2], all[3]};
  }

  std::array<Colour, 5> TakeEdge(const std::string& key) {
    auto all = TakeColours(key, 5);
    return {all[0], all[1], all[2], all[3], all[4]};
  }

  // "1:#rrggbb" is one row, "*:#rrggbb-#rrggbb" a gradient over the rows that are left.
  Bands TakeBands(const std::string& key) {
    Bands result;
    for (const std::string& word : TakeWords(key)) {
      auto colon = word.find(':');
      if (colon == std::string::npos) Fail(key + ": \"" + word + "\" has no colon");
      Band band;
      if (word.substr(0, colon) != "*") band.rows = static_cast<int>(ParseNumber(key, word.substr(0, colon)));
      std::string colours = word.substr(colon + 1);
      auto dash = colours.find('-');
      band.top = ParseColour(key, colours.substr(0, dash));
      band.bottom = dash == std::string::npos ? band.top : ParseColour(key, colours.substr(dash + 1));
      result.push_back(band);
    }
    if (result.empty()) Fail(key + " has no rows");
    return result;
  }

  // "arrow:#rrggbb stop:#rrggbb" and so on.
  std::map<IconPart, Colour> TakeParts(const std::string& key) {
    std::map<IconPart, Colour> result;
    for (const std::string& word : TakeWords(key)) {
      auto colon = word.find(':');
      if (colon == std::string::npos) Fail(key + ": \"" + word + "\" has no colon");
      result[ParseWord(key, word.substr(0, colon), PartWords)] = ParseColour(key, word.substr(colon + 1));
    }
    return result;
  }

  void Finish() const {
    if (!values_.empty()) Fail(values_.begin()->first + " is no setting of a theme");
  }

 private:
  [[noreturn]] void Fail(const std::string& what) const { throw std::runtime_error(file_ + ": " + what); }

  double ParseNumber(const std::string& key, const std::string& text) const {
    double value = 0;
    auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || value < 0) {
      Fail(key + ": \"" + text + "\" is no number");
    }
    return value;
  }

  Colour ParseColour(const std::string& key, const std::string& text) const {
    uint32_t value = 0;
    const char* last = text.data() + text.size();
    if (text.size() == 7 && text[0] == '#') {
      auto [end, error] = std::from_chars(text.data() + 1, last, value, 16);
      if (error == std::errc() && end == last) {
        return {static_cast<uint8_t>(value >> 16), static_cast<uint8_t>(value >> 8),
                static_cast<uint8_t>(value)};
      }
    }
    Fail(key + ": \"" + text + "\" is no colour (#rrggbb)");
  }

  template <typename T>
  T ParseWord(const std::string& key, const std::string& text, const Words<T>& known) const {
    for (const auto& [word, value] : known) {
      if (text == word) return value;
    }
    Fail(key + ": \"" + text + "\" is none of the words known");
  }

  std::string file_;
  std::map<std::string, std::string> values_;
};

TextColours ReadText(Settings& in) {
  return {.menu = in.TakeColour("text.menu"),
          .menu_highlight = in.TakeColour("text.menuhighlight"),
          .menu_highlight_text = in.TakeColour("text.menutexthighlight"),
          .tab = in.TakeColour("text.tab"),
          .other_tab = in.TakeColour("text.tabdisabled"),
          .status = in.TakeColour("text.status"),
          .progress = in.TakeColour("text.progressbar"),
          .title = in.TakeColour("text.title")};
}

FrameStyle ReadFrame(Settings& in) {
  return {.left = in.TakeEdge("frame.left"),
          .right = in.TakeEdge("frame.right"),
          .bottom = in.TakeEdge("frame.bottom"),
          .grip = in.TakeWord("frame.grip", GripWords),
          .grip_light = in.TakeColour("frame.grip.light"),
          .grip_dark = in.TakeColour("frame.grip.dark")};
}

TabStyle ReadTab(Settings& in) {
  return {.shape = in.TakeWord("tab.shape", TabWords),
          .selected = in.TakeFace("tab.selected"),
          .other = in.TakeFace("tab.other"),
          .accent = in.TakeColour("tab.accent")};
}

MenuStyle ReadMenu(Settings& in) {
  return {.back = in.TakeColour("menu.back"),
          .outline = in.TakeColour("menu.outline"),
          .light = in.TakeColour("menu.light"),
          .shade = in.TakeColour("menu.shade"),
          .spacer = in.TakeWord("menu.spacer", SpacerWords),
          .line_dark = in.TakeColour("menu.line.dark"),
          .line_light = in.TakeColour("menu.line.light"),
          .folder = in.TakeColour("menu.folder"),
          .link = in.TakeColour("menu.link"),
          .arrow = in.TakeColour("menu.arrow"),
          .arrow_highlight = in.TakeColour("menu.arrow.highlight")};
}

PlateStyle ReadPlate(Settings& in) {
  return {.radius = in.TakeNumber("plate.radius"),
          .hover = in.TakeFace("plate.hover"),
          .down = in.TakeFace("plate.down"),
          .divider = in.TakeColour("plate.divider"),
          .divider_light = in.TakeColour("plate.divider.light")};
}

IconStyle ReadIcon(Settings& in) {
  return {.family = in.TakeWord("icon.family", FamilyWords),
          .finish = in.TakeWord("icon.finish", FinishWords),
          .weight = in.TakeWhole("icon.weight"),
          .ends = in.TakeWord("icon.ends", EndWords),
          .rest = in.TakeColour("icon.rest"),
          .hover = in.TakeColour("icon.hover"),
          .down = in.TakeColour("icon.down"),
          .glint = in.TakeColour("icon.glint"),
          .mute = in.TakeNumber("icon.mute"),
          .colours = in.TakeParts("icon.colours")};
}

WindowButtonStyles ReadWindowButton(Settings& in) {
  return {.style = in.TakeWord("windowbutton.style", WindowButtonWords),
          .rest = in.TakeFace("windowbutton.rest"),
          .down = in.TakeFace("windowbutton.down"),
          .close = in.TakeFace("windowbutton.close"),
          .close_down = in.TakeFace("windowbutton.close.down"),
          .glyph = in.TakeColour("windowbutton.glyph"),
          .glyph_close = in.TakeColour("windowbutton.glyph.close"),
          .glyph_down = in.TakeColour("windowbutton.glyph.down")};
}

AnimationStyle ReadAnimation(Settings& in) {
  return {.kind = in.TakeWord("animation.kind", AnimationWords),
          .interval = in.TakeWhole("animation.interval"),
          .well = in.TakeFace("animation.well"),
          .one = in.TakeColour("animation.one"),
          .two = in.TakeColour("animation.two"),
          .three = in.TakeColour("animation.three")};
}

}  // namespace

Theme ReadTheme(const std::filesystem::path& file) {
  Settings in(file);
  Theme theme{.name = in.TakeText("name"),
              .description = in.TakeText("description"),
              .built_in = in.TakeWord("builtin", YesWords),
              .contrast = in.TakeNumber("contrast"),
              .text = ReadText(in),
              .texture = {in.TakeWord("texture", TextureWords), in.TakeWhole("texture.depth"),
                          static_cast<uint32_t>(in.TakeWhole("texture.seed"))},
              .title_bar = in.TakeBands("bar.title"),
              .menu_bar = in.TakeBands("bar.menu"),
              .tool_bar = in.TakeBands("bar.tool"),
              .strip = in.TakeBands("bar.strip"),
              .status_bar = in.TakeBands("bar.status"),
              .frame = ReadFrame(in),
              .tab = ReadTab(in),
              .menu = ReadMenu(in),
              .plate = ReadPlate(in),
              .icon = ReadIcon(in),
              .window_button = ReadWindowButton(in),
              .animation = ReadAnimation(in)};
  in.Finish();
  return theme;
}

}  // namespace skinart
