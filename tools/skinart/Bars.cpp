#include "Bars.h"

#include "Texture.h"

namespace skinart {
namespace {

/// Numbers that keep the textures of the pieces apart.
enum Stream : uint32_t {
  TitleStream = 1,
  MenuStream,
  ToolStream,
  StripStream,
  StatusStream,
  EdgeStream,
  MenuBackStream
};

/// Paints `bands` into the rows shown; what is below them repeats the last row.
Canvas paintBar(const Theme& theme, const Bands& bands, int width, int height, int rowsShown, Stream stream) {
  int fixedRows = 0;
  int stretched = 0;
  for (const Band& band : bands) {
    fixedRows += band.rows;
    if (band.rows == 0) ++stretched;
  }
  Canvas bar(width, height);
  int y = 0;
  int left = rowsShown - fixedRows;
  for (const Band& band : bands) {
    int rows = band.rows;
    if (rows == 0) {
      rows = left / stretched--;
      left -= rows;
    }
    bar.gradient(0, y, width, rows, band.top, band.bottom);
    if (band.rows == 0) {
      applyTexture(bar, theme.texture, 0, y, width, rows, Grain::Lying,
                   stream * 31 + static_cast<uint32_t>(y));
    }
    y += rows;
  }
  for (; y < height; ++y) bar.blit(bar, 0, y, 0, rowsShown - 1, width, 1);
  return bar;
}

void paintEdgeColumn(Canvas& canvas, const Theme& theme, const std::array<Colour, FrameWidth>& profile,
                     bool mirrored) {
  for (int i = 0; i < FrameWidth; ++i) {
    int x = mirrored ? FrameWidth - 1 - i : i;
    canvas.rect(x, 0, 1, canvas.height(), profile[static_cast<size_t>(i)]);
  }
  int first = mirrored ? 1 : 2;  // the lines outside stay clean
  applyTexture(canvas, theme.texture, first, 0, 2, canvas.height(), Grain::Standing, EdgeStream);
}

void ridges(Canvas& canvas, const FrameStyle& frame, int right, int bottom) {
  for (int offset : {4, 8, 12}) {
    for (int i = 0; i < offset; ++i) {
      canvas.put(right - offset + i + 1, bottom - i, frame.gripDark);
      canvas.put(right - offset + i + 2, bottom - i, frame.gripLight);
    }
  }
}

void dots(Canvas& canvas, const FrameStyle& frame, int right, int bottom) {
  for (int row = 0; row < 3; ++row) {
    for (int column = 0; column <= row; ++column) {
      int x = right - 2 - 4 * (row - column);
      int y = bottom - 10 + 4 * row;
      canvas.rect(x + 1, y + 1, 2, 2, frame.gripLight);
      canvas.rect(x, y, 2, 2, frame.gripDark);
    }
  }
}

void corner(Canvas& canvas, const FrameStyle& frame, int right, int bottom) {
  for (int i = 0; i < 9; ++i) canvas.rect(right - i, bottom - 8 + i, i + 1, 1, frame.gripDark);
}

}  // namespace

Kit::Kit(const Theme& theme_)
    : theme(theme_),
      titleBar(paintBar(theme, theme.titleBar, 800, 26, shown::TitleBar, TitleStream)),
      menuBar(paintBar(theme, theme.menuBar, 338, 25, shown::MenuBar, MenuStream)),
      toolBar(paintBar(theme, theme.toolBar, 800, 40, shown::ToolBar, ToolStream)),
      strip(paintBar(theme, theme.strip, 338, 25, shown::Strip, StripStream)),
      statusBar(paintBar(theme, theme.statusBar, 500, 20, shown::StatusBar, StatusStream)),
      menuBack(300, 300, theme.menu.back) {
  applyTexture(menuBack, theme.texture, 0, 0, 300, 300, Grain::Lying, MenuBackStream);
}

Canvas titleBar(const Kit& kit) { return kit.titleBar.part(0, 0, 800, 26); }
Canvas menuBar(const Kit& kit) { return kit.menuBar.part(0, 0, 338, 25); }
Canvas toolBar(const Kit& kit) { return kit.toolBar.part(0, 0, 800, 40); }
Canvas statusBar(const Kit& kit) { return kit.statusBar.part(0, 0, 500, 20); }

Canvas tabStrip(const Kit& kit) {
  Canvas strip = kit.strip.part(0, 0, 338, 25);
  scatterStars(strip, kit.theme.texture, 2, 19, StripStream);
  return strip;
}

Canvas leftEdge(const Kit& kit) {
  Canvas edge(FrameWidth, 300);
  paintEdgeColumn(edge, kit.theme, kit.theme.frame.left, false);
  return edge;
}

Canvas rightEdge(const Kit& kit) {
  Canvas edge(FrameWidth, 500);
  paintEdgeColumn(edge, kit.theme, kit.theme.frame.right, true);
  return edge;
}

Canvas bottomEdge(const Kit& kit) {
  Canvas edge(600, FrameWidth);
  for (int i = 0; i < FrameWidth; ++i) {
    edge.rect(0, FrameWidth - 1 - i, 600, 1, kit.theme.frame.bottom[static_cast<size_t>(i)]);
  }
  applyTexture(edge, kit.theme.texture, 0, 1, 600, 2, Grain::Lying, EdgeStream);
  return edge;
}

// The corners are mitred: the title bar's rows meet the edges' columns on the diagonal.

Canvas topLeftCorner(const Kit& kit) {
  Canvas corner = kit.titleBar.part(0, 0, 11, 11);
  for (int y = 0; y < 11; ++y) {
    for (int x = 0; x < std::min(FrameWidth, y + 1); ++x) {
      corner.put(x, y, kit.theme.frame.left[static_cast<size_t>(x)]);
    }
  }
  return corner;
}

Canvas topRightCorner(const Kit& kit) {
  Canvas corner = kit.titleBar.part(0, 0, FrameWidth, 11);
  for (int y = 0; y < 11; ++y) {
    for (int i = 0; i < std::min(FrameWidth, y + 1); ++i) {
      corner.put(FrameWidth - 1 - i, y, kit.theme.frame.right[static_cast<size_t>(i)]);
    }
  }
  return corner;
}

Canvas bottomLeftCorner(const Kit& kit) {
  Canvas corner = bottomEdge(kit).part(0, 0, FrameWidth, FrameWidth);
  for (int y = 0; y < FrameWidth; ++y) {
    for (int x = 0; x < FrameWidth - y; ++x) {
      corner.put(x, y, kit.theme.frame.left[static_cast<size_t>(x)]);
    }
  }
  return corner;
}

Canvas bottomRightCorner(const Kit& kit) {
  constexpr int Width = 19;
  constexpr int Height = 20;
  const FrameStyle& frame = kit.theme.frame;
  Canvas canvas = kit.statusBar.part(0, 0, Width, Height);
  for (int i = FrameWidth - 1; i >= 0; --i) {
    canvas.rect(0, Height - 1 - i, Width - i, 1, frame.bottom[static_cast<size_t>(i)]);
    canvas.rect(Width - 1 - i, 0, 1, Height - i, frame.right[static_cast<size_t>(i)]);
  }
  int right = Width - FrameWidth - 1;
  int bottom = Height - FrameWidth - 1;
  switch (frame.grip) {
    case GripStyle::Ridges:
      ridges(canvas, frame, right, bottom);
      break;
    case GripStyle::Dots:
      dots(canvas, frame, right, bottom);
      break;
    case GripStyle::Corner:
      corner(canvas, frame, right, bottom);
      break;
  }
  return canvas;
}

}  // namespace skinart
