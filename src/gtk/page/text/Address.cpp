#include "gtk/page/text/Address.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>

#include "gtk/favourites/BookmarkReader.h"
#include "platform/Files.h"
#include "platform/Text.h"
#include "platform/WebAddress.h"

namespace {

bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsHex(char c) { return IsDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); }
bool IsBlank(char c) { return c == ' ' || c == '\t'; }
// A part of a character beyond ASCII: hosts and paths of other scripts.
bool IsForeign(char c) { return static_cast<unsigned char>(c) >= 0x80; }
bool IsControl(char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7f; }

std::string LowerAscii(std::string_view text) {
  std::string lower(text);
  for (char& c : lower)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  return lower;
}

std::string Escaped(std::string_view text, std::string_view also_kept) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  std::string result;
  for (const char c : text) {
    if (IsLetter(c) || IsDigit(c) || also_kept.find(c) != also_kept.npos) {
      result += c;
      continue;
    }
    const auto byte = static_cast<unsigned char>(c);
    result += {'%', digits[byte >> 4], digits[byte & 15]};
  }
  return result;
}

// Line breaks and other control characters come with pasted text; none belongs to an address.
std::string Trimmed(std::string_view typed) {
  std::string text;
  std::copy_if(typed.begin(), typed.end(), std::back_inserter(text), [](char c) { return !IsControl(c); });
  while (!text.empty() && IsBlank(text.back())) text.pop_back();
  text.erase(0, std::min(text.find_first_not_of(" \t"), text.size()));
  return text;
}

size_t SchemeLength(std::string_view text) {
  if (text.empty() || !IsLetter(text[0])) return 0;
  const size_t end =
      text.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789+-.");
  return end != text.npos && text[end] == ':' ? end : 0;
}

// "localhost:8080/x" begins like a scheme, but a port follows.
bool IsPortNext(std::string_view behind_colon) {
  const size_t end = behind_colon.find_first_not_of("0123456789");
  const size_t digits = std::min(end, behind_colon.size());
  return digits > 0 && digits <= 5 &&
         (end == behind_colon.npos || std::string_view("/?#").find(behind_colon[end]) < 3);
}

bool IsFullAddress(std::string_view text) {
  const size_t scheme = SchemeLength(text);
  return scheme > 0 && !IsPortNext(text.substr(scheme + 1));
}

// The ports that no web page may be asked for, ascending.
constexpr auto ForeignPorts = std::to_array<int>(
    {0,    1,    7,    9,    11,   13,   15,   17,   19,   20,   21,   22,   23,   25,   37,   42,   43,
     53,   69,   77,   79,   87,   95,   101,  102,  103,  104,  109,  110,  111,  113,  115,  117,  119,
     123,  135,  137,  139,  143,  161,  179,  389,  427,  465,  512,  513,  514,  515,  526,  530,  531,
     532,  540,  548,  554,  556,  563,  587,  601,  636,  989,  990,  993,  995,  1719, 1720, 1723, 2049,
     3659, 4045, 4190, 5060, 5061, 6000, 6566, 6665, 6666, 6667, 6668, 6669, 6679, 6697, 10080});

struct Place {
  std::string_view host, port, rest;
};

// Host, port and the rest of a text without scheme. An IPv6 host keeps its brackets.
Place Split(std::string_view text) {
  // The engine takes a backslash for a slash.
  const size_t end = std::min(text.find_first_of("/\\?#"), text.size());
  std::string_view host = text.substr(0, end);
  host.remove_prefix(host.rfind('@') == host.npos ? 0 : host.rfind('@') + 1);
  const size_t colon = host.rfind(':');
  const bool has_port = colon != host.npos && host.find(']', colon) == host.npos;
  return {host.substr(0, has_port ? colon : host.npos),
          has_port ? host.substr(colon + 1) : std::string_view{}, text.substr(end)};
}

bool IsNumbers(std::string_view host) {
  if (host.size() > 2 && host.front() == '[' && host.back() == ']')
    return std::all_of(host.begin() + 1, host.end() - 1,
                       [](char c) { return IsHex(c) || c == ':' || c == '.'; });
  return std::count(host.begin(), host.end(), '.') == 3 &&
         std::all_of(host.begin(), host.end(), [](char c) { return IsDigit(c) || c == '.'; });
}

bool IsHost(std::string_view host) {
  if (IsNumbers(host)) return true;
  if (host.empty() || host.front() == '.' || host.front() == '-' || host.find("..") != host.npos)
    return false;
  return std::all_of(host.begin(), host.end(), [](char c) {
    return IsLetter(c) || IsDigit(c) || IsForeign(c) || c == '.' || c == '-' || c == '_';
  });
}

bool IsThisMachine(std::string_view host) {
  const std::string lower = LowerAscii(host);
  return lower == "localhost" || lower.ends_with(".localhost");
}

Address::Target FromHost(const std::string& text) {
  const Place place = Split(text);
  const bool good_port = place.port.empty() || (place.port.size() <= 5 &&
                                                std::all_of(place.port.begin(), place.port.end(), IsDigit) &&
                                                std::stoi(std::string(place.port)) <= 65535);
  if (!IsHost(place.host) || !good_port || place.rest.starts_with('\\')) return {text, {}, false};
  const size_t start = text.size() - place.rest.size();
  std::string address = text.substr(0, start) + Text::Replace(place.rest, " ", "%20");
  if (place.rest.empty() || place.rest[0] != '/') address.insert(start, "/");
  if (IsThisMachine(place.host) || IsNumbers(place.host)) return {"http://" + address, {}, true};
  return {"https://" + address, "http://" + address, true};
}

bool Exists(const std::string& path) { return ::access(path.c_str(), F_OK) == 0; }

// A path as it is on the disk; behind the name of a file may stand a fragment or a query.
std::string FileAddress(const std::string& typed) {
  const std::string path = HostPath(typed);
  const size_t mark = typed.find_last_of("#?");
  if (!Exists(path) && mark != typed.npos) {
    const std::string file = HostPath(typed.substr(0, mark));
    if (Exists(file)) return Address::FromPath(file) + Text::Replace(typed.substr(mark), " ", "%20");
  }
  return Address::FromPath(path);
}

Address::Target FromText(const std::string& text) {
  if (text.empty()) return {"about:blank", {}, true};
  if (text[0] == '/') return {FileAddress(text), {}, true};
  if (text == "~" || text.starts_with("~/"))
    if (const char* home = std::getenv("HOME")) return {FileAddress(home + text.substr(1)), {}, true};
  // A script that someone was talked into typing would act on the page on show.
  if (Address::Scheme(text) == "javascript") return {text, {}, false};
  if (IsFullAddress(text) && !WebAddress::BeginsWithUser(text)) return {text, {}, true};
  return FromHost(text);
}

// What a shortcut of other systems' desktops (".url") leads to, if that is on the web; other files lead
// nowhere.
std::string ShortcutAddress(const std::string& uri) {
  const std::string_view path = std::string_view(uri).substr(0, uri.find_first_of("?#"));
  constexpr std::string_view local = "file:///", ending = ".url";
  if (!path.starts_with(local) || !LowerAscii(path).ends_with(ending)) return {};
  const std::string address = Trimmed(AddressInShortcut(Address::Unescape(path.substr(local.size() - 1))));
  const std::string scheme = Address::Scheme(address);
  return scheme == "http" || scheme == "https" || scheme == "ftp" ? address : std::string();
}

}  // namespace

namespace Address {

Target FromTyped(std::string_view typed) {
  const Target target = FromText(Trimmed(typed));
  const std::string shortcut = ShortcutAddress(target.uri);
  return shortcut.empty() ? target : Target{shortcut, {}, true};
}

std::string FromPath(std::string_view path) { return "file://" + Escaped(path, "/-_.~!$&'()*+,;=:@"); }

std::string Scheme(std::string_view uri) { return LowerAscii(uri.substr(0, SchemeLength(uri))); }

std::string Host(std::string_view uri) {
  const size_t start = uri.find("://");
  if (start == uri.npos) return {};
  std::string_view host = Split(uri.substr(start + 3)).host;
  if (host.size() > 1 && host.front() == '[') host = host.substr(1, host.size() - 2);
  return LowerAscii(host);
}

bool HasForeignPort(std::string_view uri) {
  const std::string scheme = Scheme(uri);
  if (scheme != "http" && scheme != "https") return false;
  const size_t start = uri.find("://");
  const std::string port(start == uri.npos ? std::string_view{} : Split(uri.substr(start + 3)).port);
  if (port.empty() || port.size() > 5 || !std::all_of(port.begin(), port.end(), IsDigit)) return false;
  return std::binary_search(ForeignPorts.begin(), ForeignPorts.end(), std::stoi(port));
}

bool IsLocal(std::string_view uri) {
  static constexpr std::array<std::string_view, 5> local = {"file", "about", "data", "blob", "view-source"};
  const std::string scheme = Scheme(uri);
  if (scheme == "view-source") return IsLocal(uri.substr(scheme.size() + 1));
  return scheme.empty() || std::find(local.begin(), local.end(), scheme) != local.end();
}

std::string ShortName(std::string_view uri) {
  const std::string scheme = Scheme(uri);
  if (scheme == "file") {
    std::string_view path = uri.substr(0, uri.find_first_of("?#"));
    while (path.size() > 1 && path.back() == '/') path.remove_suffix(1);
    return Text::Valid(Unescape(path.substr(path.rfind('/') + 1)));
  }
  if (scheme != "http" && scheme != "https") return std::string(uri);
  const std::string address = WebAddress::WithoutUser(uri);
  std::string_view rest = std::string_view(address).substr(scheme.size() + 1);
  rest.remove_prefix(std::min(rest.find_first_not_of("/\\"), rest.size()));
  if (rest.ends_with('/')) rest.remove_suffix(1);
  return std::string(rest);
}

std::string Unescape(std::string_view text) {
  const auto value = [](char c) { return IsDigit(c) ? c - '0' : (c | 0x20) - 'a' + 10; };
  std::string result;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '%' && i + 2 < text.size() && IsHex(text[i + 1]) && IsHex(text[i + 2])) {
      result += static_cast<char>(value(text[i + 1]) * 16 + value(text[i + 2]));
      i += 2;
    } else {
      result += text[i];
    }
  }
  return result;
}

}  // namespace Address
