#include "gtk/favourites/Encoding.h"

#include <glib.h>

#include <optional>
#include <string_view>

#include "gtk/base/GObjects.h"
#include "platform/Text.h"

namespace {

constexpr gssize MostBytes = G_MAXSSIZE;

std::optional<std::string> Convert(std::string_view content, const char* encoding) {
  if (content.size() > static_cast<size_t>(MostBytes)) return {};
  gsize length = 0;
  // What the encoding doesn't know becomes a question mark, and no reason to read nothing.
  char* text = g_convert_with_fallback(content.data(), static_cast<gssize>(content.size()), "UTF-8", encoding,
                                       "?", nullptr, &length, nullptr);
  if (!text) return {};
  std::string result(text, length);
  g_free(text);
  return result;
}

std::string Decode(std::string_view content, const std::string& declared) {
  if (content.starts_with("\xEF\xBB\xBF")) return std::string(content.substr(3));
  const char* wide = content.starts_with("\xFF\xFE")   ? "UTF-16LE"
                     : content.starts_with("\xFE\xFF") ? "UTF-16BE"
                                                       : nullptr;
  // A half character at the end would spoil the whole.
  if (wide) return Convert(content.substr(2, (content.size() - 2) & ~size_t{1}), wide).value_or("");
  if (g_utf8_validate(content.data(), static_cast<gssize>(content.size()), nullptr))
    return std::string(content);
  if (!declared.empty())
    if (auto text = Convert(content, declared.c_str())) return *text;
  return Convert(content, "WINDOWS-1252").value_or(std::string(content));
}

}  // namespace

std::string ToUtf8(const std::string& content, const std::string& declared) {
  return Text::Valid(Decode(content, declared));
}
