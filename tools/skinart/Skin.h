#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "Catalogue.h"

namespace skinart {

// The text of skin.ini for a theme, lines ended by CR LF.
std::string SkinIni(const Theme& theme);

// The places where text is too faint on what is painted behind it, one sentence each; empty if none.
std::vector<std::string> FaintText(const Theme& theme, const Art& art);

// Writes every bitmap, preview.bmp and, unless the theme is built in, skin.ini into `folder`, which is
// made if need be. Throws std::runtime_error if a text is too faint or a file can't be written.
void WriteSkin(const Theme& theme, const std::filesystem::path& folder);

}  // namespace skinart
