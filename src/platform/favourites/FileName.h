#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_set>

// Names for files and folders, made of what pages and other programs call things.
namespace FileName {

// Bytes of a whole name, its extension included.
constexpr size_t MostBytes = 200;

// A name that any system can have, nearest to the text: no separators, control or reserved characters, no
// device's name, no full stop at its beginning (which would hide it) or end. Whole characters, and together
// with an extension of so many bytes at most MostBytes. `otherwise`: for a text that nothing is left of.
std::string Legal(std::string_view text, std::string_view otherwise, size_t extension_bytes = 0);

// Names that are taken in one folder. Names that differ in letter case only are the same to some systems.
class TakenNames {
 public:
  // The name itself, or with " (2)" and so on; it is taken from now on. The extension comes behind that.
  std::string Free(const std::string& name, std::string_view extension);
  void Take(std::string_view whole_name);

 private:
  std::unordered_set<std::string> taken_;  // in lower case
};

}  // namespace FileName
