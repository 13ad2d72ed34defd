#include "platform/WebAddress.h"

#include <algorithm>

#include "platform/Text.h"

namespace WebAddress {

bool IsOfSite(std::string_view address) {
  const std::string start = Text::LowerCase(std::string(address.substr(0, 8)));
  return start.starts_with("http://") || start.starts_with("https://");
}

std::string WithoutUser(std::string_view address) {
  const size_t scheme = address.find("://");
  if (scheme == address.npos) return std::string(address);
  const size_t start = scheme + 3;
  // The engine takes a backslash for a slash.
  const size_t end = std::min(address.find_first_of("/\\?#", start), address.size());
  const size_t user = address.substr(start, end - start).rfind('@');
  if (user == address.npos) return std::string(address);
  return std::string(address.substr(0, start)).append(address.substr(start + user + 1));
}

}  // namespace WebAddress
