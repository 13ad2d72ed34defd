#pragma once

#include "Catalogue.h"

namespace skinart {

// A window composed of a theme's bitmaps as the program composes it, `width` x `height` pixels. The
// button `hovered` and the button `pressed` are shown so (-1 for none); `frame` is the animation's.
struct Scene {
  int width = 0;
  int height = 0;
  std::string title;
  std::vector<std::string> tabs;
  size_t selected = 0;
  int hovered = -1;
  int pressed = -1;
  int frame = 8;
  std::string status = "Status: Opening page";
};
Canvas ComposeWindow(const Theme& theme, const Art& art, const Scene& scene);

// A menu with its frame, separators and one highlighted row.
Canvas ComposeMenu(const Theme& theme, const Art& art, const std::vector<std::string>& rows, int highlighted);

// A folder's menu of favourites, with icons.
Canvas ComposeFavourites(const Theme& theme, const Art& art);

// preview.bmp: a window of 640 x 426 at half its size.
Canvas Preview(const Theme& theme, const Art& art);

}  // namespace skinart
