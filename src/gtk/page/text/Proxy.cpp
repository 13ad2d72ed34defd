#include "gtk/page/text/Proxy.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "gtk/page/text/Address.h"

namespace {

constexpr std::array<std::string_view, 5> Schemes = {"http", "https", "socks", "socks4", "socks5"};
constexpr int MostPort = 65535;

bool IsPort(std::string_view text) {
  int port = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), port);
  return error == std::errc() && end == text.data() + text.size() && port > 0 && port <= MostPort;
}

// "host" or "host:port". The rules are those of any address's host.
bool IsPlace(std::string_view place) {
  if (place.empty() || place.find_first_of(" \t\r\n/?#~") != place.npos) return false;
  const Address::Target target = Address::FromTyped(place);
  const std::string scheme = Address::Scheme(target.uri);
  if (!target.valid || (scheme != "http" && scheme != "https")) return false;
  const size_t colon = place.rfind(':');
  // "https:proxy:80" begins like a full address, but is none.
  if (place.front() != '[' && place.find(':') != colon) return false;
  if (colon == place.npos || place.find(']', colon) != place.npos || colon + 1 == place.size()) return true;
  return IsPort(place.substr(colon + 1));
}

}  // namespace

namespace Proxy {

std::string FromTyped(std::string_view typed) {
  const size_t slashes = typed.find("://");
  const bool full = slashes != typed.npos;
  const std::string scheme = full ? Address::Scheme(typed) : "http";
  if (std::find(Schemes.begin(), Schemes.end(), scheme) == Schemes.end()) return {};
  std::string_view place = full ? typed.substr(slashes + 3) : typed;
  if (full && place.ends_with('/')) place.remove_suffix(1);
  const size_t user = place.rfind('@');
  if (!IsPlace(place.substr(user == place.npos ? 0 : user + 1))) return {};
  return full ? std::string(typed) : scheme + "://" + std::string(typed);
}

}  // namespace Proxy
