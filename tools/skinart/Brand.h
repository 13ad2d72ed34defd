#pragma once

#include <filesystem>

namespace skinart {

/// Writes the program's own pictures, which no skin replaces, into `folder`: icon-16.png, icon-32.png,
/// icon-48.png, icon-128.png, splash.png and popup.png. Throws std::runtime_error on failure.
void writeBrand(const std::filesystem::path& folder);

}  // namespace skinart
