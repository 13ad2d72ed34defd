#include "gtk/page/text/Search.h"

#include <algorithm>
#include <cctype>
#include <sstream>
#include <utility>
#include <vector>

#include "platform/Text.h"

namespace {

constexpr std::string_view Blanks = " \t\r\n";

std::string Trimmed(std::string_view typed) {
  const size_t start = std::min(typed.find_first_not_of(Blanks), typed.size());
  const size_t end = typed.find_last_not_of(Blanks);
  return std::string(end == typed.npos ? std::string_view{} : typed.substr(start, end - start + 1));
}

std::string Escaped(std::string_view words) {
  constexpr std::string_view digits = "0123456789ABCDEF", kept = "-_.~";
  std::string result;
  for (const char c : Text::Valid(words)) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x80 && (std::isalnum(byte) || kept.find(c) != kept.npos))
      result += c;
    else
      result += {'%', digits[byte >> 4], digits[byte & 15]};
  }
  return result;
}

std::string For(const std::string& address, std::string_view words) {
  const size_t place = address.find(Search::Words);
  if (place == address.npos) return {};
  return address.substr(0, place) + Escaped(words) + address.substr(place + Search::Words.size());
}

using Keyword = std::pair<std::string, std::string>;

// The last one lacks its address where there is none.
std::vector<Keyword> KeywordsOf(const Search::Engines& engines) {
  std::vector<Keyword> keywords;
  std::istringstream parts(engines.keywords);
  for (Keyword one; parts >> one.first; keywords.push_back(std::exchange(one, {}))) parts >> one.second;
  return keywords;
}

// The search behind a keyword; empty where the text begins with none.
std::string ByKeyword(const std::string& text, const Search::Engines& engines) {
  const size_t end = text.find_first_of(Blanks);
  if (end == text.npos) return {};
  for (const auto& [keyword, address] : KeywordsOf(engines))
    if (Text::SameWithoutCase(keyword, text.substr(0, end))) return For(address, Trimmed(text.substr(end)));
  return {};
}

// A scheme with words behind it, as in "note: buy milk".
bool IsRemark(const std::string& text) {
  const size_t colon = text.find(':');
  return text.find_first_of(Blanks) == colon + 1 && !Address::IsLocal(text);
}

bool AreWords(const std::string& text) {
  if (Address::Scheme(text) == "javascript") return false;
  return text.find_first_of(Blanks) != text.npos || text.find_first_of(".:") == text.npos;
}

// Made from a name alone, without a full stop or a port: a host of the own network, or a word.
bool MayBeWord(const Address::Target& target) {
  return !target.fallback.empty() && target.uri.find(':', target.uri.find("://") + 3) == target.uri.npos &&
         Address::Host(target.uri).find('.') == std::string::npos;
}

bool Searches(const std::string& address) {
  const Address::Target target = Address::FromTyped(address);
  return address.find(Search::Words) != address.npos && target.valid &&
         (target.uri.starts_with("http://") || target.uri.starts_with("https://"));
}

}  // namespace

namespace Search {

Address::Target FromTyped(std::string_view typed, const Engines& engines) {
  const std::string text = Trimmed(typed);
  const bool marked = text.starts_with('?');
  const std::string search = For(engines.address, marked ? Trimmed(text.substr(1)) : text);
  if (marked && !search.empty()) return {search, {}, true, {}};
  if (const std::string found = ByKeyword(text, engines); !found.empty()) return {found, {}, true, {}};
  Address::Target target = Address::FromTyped(typed);
  if (!search.empty() && ((!target.valid && AreWords(text)) || (target.valid && IsRemark(text))))
    return {search, {}, true, {}};
  if (!target.valid || MayBeWord(target)) target.search = search;
  return target;
}

bool Fit(const Engines& engines, std::string& wrong) {
  if (!engines.address.empty() && !Searches(engines.address)) {
    wrong = engines.address;
    return false;
  }
  for (const auto& [keyword, address] : KeywordsOf(engines))
    if (!Searches(address)) {
      wrong = address.empty() ? keyword : address;
      return false;
    }
  return true;
}

}  // namespace Search
