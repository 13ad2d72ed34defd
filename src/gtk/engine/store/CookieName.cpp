#include "gtk/engine/store/CookieName.h"

#include <glib.h>

#include <algorithm>

namespace {

bool IsPlain(gunichar character) {
  switch (g_unichar_type(character)) {
    case G_UNICODE_CONTROL:
    case G_UNICODE_FORMAT:  // turns the direction of what follows, or can't be seen
    case G_UNICODE_LINE_SEPARATOR:
    case G_UNICODE_PARAGRAPH_SEPARATOR:
    case G_UNICODE_SURROGATE:
      return false;
    default:
      return true;
  }
}

void AppendEscaped(std::string& to, std::string_view bytes) {
  static constexpr char Digits[] = "0123456789ABCDEF";
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    to += {'\\', 'x', Digits[byte >> 4], Digits[byte & 15]};
  }
}

// How many bytes the first character of a text has, 0 where it is none.
size_t CharacterLength(std::string_view text) {
  const gunichar character = g_utf8_get_char_validated(text.data(), static_cast<gssize>(text.size()));
  if (character == 0 || character == static_cast<gunichar>(-1) || character == static_cast<gunichar>(-2))
    return 0;
  return static_cast<size_t>(g_utf8_next_char(text.data()) - text.data());
}

void Append(std::string& to, std::string_view text, std::string_view also) {
  const auto shown_as_it_is = [also](char c) {
    return c >= ' ' && c < 127 && c != '\\' && also.find(c) == also.npos;
  };
  while (!text.empty()) {
    // Nearly all cookies are nothing but this.
    const auto plain = std::find_if_not(text.begin(), text.end(), shown_as_it_is);
    to.append(text.begin(), plain);
    text.remove_prefix(static_cast<size_t>(plain - text.begin()));
    if (text.empty()) return;
    const size_t length = CharacterLength(text);
    const std::string_view character = text.substr(0, std::max<size_t>(length, 1));
    if (length > 1 && IsPlain(g_utf8_get_char(character.data())))
      to += character;
    else
      AppendEscaped(to, character);
    text.remove_prefix(character.size());
  }
}

}  // namespace

std::string CookieName(std::string_view name, std::string_view domain, std::string_view path) {
  std::string whole = "Cookie:";
  // Up to the first slash there is one "@" where the name has none itself, and its own ones before it.
  Append(whole, name, name.find('@') == name.npos ? "" : "/");
  whole += '@';
  Append(whole, domain, "@/");
  whole += '/';
  Append(whole, path.starts_with('/') ? path.substr(1) : path, "");
  return whole;
}
