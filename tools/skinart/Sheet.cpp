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

// Long bitmaps show their beginning only.
Canvas Sample(const Canvas& canvas) {
  return canvas.Part(0, 0, std::min(canvas.Width(), 170),
                     std::min(canvas.Height(), canvas.Width() < 10 ? 14 : 44));
}

int FactorFor(const Canvas& canvas) { return canvas.Width() <= 5 ? 6 : canvas.Width() <= 60 ? 3 : 2; }

// Lays pictures out in lines. With no sheet it only finds out how much room they take.
class Flow {
 public:
  Flow(Canvas* sheet, int top) : sheet_(sheet), y_(top) {}

  void Place(const Canvas& picture, int factor, const std::string& name) {
    int width = std::max(picture.Width() * factor, 8 * static_cast<int>(name.size()));
    int height = picture.Height() * factor;
    if (x_ + width > Width - Margin) NewLine();
    if (sheet_ != nullptr) {
      DrawText(*sheet_, x_, y_, width + Gap, name, Ink);
      sheet_->Enlarge(picture, x_, y_ + NameHeight, factor);
    }
    x_ += width + Gap;
    line_height_ = std::max(line_height_, height + NameHeight);
  }

  void NewLine() {
    y_ += line_height_ + Gap;
    x_ = Margin;
    line_height_ = 0;
  }

  int Y() const { return y_; }

 private:
  Canvas* sheet_;
  int x_ = Margin;
  int y_;
  int line_height_ = 0;
};

Canvas BigWindow(const Theme& theme, const Art& art) {
  Canvas window = ComposeWindow(theme, art,
                                {.width = WindowWidth,
                                 .height = WindowHeight,
                                 .title = "Tide tables for the harbour",
                                 .tabs = {"Harbour office", "Tide tables", "Lights and buoys"},
                                 .selected = 1,
                                 .hovered = 4,
                                 .pressed = 6,
                                 .frame = 2});
  window.Blit(ComposeMenu(theme, art,
                          {"New Tab", "New Window", "Open...", "Save as...", "-", "Remove Tab", "-",
                           "Print...", "-", "Work Offline", "Close"},
                          2),
              13, 39);
  window.Blit(ComposeFavourites(theme, art), 170, 130);
  return window;
}

// Returns the row below what it has drawn.
int DrawTheme(Canvas* sheet, const Theme& theme, const Art& art, int top) {
  if (sheet != nullptr) {
    DrawText(*sheet, Margin, top + 12, Width, theme.name + ": " + theme.description, White, Align::Left, 18,
             true);
  }
  Flow flow(sheet, top + Heading);
  flow.Place(BigWindow(theme, art), 1, "a window");
  flow.Place(
      ComposeWindow(theme, art, {.width = 375, .height = 200, .title = "Marlowick", .tabs = {"One", "Two"}}),
      2, "the smallest window, enlarged");
  flow.NewLine();
  for (const Entry& entry : Catalogue()) {
    Canvas part = Sample(art.at(entry.file));
    flow.Place(part, FactorFor(part), entry.file);
  }
  flow.NewLine();
  return flow.Y() + Gap;
}

}  // namespace

void WriteSheet(const std::vector<Theme>& themes, const std::filesystem::path& file) {
  std::vector<Art> arts;
  int height = Margin;
  for (const Theme& theme : themes) {
    const Kit kit(theme);
    arts.push_back(PaintAll(kit));
    height = DrawTheme(nullptr, theme, arts.back(), height);
  }
  Canvas sheet(Width, height, Ground);
  int y = Margin;
  for (size_t i = 0; i < themes.size(); ++i) y = DrawTheme(&sheet, themes[i], arts[i], y);
  sheet.WritePng(file);
}

}  // namespace skinart
