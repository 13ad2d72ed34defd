#include "gtk/page/text/PageNames.h"

#include <sys/stat.h>

#include "platform/Text.h"

namespace {

constexpr size_t MostCharacters = 120;
// What a file system may take in one name, in bytes, with room for an extension and a number.
constexpr size_t MostBytes = 230;

// Longer ones aren't extensions: characters.
constexpr size_t MostExtension = 16;

// Where the extension begins; that of a packed archive has two parts. The name's end where it has none.
size_t ExtensionOf(std::string_view name) {
  size_t point = name.rfind('.');
  if (point == name.npos || point == 0 || name.size() - point > MostExtension) return name.size();
  if (point > 4 && name.compare(point - 4, 4, ".tar") == 0) point -= 4;
  return point;
}

bool Taken(const std::string& path) {
  struct stat status {};
  return ::lstat(path.c_str(), &status) == 0;
}

}  // namespace

namespace PageNames {

std::string FromTitle(std::string_view title) {
  constexpr std::string_view refused = "/\\:*?\"<>|";
  std::string name;
  for (const char c : Text::Valid(title)) {
    const bool control = static_cast<unsigned char>(c) < 0x20 || c == 0x7f;
    const char kept = control || refused.find(c) != refused.npos ? ' ' : c;
    if (kept != ' ' || (!name.empty() && name.back() != ' ')) name += kept;
  }
  size_t count = MostCharacters;
  std::string cut = Text::Left(name, count);
  while (cut.size() > MostBytes) cut = Text::Left(name, --count);
  // A leading point would hide the file.
  cut.erase(0, std::min(cut.find_first_not_of(". "), cut.size()));
  while (!cut.empty() && (cut.back() == ' ' || cut.back() == '.')) cut.pop_back();
  return cut.empty() ? "page" : cut;
}

std::string FromFile(std::string_view name) {
  const std::string whole = Text::Valid(name);
  const std::string extension = whole.substr(ExtensionOf(whole));
  const std::string before = whole.substr(0, whole.size() - extension.size());
  size_t count = MostCharacters - Text::Length(extension);
  std::string stem = Text::Left(before, count);
  while (stem.size() + extension.size() > MostBytes) stem = Text::Left(before, --count);
  return FromTitle(stem + extension);
}

std::string Unused(const std::string& folder, const std::string& name) {
  if (!Taken(folder + "/" + name)) return name;
  const size_t point = ExtensionOf(name);
  for (int number = 1;; ++number) {
    std::string tried = name.substr(0, point) + " (" + std::to_string(number) + ")" + name.substr(point);
    if (!Taken(folder + "/" + tried)) return tried;
  }
}

}  // namespace PageNames
