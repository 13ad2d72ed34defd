#include "gtk/base/DefaultBrowser.h"

#include <gio/gdesktopappinfo.h>

#include <string>

#include "gtk/base/GObjects.h"
#include "platform/Failure.h"

namespace {

constexpr const char* Entry = "org.marlowick.Marlowick.desktop";
// What makes a browser the default one.
constexpr const char* Schemes[] = {"http", "https"};
// What goes along with it.
constexpr const char* Types[] = {"x-scheme-handler/http", "x-scheme-handler/https", "text/html",
                                 "application/xhtml+xml"};

}  // namespace

namespace DefaultBrowser {

State Now() {
  const Owned<GDesktopAppInfo> own(g_desktop_app_info_new(Entry));
  if (!own) return State::NotInstalled;
  for (const char* scheme : Schemes) {
    const Owned<GAppInfo> chosen(g_app_info_get_default_for_uri_scheme(scheme));
    if (!chosen || TextOf(g_app_info_get_id(chosen.get())) != Entry) return State::Other;
  }
  return State::Ours;
}

void BecomeIt() {
  const Owned<GDesktopAppInfo> own(g_desktop_app_info_new(Entry));
  if (!own) throw Failure(std::string("The desktop has no entry \"") + Entry + "\"");
  for (const char* type : Types) {
    GError* error = nullptr;
    if (g_app_info_set_as_default_for_type(G_APP_INFO(own.get()), type, &error)) continue;
    const OwnedError reason(error);
    throw Failure(std::string("The desktop doesn't take Marlowick for \"") + type + "\": " + reason->message);
  }
}

}  // namespace DefaultBrowser
