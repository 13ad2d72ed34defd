#pragma once

#include <string>
#include <string_view>

// Names of files that pages are written to.
namespace PageNames {

// A file name made from a title: no separators, no characters that a file system refuses, at most 120
// characters, never empty.
std::string FromTitle(std::string_view title);

// The same of a file's name, which keeps its extension.
std::string FromFile(std::string_view name);

// The first of "name.ext", "name (1).ext", … in the folder that no file has.
std::string Unused(const std::string& folder, const std::string& name);

}  // namespace PageNames
