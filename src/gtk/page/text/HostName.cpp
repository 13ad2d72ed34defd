#include "gtk/page/text/HostName.h"

#include <glib.h>

#include <algorithm>
#include <array>
#include <set>
#include <string_view>
#include <vector>

#include "gtk/base/GObjects.h"
#include "gtk/page/text/Address.h"
#include "platform/Text.h"

namespace {

using Scripts = std::set<GUnicodeScript>;

// Scripts that living languages are written in. Those before the last two are written from the left.
const Scripts FromLeft = {G_UNICODE_SCRIPT_LATIN,    G_UNICODE_SCRIPT_GREEK,    G_UNICODE_SCRIPT_CYRILLIC,
                          G_UNICODE_SCRIPT_ARMENIAN, G_UNICODE_SCRIPT_GEORGIAN, G_UNICODE_SCRIPT_DEVANAGARI,
                          G_UNICODE_SCRIPT_BENGALI,  G_UNICODE_SCRIPT_GURMUKHI, G_UNICODE_SCRIPT_GUJARATI,
                          G_UNICODE_SCRIPT_ORIYA,    G_UNICODE_SCRIPT_TAMIL,    G_UNICODE_SCRIPT_TELUGU,
                          G_UNICODE_SCRIPT_KANNADA,  G_UNICODE_SCRIPT_SINHALA,  G_UNICODE_SCRIPT_MALAYALAM,
                          G_UNICODE_SCRIPT_THAI,     G_UNICODE_SCRIPT_LAO,      G_UNICODE_SCRIPT_KHMER,
                          G_UNICODE_SCRIPT_MYANMAR,  G_UNICODE_SCRIPT_TIBETAN,  G_UNICODE_SCRIPT_ETHIOPIC,
                          G_UNICODE_SCRIPT_HAN,      G_UNICODE_SCRIPT_HIRAGANA, G_UNICODE_SCRIPT_KATAKANA,
                          G_UNICODE_SCRIPT_HANGUL,   G_UNICODE_SCRIPT_BOPOMOFO};
const Scripts FromRight = {G_UNICODE_SCRIPT_HEBREW, G_UNICODE_SCRIPT_ARABIC};

// Scripts that one language is written in together.
const std::array<Scripts, 3> Together = {
    {{G_UNICODE_SCRIPT_HAN, G_UNICODE_SCRIPT_HIRAGANA, G_UNICODE_SCRIPT_KATAKANA},
     {G_UNICODE_SCRIPT_HAN, G_UNICODE_SCRIPT_BOPOMOFO},
     {G_UNICODE_SCRIPT_HAN, G_UNICODE_SCRIPT_HANGUL}}};

// Small letters of other scripts that pass for Latin ones: a word of nothing else is a disguise.
constexpr std::array<std::string_view, 3> LikeLatin = {"асԁеһіјӏорԛѕԝхуъьҽпгѵѡ", "αικνρυωηοτ",
                                                       "օոսհցզգյլւքա"};

// The lengthening mark of Japanese, which may pass for a dash elsewhere.
constexpr gunichar Lengthening = 0x30FC;

std::vector<gunichar> CharactersOf(std::string_view text) {
  glong count = 0;
  gunichar* characters = g_utf8_to_ucs4_fast(text.data(), static_cast<glong>(text.size()), &count);
  std::vector<gunichar> result(characters, characters + count);
  g_free(characters);
  return result;
}

bool IsAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

// The accented letters of languages, without those that pass for an ASCII letter or that nobody writes.
bool IsUsualLatin(gunichar c) {
  if (c < 0x80) return true;
  if (c == 0x131 || c == 0x138 || c == 0x149) return false;
  return (c >= 0xE0 && c <= 0x17E && c != 0xF7) || c == 0x1A1 || c == 0x1B0 || c == 0x219 || c == 0x21B ||
         (c >= 0x1E80 && c <= 0x1E85) || (c >= 0x1EA0 && c <= 0x1EF9);
}

bool IsKana(GUnicodeScript script) {
  return script == G_UNICODE_SCRIPT_HIRAGANA || script == G_UNICODE_SCRIPT_KATAKANA;
}

// The scripts of a part; none where it has a character that no name needs.
Scripts ScriptsOf(const std::vector<gunichar>& part) {
  Scripts scripts;
  GUnicodeScript last = G_UNICODE_SCRIPT_COMMON;
  for (const gunichar c : part) {
    if (c == '-' || (c >= '0' && c <= '9')) {
      last = G_UNICODE_SCRIPT_COMMON;
      continue;
    }
    if (c == Lengthening && IsKana(last)) continue;
    last = g_unichar_get_script(c);
    const bool known = FromLeft.contains(last) || FromRight.contains(last);
    if (!known || !(g_unichar_isalnum(c) || g_unichar_ismark(c))) return {};
    if (last == G_UNICODE_SCRIPT_LATIN && !IsUsualLatin(c)) return {};
    scripts.insert(last);
  }
  return scripts;
}

bool PassesForLatin(const std::vector<gunichar>& part) {
  return std::any_of(LikeLatin.begin(), LikeLatin.end(), [&part](std::string_view set) {
    const std::vector<gunichar> letters = CharactersOf(set);
    return std::all_of(part.begin(), part.end(), [&](gunichar c) {
      return c < 0x80 || std::find(letters.begin(), letters.end(), c) != letters.end();
    });
  });
}

// `next` is the part behind it, as it is shown. A part that is written from the right stays in its place only
// where what follows is surely written from the left.
bool IsPlain(std::string_view text, std::string_view next) {
  const std::vector<gunichar> part = CharactersOf(text);
  const Scripts scripts = ScriptsOf(part);
  const bool one_language =
      scripts.size() == 1 || std::any_of(Together.begin(), Together.end(), [&scripts](const Scripts& all) {
        return std::includes(all.begin(), all.end(), scripts.begin(), scripts.end());
      });
  if (scripts.empty() || !one_language || PassesForLatin(part)) return false;
  if (!FromRight.contains(*scripts.begin())) return true;
  return !next.empty() && g_ascii_isalpha(next[0]);
}

std::string Converted(char* (*convert)(const char*), const std::string& part) {
  char* text = convert(part.c_str());
  return text ? TakeText(text) : std::string();
}

std::string ShownPart(const std::string& part, std::string_view next) {
  const std::string ascii = Converted(g_hostname_to_ascii, part);
  const std::string text = Converted(g_hostname_to_unicode, ascii);
  // One that can't be written back is none.
  const bool whole = !ascii.empty() && !IsAscii(text) && Converted(g_hostname_to_ascii, text) == ascii;
  if (whole && IsPlain(text, next)) return text;
  return ascii.empty() ? part : ascii;
}

// From the end, since each part depends on what follows it.
std::string ShownHost(std::string_view host) {
  std::string shown, next;
  for (size_t end = host.size();;) {
    const size_t point = end == 0 ? host.npos : host.rfind('.', end - 1);
    const size_t start = point == host.npos ? 0 : point + 1;
    next = ShownPart(std::string(host.substr(start, end - start)), next);
    shown.insert(0, next);
    if (point == host.npos) return shown;
    shown.insert(0, ".");
    end = point;
  }
}

}  // namespace

namespace HostName {

std::string Shown(const std::string& address) {
  constexpr std::string_view source = "view-source:";
  if (address.starts_with(source)) return std::string(source) + Shown(address.substr(source.size()));
  const std::string scheme = Address::Scheme(address);
  if (scheme != "http" && scheme != "https") return address;
  const size_t start = std::min(address.find_first_not_of("/\\", scheme.size() + 1), address.size());
  const size_t end = std::min(address.find_first_of("/\\?#:", start), address.size());
  const std::string host = address.substr(start, end - start);
  const bool international = !IsAscii(host) || Text::LowerCase(host).find("xn--") != host.npos;
  if (!international || host.starts_with('[')) return address;
  return address.substr(0, start) + ShownHost(Text::Valid(host)) + address.substr(end);
}

}  // namespace HostName
