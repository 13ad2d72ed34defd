#include "fakes/Spoiler.h"

#include <iterator>

std::string Spoiler::Spoil(std::string content) {
  constexpr char edges[] = {0, 1, 2, '\r', '\n', '0', 0x7F, static_cast<char>(0x80), static_cast<char>(0xFF)};
  for (size_t times = 1 + Below(6); times-- > 0 && !content.empty();) {
    const size_t at = Below(Below(2) ? content.size() : std::min<size_t>(content.size(), 64));
    switch (Below(8)) {
      case 0:
        content.resize(at);
        break;
      case 1:
        content.erase(at, Below(16));
        break;
      case 2:
        content.insert(at, content.substr(Below(content.size()), Below(64)));
        break;
      case 3:
      case 4:
        content[at] = edges[Below(std::size(edges))];
        break;
      default:
        content[at] = static_cast<char>(content[at] ^ 1 << Below(8));
    }
  }
  return content;
}
