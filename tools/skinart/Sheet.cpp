#include "Sheet.h"

#include "Window.h"

namespace skinart {
namespace {

constexpr int Width = 1600;
constexpr int Margin = 20;
constexpr int Gap = 14;
constexpr int Heading = 50;
constexpr int NameHeight = 18;
constexpr Colour Ground{58, 62, 68};
constexpr Colour Ink{225, 228, 232};

constexpr int WindowWidth = 760;
constexpr int WindowHeight = 400;

/// Long bitmaps show their beginning only.
Canvas sample(const Canvas& canvas) {
  return canvas.part(0, 0, std::min(canvas.width(), 170),
                     std::min(canvas.height(), canvas.width() < 10 ? 14 : 44));
}

int factorFor(const Canvas& canvas) { return canvas.width() <= 5 ? 6 : canvas.width() <= 60 ? 3 : 2; }

/// Lays pictures out in lines. With no sheet it only finds out how much room they take.
class Flow {
 public:
  Flow(Canvas* sheet, int top) : sheet_(sheet), y_(top) {}

  void place(const Canvas& picture, int factor, const std::string& name) {
    int width = std::max(picture.width() * factor, 8 * static_cast<int>(name.size()));
    int height = picture.height() * factor;
    if (x_ + width > Width - Margin) newLine();
    if (sheet_ != nullptr) {
      drawText(*sheet_, x_, y_, width + Gap, name, Ink);
      sheet_->enlarge(picture, x_, y_ + NameHeight, factor);
    }
    x_ += width + Gap;
    lineHeight_ = std::max(lineHeight_, height + NameHeight);
  }

  void newLine() {
    y_ += lineHeight_ + Gap;
    x_ = Margin;
    lineHeight_ = 0;
  }

  int y() const { return y_; }

 private:
  Canvas* sheet_;
  int x_ = Margin;
  int y_;
  int lineHeight_ = 0;
};

Canvas bigWindow(const Theme& theme, const Art& art) {
  Canvas window = composeWindow(theme, art,
                                {.width = WindowWidth,
                                 .height = WindowHeight,
                                 .title = "Tide tables for the harbour",
                                 .tabs = {"Harbour office", "Tide tables", "Lights and buoys"},
                                 .selected = 1,
                                 .hovered = 4,
                                 .pressed = 6,
                                 .frame = 2});
  window.blit(composeMenu(theme, art,
                          {"New Tab", "New Window", "Open...", "Save as...", "-", "Remove Tab", "-",
                           "Print...", "-", "Work Offline", "Close"},
                          2),
              13, 39);
  window.blit(composeFavourites(theme, art), 170, 130);
  return window;
}

/// Returns the row below what it has drawn.
int drawTheme(Canvas* sheet, const Theme& theme, const Art& art, int top) {
  if (sheet != nullptr) {
    drawText(*sheet, Margin, top + 12, Width, theme.name + ": " + theme.description, White, Align::Left, 18,
             true);
  }
  Flow flow(sheet, top + Heading);
  flow.place(bigWindow(theme, art), 1, "a window");
  flow.place(
      composeWindow(theme, art, {.width = 375, .height = 200, .title = "Marlowick", .tabs = {"One", "Two"}}),
      2, "the smallest window, enlarged");
  flow.newLine();
  for (const Entry& entry : catalogue()) {
    Canvas part = sample(art.at(entry.file));
    flow.place(part, factorFor(part), entry.file);
  }
  flow.newLine();
  return flow.y() + Gap;
}

}  // namespace

void writeSheet(const std::vector<Theme>& themes, const std::filesystem::path& file) {
  std::vector<Art> arts;
  int height = Margin;
  for (const Theme& theme : themes) {
    const Kit kit(theme);
    arts.push_back(paintAll(kit));
    height = drawTheme(nullptr, theme, arts.back(), height);
  }
  Canvas sheet(Width, height, Ground);
  int y = Margin;
  for (size_t i = 0; i < themes.size(); ++i) y = drawTheme(&sheet, themes[i], arts[i], y);
  sheet.writePng(file);
}

}  // namespace skinart
