#include "cookies/CookieScanner.h"

#include <string_view>

#include "cookies/frmCleanup.h"
#include "cookies/frmCookies.h"
#include "cookies/frmFilter.h"
#include "cookies/frmNewcookies.h"
#include "core/Program.h"
#include "core/frmMain.h"
#include "platform/CookieCache.h"

namespace {

template <class T>
auto Maker(frmMain& main) {
  return [&main] { return std::make_shared<T>(main.program); };
}

bool IsCookie(std::string_view name) {
  constexpr std::string_view Begin = "cookie";
  if (name.size() < Begin.size()) return false;
  for (size_t i = 0; i < Begin.size(); ++i)
    if ((name[i] | ' ') != Begin[i]) return false;  // upper and lower case letters differ in that bit
  return true;
}

}  // namespace

CookieScanner::CookieScanner(frmMain& main)
    : manager(main.program.desktop.Gate, Maker<frmCookies>(main)),
      newcookies(main.program.desktop.Gate, Maker<frmNewcookies>(main)),
      filter(main.program.desktop.Gate, Maker<frmFilter>(main)),
      cleanup(main.program.desktop.Gate, Maker<frmCleanup>(main)),
      main_(main) {}

CookieScanner::~CookieScanner() = default;

void CookieScanner::GetCookies() {
  lstCookies.clear();
  // Whatever ends the walk: the list is what was found until then.
  Skipping([this] {
    main_.program.desktop.Cookies().Walk([this](std::string_view name, unsigned type) {
      if ((type & CookieCache::NormalCacheEntry) && IsCookie(name)) lstCookies.emplace_back(name);
    });
  });
}

void CookieScanner::CleanUp() {
  // What the user left open has nothing to stand over any more.
  if (filter.Loaded()) filter().Close();
  manager.Unload();
  // Its loading does the work.
  cleanup();
}
