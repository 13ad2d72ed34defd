#include "Skin.h"

#include <cstdio>
#include <stdexcept>

#include "Bmp.h"
#include "Window.h"

namespace skinart {
namespace {

// The least contrast of the progress bar with the status bar, as for any shape that tells something.
constexpr double ShapeContrast = 3;

// A colour as the program reads it: red is the low byte.
std::string SkinNumber(Colour colour) {
  char text[16];
  std::snprintf(text, sizeof text, "&h%02X%02X%02X", colour.blue, colour.green, colour.red);
  return text;
}

// The least contrast of `colour` with any pixel of a rectangle.
double LeastContrast(const Canvas& canvas, int x, int y, int width, int height, Colour colour) {
  double least = 21;
  for (int row = y; row < y + height; ++row) {
    for (int column = x; column < x + width; ++column) {
      least = std::min(least, Contrast(colour, canvas.At(column, row)));
    }
  }
  return least;
}

}  // namespace

std::string SkinIni(const Theme& theme) {
  const TextColours& text = theme.text;
  const std::pair<const char*, std::string> settings[] = {
      {"name", theme.name},
      {"description", theme.description},
      {"animation", std::to_string(theme.animation.interval)},
      {"menuhighlight", SkinNumber(text.menu_highlight)},
      {"menutext", SkinNumber(text.menu)},
      {"menutexthighlight", SkinNumber(text.menu_highlight_text)},
      {"tabtext", SkinNumber(text.tab)},
      {"tabtextdisabled", SkinNumber(text.other_tab)},
      {"statustext", SkinNumber(text.status)},
      {"progressbar", SkinNumber(text.progress)},
      {"title", SkinNumber(text.title)},
  };
  std::string ini;
  for (const auto& [key, value] : settings) {
    ini += std::string("[") + key + "]\r\n" + value + "\r\n\r\n";
  }
  return ini;
}

std::vector<std::string> FaintText(const Theme& theme, const Art& art) {
  struct Place {
    const char* what = nullptr;
    const char* file = nullptr;
    int x = 0, y = 0, width = 0, height = 0;  // where the text goes on the bitmap
    Colour colour;
    double least = 0;
  };
  const TextColours& text = theme.text;
  const Place places[] = {
      {"menu text", "menubar.bmp", 0, 4, 338, 16, text.menu, theme.contrast},
      {"menu text", "mnubackground.bmp", 0, 0, 300, 300, text.menu, theme.contrast},
      {"the caption of the tab on show", "tabselected.bmp", 8, 2, 134, 15, text.tab, theme.contrast},
      {"the caption of a tab in the back", "tabnotselected.bmp", 8, 6, 134, 12, text.other_tab,
       theme.contrast},
      {"status text", "statusbar.bmp", 0, 1, 500, 14, text.status, theme.contrast},
      {"the title", "titlebar.bmp", 0, 4, 800, 15, text.title, theme.contrast},
      {"the progress bar", "statusbar.bmp", 0, 2, 500, 13, text.progress, ShapeContrast},
  };
  std::vector<std::string> faults;
  auto judge = [&](const std::string& what, const std::string& behind, double found, double least) {
    if (found >= least) return;
    char numbers[64];
    std::snprintf(numbers, sizeof numbers, " has a contrast of %.2f, and needs %.1f", found, least);
    faults.push_back(theme.name + ": " + what + " on " + behind + numbers);
  };
  for (const Place& place : places) {
    judge(place.what, place.file,
          LeastContrast(art.at(place.file), place.x, place.y, place.width, place.height, place.colour),
          place.least);
  }
  judge("highlighted menu text", "the highlight", Contrast(text.menu_highlight_text, text.menu_highlight),
        theme.contrast);
  judge("highlighted menu text", "black, the highlight of favourites",
        Contrast(text.menu_highlight_text, Black), theme.contrast);
  return faults;
}

void WriteSkin(const Theme& theme, const std::filesystem::path& folder) {
  const Kit kit(theme);
  const Art art = PaintAll(kit);
  std::string faults;
  for (const std::string& fault : FaintText(theme, art)) faults += (faults.empty() ? "" : "\n") + fault;
  if (!faults.empty()) throw std::runtime_error(faults);

  std::filesystem::create_directories(folder);
  for (const auto& [file, canvas] : art) WriteBmp(canvas, folder / file);
  WriteBmp(Preview(theme, art), folder / "preview.bmp");
  if (!theme.built_in) WriteText(SkinIni(theme), folder / "skin.ini");
}

}  // namespace skinart
