#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/SharedValue.h"

// What the menu bar, the popup menus, the favourites windows and the command dispatcher share.
struct MenuState {
  int16_t MenuMode = 0;      // 1 once a label was clicked: hovering over a label then opens its menu
  int16_t MenuLoaded = 0;    // 1 while the popup menu exists
  std::string OpenMenuName;  // "file", "edit", "view", "favourites", "launch", "tabs", "help", or empty
  std::vector<std::string> MenuItems;  // captions of the menu built last, "-" for a separator
  int16_t MenuItemIndex = 0;           // the row clicked last
  SharedValue<std::string>
      FavOpenPath;  // the folder of the deepest favourites window that is to stay; empty: none
};
