#pragma once

#include <filesystem>
#include <vector>

#include "Theme.h"

namespace skinart {

// Writes one PNG that shows, for each theme, a composed window with its menus and every bitmap enlarged
// under its name. Throws std::runtime_error if the file can't be written.
void WriteSheet(const std::vector<Theme>& themes, const std::filesystem::path& file);

}  // namespace skinart
