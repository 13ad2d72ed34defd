#pragma once

#include <filesystem>

#include "Canvas.h"

namespace skinart {

/// Writes `canvas` as a 24-bit BMP. Throws std::runtime_error with the file's name on failure.
void writeBmp(const Canvas& canvas, const std::filesystem::path& file);

/// Writes `text` as it stands. Throws std::runtime_error with the file's name on failure.
void writeText(const std::string& text, const std::filesystem::path& file);

}  // namespace skinart
