#pragma once

#include <filesystem>

#include "Canvas.h"

namespace skinart {

// Writes `canvas` as a 24-bit BMP. Throws std::runtime_error with the file's name on failure.
void WriteBmp(const Canvas& canvas, const std::filesystem::path& file);

// Writes `text` as it stands. Throws std::runtime_error with the file's name on failure.
void WriteText(const std::string& text, const std::filesystem::path& file);

}  // namespace skinart
