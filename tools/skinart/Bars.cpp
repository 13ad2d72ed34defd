#include "Bars.h"

#include "Texture.h"

namespace skinart {
namespace {

// Numbers that keep the textures of the pieces apart.
enum Stream : uint32_t {
  TitleStream = 1,
  MenuStream,
  ToolStream,
  StripStream,
  StatusStream,
  EdgeStream,
  MenuBackStream
};

// Paints `bands` into the rows shown; what is below them repeats the last row.
Canvas PaintBar(const Theme& theme, const Bands& bands, int width, int height, int rows_shown,
                Stream stream) {
  int fixed_rows = 0;
  int stretched = 0;
  for (const Band& band : bands) {
    fixed_rows += band.rows;
    if (band.rows == 0) ++stretched;
  }
  Canvas bar(width, height);
  int y = 0;
  int left = rows_shown - fixed_rows;
  for (const Band& band : bands) {
    int rows = band.rows;
    if (rows == 0) {
      rows = left / stretched--;
      left -= rows;
    }
    bar.Gradient(0, y, width, rows, band.top, band.bottom);
    if (band.rows == 0) {
      ApplyTexture(bar, theme.texture, 0, y, width, rows, Grain::Lying,
                   stream * 31 + static_cast<uint32_t>(y));
    }
    y += rows;
  }
  for (; y < height; ++y) bar.Blit(bar, 0, y, 0, rows_shown - 1, width, 1);
  return bar;
}

void PaintEdgeColumn(Canvas& canvas, const Theme& theme, const std::array<Colour, FrameWidth>& profile,
                     bool mirrored) {
  for (int i = 0; i < FrameWidth; ++i) {
    int x = mirrored ? FrameWidth - 1 - i : i;
    canvas.Rect(x, 0, 1, canvas.Height(), profile[static_cast<size_t>(i)]);
  }
  int first = mirrored ? 1 : 2;  // the lines outside stay clean
  ApplyTexture(canvas, theme.texture, first, 0, 2, canvas.Height(), Grain::Standing, EdgeStream);
}

void Ridges(Canvas& canvas, const FrameStyle& frame, int right, int bottom) {
  for (int offset : {4, 8, 12}) {
    for (int i = 0; i < offset; ++i) {
      canvas.Put(right - offset + i + 1, bottom - i, frame.grip_dark);
      canvas.Put(right - offset + i + 2, bottom - i, frame.grip_light);
    }
  }
}

void Dots(Canvas& canvas, const FrameStyle& frame, int right, int bottom) {
  for (int row = 0; row < 3; ++row) {
    for (int column = 0; column <= row; ++column) {
      int x = right - 2 - 4 * (row - column);
      int y = bottom - 10 + 4 * row;
      canvas.Rect(x + 1, y + 1, 2, 2, frame.grip_light);
      canvas.Rect(x, y, 2, 2, frame.grip_dark);
    }
  }
}

void Corner(Canvas& canvas, const FrameStyle& frame, int right, int bottom) {
  for (int i = 0; i < 9; ++i) canvas.Rect(right - i, bottom - 8 + i, i + 1, 1, frame.grip_dark);
}

}  // namespace

Kit::Kit(const Theme& theme)
    : theme(theme),
      title_bar(PaintBar(theme, theme.title_bar, 800, 26, shown::TitleBar, TitleStream)),
      menu_bar(PaintBar(theme, theme.menu_bar, 338, 25, shown::MenuBar, MenuStream)),
      tool_bar(PaintBar(theme, theme.tool_bar, 800, 40, shown::ToolBar, ToolStream)),
      strip(PaintBar(theme, theme.strip, 338, 25, shown::Strip, StripStream)),
      status_bar(PaintBar(theme, theme.status_bar, 500, 20, shown::StatusBar, StatusStream)),
      menu_back(300, 300, theme.menu.back) {
  ApplyTexture(menu_back, theme.texture, 0, 0, 300, 300, Grain::Lying, MenuBackStream);
}

Canvas TitleBar(const Kit& kit) { return kit.title_bar.Part(0, 0, 800, 26); }
Canvas MenuBar(const Kit& kit) { return kit.menu_bar.Part(0, 0, 338, 25); }
Canvas ToolBar(const Kit& kit) { return kit.tool_bar.Part(0, 0, 800, 40); }
Canvas StatusBar(const Kit& kit) { return kit.status_bar.Part(0, 0, 500, 20); }

Canvas TabStrip(const Kit& kit) {
  Canvas strip = kit.strip.Part(0, 0, 338, 25);
  ScatterStars(strip, kit.theme.texture, 2, 19, StripStream);
  return strip;
}

Canvas LeftEdge(const Kit& kit) {
  Canvas edge(FrameWidth, 300);
  PaintEdgeColumn(edge, kit.theme, kit.theme.frame.left, false);
  return edge;
}

Canvas RightEdge(const Kit& kit) {
  Canvas edge(FrameWidth, 500);
  PaintEdgeColumn(edge, kit.theme, kit.theme.frame.right, true);
  return edge;
}

Canvas BottomEdge(const Kit& kit) {
  Canvas edge(600, FrameWidth);
  for (int i = 0; i < FrameWidth; ++i) {
    edge.Rect(0, FrameWidth - 1 - i, 600, 1, kit.theme.frame.bottom[static_cast<size_t>(i)]);
  }
  ApplyTexture(edge, kit.theme.texture, 0, 1, 600, 2, Grain::Lying, EdgeStream);
  return edge;
}

// The corners are mitred: the title bar's rows meet the edges' columns on the diagonal.

Canvas TopLeftCorner(const Kit& kit) {
  Canvas corner = kit.title_bar.Part(0, 0, 11, 11);
  for (int y = 0; y < 11; ++y) {
    for (int x = 0; x < std::min(FrameWidth, y + 1); ++x) {
      corner.Put(x, y, kit.theme.frame.left[static_cast<size_t>(x)]);
    }
  }
  return corner;
}

Canvas TopRightCorner(const Kit& kit) {
  Canvas corner = kit.title_bar.Part(0, 0, FrameWidth, 11);
  for (int y = 0; y < 11; ++y) {
    for (int i = 0; i < std::min(FrameWidth, y + 1); ++i) {
      corner.Put(FrameWidth - 1 - i, y, kit.theme.frame.right[static_cast<size_t>(i)]);
    }
  }
  return corner;
}

Canvas BottomLeftCorner(const Kit& kit) {
  Canvas corner = BottomEdge(kit).Part(0, 0, FrameWidth, FrameWidth);
  for (int y = 0; y < FrameWidth; ++y) {
    for (int x = 0; x < FrameWidth - y; ++x) {
      corner.Put(x, y, kit.theme.frame.left[static_cast<size_t>(x)]);
    }
  }
  return corner;
}

Canvas BottomRightCorner(const Kit& kit) {
  constexpr int Width = 19;
  constexpr int Height = 20;
  const FrameStyle& frame = kit.theme.frame;
  Canvas canvas = kit.status_bar.Part(0, 0, Width, Height);
  for (int i = FrameWidth - 1; i >= 0; --i) {
    canvas.Rect(0, Height - 1 - i, Width - i, 1, frame.bottom[static_cast<size_t>(i)]);
    canvas.Rect(Width - 1 - i, 0, 1, Height - i, frame.right[static_cast<size_t>(i)]);
  }
  int right = Width - FrameWidth - 1;
  int bottom = Height - FrameWidth - 1;
  switch (frame.grip) {
    case GripStyle::Ridges:
      Ridges(canvas, frame, right, bottom);
      break;
    case GripStyle::Dots:
      Dots(canvas, frame, right, bottom);
      break;
    case GripStyle::Corner:
      Corner(canvas, frame, right, bottom);
      break;
  }
  return canvas;
}

}  // namespace skinart
