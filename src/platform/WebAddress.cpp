#include "platform/WebAddress.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <vector>

#include "platform/Text.h"

namespace {

// Behind these the engine takes any number of slashes, even none, for the start of a host.
constexpr std::array<std::string_view, 5> OfSites = {"http", "https", "ws", "wss", "ftp"};
// Behind these an "@" is no user's.
constexpr std::array<std::string_view, 19> Plain = {
    "mailto", "sip",   "sips",       "xmpp", "acct", "im",     "pres",      "news", "nntp",       "tel",
    "callto", "about", "javascript", "data", "blob", "magnet", "marlowick", "res",  "view-source"};

template <class Words>
bool Has(const Words& words, const std::string& word) {
  return std::find(words.begin(), words.end(), word) != words.end();
}

// In lower case, without its colon; empty where there is none.
std::string SchemeOf(std::string_view text) {
  constexpr std::string_view letters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
  const size_t end = text.find_first_not_of(std::string(letters) + "0123456789+-.");
  const bool is_scheme = end != text.npos && text[end] == ':' && letters.find(text[0]) != letters.npos;
  return is_scheme ? Text::LowerCase(text.substr(0, end)) : std::string();
}

// From where on a host may stand, behind its user; npos: nowhere.
size_t PlaceStart(std::string_view text) {
  const std::string scheme = SchemeOf(text);
  if (Has(OfSites, scheme)) return std::min(text.find_first_not_of("/\\", scheme.size() + 1), text.size());
  if (!scheme.empty() && text.substr(scheme.size() + 1).starts_with("//")) return scheme.size() + 3;
  if (Has(Plain, scheme) || text.starts_with('/') || text.starts_with('~')) return text.npos;
  return 0;
}

// The length of the user and the "@" at the start of a place.
size_t UserLength(std::string_view place) {
  // The engine takes a backslash for a slash.
  const size_t user = place.substr(0, place.find_first_of("/\\?#")).rfind('@');
  return user == place.npos ? 0 : user + 1;
}

// Those that set or turn the direction of what follows; each is three bytes.
bool IsDirection(std::string_view text) {
  static constexpr std::array<std::string_view, 12> all = {"\u200E", "\u200F", "\u202A", "\u202B",
                                                           "\u202C", "\u202D", "\u202E", "\u2066",
                                                           "\u2067", "\u2068", "\u2069", "\u2029"};
  return std::any_of(all.begin(), all.end(), [&](std::string_view one) { return text.starts_with(one); });
}

std::string WithoutDirections(std::string_view text) {
  std::string kept;
  for (size_t i = 0; i < text.size();) {
    if (IsDirection(text.substr(i)))
      i += 3;
    else
      kept += text[i++];
  }
  return kept;
}

}  // namespace

namespace WebAddress {

bool IsOfSite(std::string_view address) {
  const std::string start = Text::LowerCase(std::string(address.substr(0, 8)));
  return start.starts_with("http://") || start.starts_with("https://");
}

std::string WithoutUser(std::string_view address) {
  constexpr std::string_view source = "view-source:";
  if (Text::LowerCase(address.substr(0, source.size())) == source)
    return std::string(source).append(WithoutUser(address.substr(source.size())));
  // Line breaks and the like come with pasted text, and the engine doesn't see them.
  std::string text;
  std::copy_if(address.begin(), address.end(), std::back_inserter(text),
               [](char c) { return static_cast<unsigned char>(c) >= 0x20 && c != 0x7f; });
  text.erase(0, std::min(text.find_first_not_of(' '), text.size()));
  const size_t start = PlaceStart(text);
  const size_t user = start == text.npos ? 0 : UserLength(std::string_view(text).substr(start));
  return user == 0 ? std::string(address) : text.erase(start, user);
}

bool BeginsWithUser(std::string_view typed) {
  return !SchemeOf(typed).empty() && PlaceStart(typed) == 0 && UserLength(typed) > 0;
}

// Letters from Hebrew on to the last script of that direction begin with these bytes, and so do the
// characters that turn it.
bool MayTurnDirection(std::string_view text) {
  for (size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    const auto next = static_cast<unsigned char>(i + 1 < text.size() ? text[i + 1] : 0);
    if ((byte >= 0xD6 && byte <= 0xDF) || (byte == 0xE0 && next >= 0xA0 && next <= 0xA3) ||
        (byte == 0xEF && next >= 0xAC && next <= 0xBB) || (byte == 0xF0 && (next == 0x90 || next == 0x9E)) ||
        IsDirection(text.substr(i)))
      return true;
  }
  return false;
}

std::string Beside(std::string_view title, std::string_view address) {
  constexpr std::string_view from_left = "\u200E", isolate = "\u2068", left_isolate = "\u2066",
                             end = "\u2069";
  if (!MayTurnDirection(title)) return std::string(title).append(" (").append(address).append(")");
  std::string text(from_left);
  text.append(isolate).append(WithoutDirections(title)).append(end).append(" (");
  return text.append(left_isolate).append(address).append(end).append(")");
}

std::string OneLine(std::string_view text) {
  constexpr std::string_view blanks = " \t\r\v\f";
  std::vector<std::string> lines;
  bool words = false;
  for (size_t start = 0; start <= text.size();) {
    const size_t end = std::min(text.find_first_of("\n\r", start), text.size());
    std::string_view line = text.substr(start, end - start);
    line.remove_prefix(std::min(line.find_first_not_of(blanks), line.size()));
    line = line.substr(0, line.find_last_not_of(blanks) + 1);
    if (!line.empty()) lines.emplace_back(line);
    words = words || line.find_first_of(blanks) != line.npos;
    start = end + 1;
  }
  // Without a sign of an address in the first line these are words, too.
  words = words || lines.empty() || lines.front().find_first_of(".:/") == std::string::npos;
  std::string result;
  for (const std::string& line : lines) result += (words && !result.empty() ? " " : "") + line;
  return result;
}

}  // namespace WebAddress
