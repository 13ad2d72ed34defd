#pragma once

#include <cairo.h>

#include <filesystem>
#include <string>

namespace skinart {

// Draws the program's sign on the square of 16 x 16 units at the origin.
void DrawSign(cairo_t* cr);

// Writes the program's own pictures, which no skin replaces, into `folder`: icon-16.png, icon-32.png,
// icon-48.png, icon-128.png, splash.png and popup.png. Throws std::runtime_error on failure.
void WriteBrand(const std::filesystem::path& folder);

// Writes the program's sign as the desktop's icon theme has it: <size>x<size>/apps/NAME.png from 16 to 512
// pixels and scalable/apps/NAME.svg, below `folder`. Throws std::runtime_error on failure.
void WriteIcons(const std::filesystem::path& folder, const std::string& name);

}  // namespace skinart
