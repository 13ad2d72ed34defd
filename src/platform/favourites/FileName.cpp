#include "platform/favourites/FileName.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "platform/Text.h"

namespace {

constexpr std::string_view Separators = "/\\:|", Reserved = "<>\"?*";

// The bytes of a character that is nothing to see: control characters, what turns the direction of reading
// round (so that a name may look like another), separators of lines, and marks of the encoding. 0: none.
size_t Unseen(std::string_view rest) {
  const auto byte = [rest](size_t i) { return i < rest.size() ? static_cast<uint8_t>(rest[i]) : 0; };
  if (byte(0) < 0x20 || byte(0) == 0x7F) return 1;
  if (byte(0) == 0xC2 && byte(1) < 0xA0) return 2;
  if (byte(0) == 0xE2 && byte(1) == 0x80 &&
      ((byte(2) >= 0x8E && byte(2) <= 0x8F) || (byte(2) >= 0xA8 && byte(2) <= 0xAE)))
    return 3;
  if (byte(0) == 0xE2 && byte(1) == 0x81 && byte(2) >= 0xA6 && byte(2) <= 0xA9) return 3;
  if (byte(0) == 0xEF && byte(1) == 0xBB && byte(2) == 0xBF) return 3;
  return 0;
}

// Blanks in a row become one; none at the ends.
std::string Tidy(std::string_view text) {
  std::string tidy;
  for (size_t at = 0; at < text.size();) {
    const size_t unseen = Unseen(text.substr(at));
    const char c = unseen > 0 ? ' ' : text[at];
    at += std::max<size_t>(unseen, 1);
    if (Reserved.find(c) != Reserved.npos) continue;
    if (c == ' ' && (tidy.empty() || tidy.back() == ' ')) continue;
    tidy += Separators.find(c) != Separators.npos ? '-' : c;
  }
  return tidy;
}

// Cuts at the end of a character, and leaves no blank or full stop at the end.
void Cut(std::string& name, size_t bytes) {
  if (name.size() > bytes) {
    while (bytes > 0 && (static_cast<uint8_t>(name[bytes]) & 0xC0) == 0x80) --bytes;
    name.resize(bytes);
  }
  while (!name.empty() && (name.back() == '.' || name.back() == ' ')) name.pop_back();
}

bool IsDevice(const std::string& name) {
  static constexpr std::array<std::string_view, 4> Devices = {"con", "prn", "aux", "nul"};
  const std::string stem = Text::LowerCase(name.substr(0, name.find('.')));
  const std::string_view head = std::string_view(stem).substr(0, 3);
  if (stem.size() == 4 && (head == "com" || head == "lpt")) return stem[3] >= '0' && stem[3] <= '9';
  return std::find(Devices.begin(), Devices.end(), stem) != Devices.end();
}

}  // namespace

namespace FileName {

std::string Legal(std::string_view text, std::string_view otherwise, size_t extension_bytes) {
  const size_t room = MostBytes - extension_bytes;
  // What lies far behind the cut needs no tidying.
  std::string name = Tidy(Text::Valid(text.substr(0, 64 * MostBytes)));
  Cut(name, room);
  if (name.empty()) return std::string(otherwise);
  if (name.front() == '.') name.front() = '_';
  if (IsDevice(name)) name.insert(0, "_");
  Cut(name, room);
  return name;
}

std::string TakenNames::Free(const std::string& name, std::string_view extension) {
  std::string free = name + std::string(extension);
  for (size_t n = 2; !taken_.insert(Text::LowerCase(free)).second; ++n) {
    const std::string number = " (" + std::to_string(n) + ")";
    std::string head = name;
    Cut(head, MostBytes - extension.size() - number.size());
    free = head + number + std::string(extension);
  }
  return free;
}

void TakenNames::Take(std::string_view whole_name) { taken_.insert(Text::LowerCase(whole_name)); }

}  // namespace FileName
