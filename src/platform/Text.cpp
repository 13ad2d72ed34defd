#include "platform/Text.h"

#include <langinfo.h>
#include <locale.h>
#include <string.h>
#include <wctype.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace {

struct Character {
  char32_t code = 0;  // the code point; for an invalid byte, the byte itself
  size_t bytes = 1;
  bool valid = true;
};

bool Continues(std::string_view text, size_t at) {
  return at < text.size() && (static_cast<uint8_t>(text[at]) & 0xC0) == 0x80;
}

Character Decode(std::string_view text, size_t at) {
  const auto lead = static_cast<uint8_t>(text[at]);
  if (lead < 0x80) return {lead, 1, true};
  const Character invalid{lead, 1, false};
  const size_t bytes = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4) return invalid;
  char32_t code = lead & (0x7F >> bytes);
  for (size_t i = 1; i < bytes; ++i) {
    if (!Continues(text, at + i)) return invalid;
    code = code << 6 | (static_cast<uint8_t>(text[at + i]) & 0x3F);
  }
  constexpr char32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
  if (code < smallest[bytes] || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) return invalid;
  return {code, bytes, true};
}

void Append(std::string& text, char32_t code) {
  if (code < 0x80) {
    text += static_cast<char>(code);
  } else if (code < 0x800) {
    text += {static_cast<char>(0xC0 | code >> 6), static_cast<char>(0x80 | (code & 0x3F))};
  } else if (code < 0x10000) {
    text += {static_cast<char>(0xE0 | code >> 12), static_cast<char>(0x80 | (code >> 6 & 0x3F)),
             static_cast<char>(0x80 | (code & 0x3F))};
  } else {
    text += {static_cast<char>(0xF0 | code >> 18), static_cast<char>(0x80 | (code >> 12 & 0x3F)),
             static_cast<char>(0x80 | (code >> 6 & 0x3F)), static_cast<char>(0x80 | (code & 0x3F))};
  }
}

char LowerLetter(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

// Unicode's own case pairs, whatever locale the process runs in.
locale_t UnicodeLocale() {
  static const locale_t locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  return locale;
}

// The user's order of letters; Unicode's where the user's language has another encoding.
locale_t UserLocale() {
  static const locale_t locale = [] {
    const locale_t chosen = newlocale(LC_CTYPE_MASK | LC_COLLATE_MASK, "", nullptr);
    if (!chosen) return UnicodeLocale();
    if (std::strcmp(nl_langinfo_l(CODESET, chosen), "UTF-8") == 0) return chosen;
    freelocale(chosen);
    return newlocale(LC_CTYPE_MASK | LC_COLLATE_MASK, "C.UTF-8", nullptr);
  }();
  return locale;
}

template <class Ascii, class Wide>
std::string Map(std::string_view text, Ascii ascii, Wide wide) {
  std::string result;
  result.reserve(text.size());
  for (size_t at = 0; at < text.size();) {
    const Character character = Decode(text, at);
    if (character.code < 0x80)
      result += ascii(static_cast<char>(character.code));
    else if (character.valid)
      Append(result, wide(character.code));
    else
      result += text[at];
    at += character.bytes;
  }
  return result;
}

// The byte offset of character number `count`, or the text's size.
size_t Offset(std::string_view text, size_t count) {
  size_t at = 0;
  while (count-- > 0 && at < text.size()) at += Decode(text, at).bytes;
  return at;
}

// How many bytes two texts begin with that are the same and plain, in steps of eight.
size_t PlainStart(std::string_view a, std::string_view b) {
  size_t at = 0;
  for (uint64_t left = 0, right = 0; at + sizeof left <= std::min(a.size(), b.size()); at += sizeof left) {
    std::memcpy(&left, a.data() + at, sizeof left);
    std::memcpy(&right, b.data() + at, sizeof right);
    if (left != right || (left & 0x8080808080808080) != 0) break;
  }
  return at;
}

}  // namespace

namespace Text {

size_t Length(std::string_view text) {
  size_t length = 0;
  for (size_t at = 0; at < text.size(); ++length) at += Decode(text, at).bytes;
  return length;
}

std::string Left(std::string_view text, size_t count) {
  return std::string(text.substr(0, Offset(text, count)));
}

std::string Behind(std::string_view text, size_t count) {
  return std::string(text.substr(Offset(text, count)));
}

std::string UpperCase(std::string_view text) {
  return Map(
      text, [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; },
      [](char32_t code) {
        return static_cast<char32_t>(towupper_l(static_cast<wint_t>(code), UnicodeLocale()));
      });
}

std::string LowerCase(std::string_view text) {
  return Map(text, LowerLetter, [](char32_t code) {
    return static_cast<char32_t>(towlower_l(static_cast<wint_t>(code), UnicodeLocale()));
  });
}

bool SameWithoutCase(std::string_view a, std::string_view b) {
  // Long lists of lines are compared, and hardly one is the same: what begins alike is stepped over, plain
  // letters go byte by byte, and the first character that isn't one takes all the rest with it.
  const size_t alike = PlainStart(a, b);
  a.remove_prefix(alike);
  b.remove_prefix(alike);
  for (; !a.empty() && !b.empty(); a.remove_prefix(1), b.remove_prefix(1)) {
    const auto left = static_cast<uint8_t>(a[0]), right = static_cast<uint8_t>(b[0]);
    if (left >= 0x80 || right >= 0x80) return LowerCase(a) == LowerCase(b);
    if (left != right && LowerLetter(a[0]) != LowerLetter(b[0])) return false;
  }
  return a.size() == b.size();
}

std::string CollationKey(std::string_view name) {
  const std::string lower = LowerCase(name);
  std::string key(3 * lower.size() + 1, '\0');
  const size_t length = strxfrm_l(key.data(), lower.c_str(), key.size(), UserLocale());
  const bool whole = length < key.size();
  key.resize(length + 1);
  if (!whole) strxfrm_l(key.data(), lower.c_str(), key.size(), UserLocale());
  key.pop_back();
  return key;
}

std::string Replace(std::string_view text, std::string_view what, std::string_view by) {
  std::string result;
  for (size_t at = 0;;) {
    const size_t found = what.empty() ? text.npos : text.find(what, at);
    result += text.substr(at, found == text.npos ? text.npos : found - at);
    if (found == text.npos) return result;
    result += by;
    at = found + what.size();
  }
}

std::string ForTitleBar(std::string_view text) { return Left(Valid(text), 500); }

std::string Valid(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  for (size_t at = 0; at < text.size();) {
    const Character character = Decode(text, at);
    if (character.valid && character.code != 0)
      result += text.substr(at, character.bytes);
    else
      result += "\xEF\xBF\xBD";
    at += character.bytes;
  }
  return result;
}

}  // namespace Text
