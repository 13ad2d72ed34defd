#include "gtk/engine/ElementSettings.h"

#include <algorithm>
#include <array>
#include <sstream>

#include "gtk/base/GObjects.h"
#include "gtk/page/text/Proxy.h"
#include "platform/Failure.h"
#include "platform/Files.h"

namespace {

constexpr const char* Group = "Element";
constexpr std::array<const char*, 3> ProxyNames = {"system", "none", "by hand"};

// A port of this machine that belongs to the system and where nothing listens: what is sent there goes
// nowhere.
constexpr const char* Nowhere = "socks5://127.0.0.1:1";

void SetProxy(WebKitWebsiteDataManager* manager, const std::string& address) {
  WebKitNetworkProxySettings* settings = webkit_network_proxy_settings_new(address.c_str(), nullptr);
  webkit_website_data_manager_set_network_proxy_settings(manager, WEBKIT_NETWORK_PROXY_MODE_CUSTOM, settings);
  webkit_network_proxy_settings_free(settings);
}

struct FreeKeyFile {
  void operator()(GKeyFile* file) const { g_key_file_free(file); }
};
using KeyFile = std::unique_ptr<GKeyFile, FreeKeyFile>;

bool LoadText(GKeyFile* file, const std::string& text) {
  return g_key_file_load_from_data(file, text.data(), text.size(), G_KEY_FILE_NONE, nullptr);
}

// A line that can't be read costs no other.
bool LoadLines(GKeyFile* file, const std::string& path) {
  std::string text;
  try {
    text = ReadWholeFile(path);
  } catch (const Failure&) {
    return false;
  }
  if (LoadText(file, text)) return true;
  const std::string heading = "[" + std::string(Group) + "]\n";
  std::string good = heading;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    const KeyFile alone(g_key_file_new());
    if (LoadText(alone.get(), heading + line)) good += line + "\n";
  }
  return LoadText(file, good);
}

void ReadText(GKeyFile* file, const char* key, std::string& value) {
  if (char* text = g_key_file_get_string(file, Group, key, nullptr)) value = TakeText(text);
}

void ReadNumber(GKeyFile* file, const char* key, int least, int most, int& value) {
  GError* error = nullptr;
  const int number = g_key_file_get_integer(file, Group, key, &error);
  const OwnedError wrong(error);
  if (!wrong && number >= least && number <= most) value = number;
}

void ReadChoice(GKeyFile* file, const char* key, bool& value) {
  GError* error = nullptr;
  const bool choice = g_key_file_get_boolean(file, Group, key, &error);
  const OwnedError wrong(error);
  if (!wrong) value = choice;
}

void ReadTexts(GKeyFile* file, const char* key, std::vector<std::string>& values) {
  char** texts = g_key_file_get_string_list(file, Group, key, nullptr, nullptr);
  for (char** text = texts; text && *text; ++text) values.emplace_back(*text);
  g_strfreev(texts);
}

void ReadProxy(GKeyFile* file, const char* key, ElementSettings::Proxy& value) {
  std::string name;
  ReadText(file, key, name);
  if (!g_key_file_has_key(file, Group, key, nullptr)) return;
  const auto found = std::find(ProxyNames.begin(), ProxyNames.end(), name);
  // Whoever wrote something else here wanted no direct connection for certain.
  value = found == ProxyNames.end() ? ElementSettings::Proxy::ByHand
                                    : static_cast<ElementSettings::Proxy>(found - ProxyNames.begin());
}

}  // namespace

ElementSettings ElementSettings::Load(const std::string& path) {
  ElementSettings settings;
  const KeyFile file(g_key_file_new());
  if (!LoadLines(file.get(), path)) return settings;
  ReadText(file.get(), "home", settings.home);
  ReadText(file.get(), "search", settings.search);
  ReadText(file.get(), "keywords", settings.keywords);
  ReadProxy(file.get(), "proxy", settings.proxy);
  ReadText(file.get(), "proxy address", settings.proxy_address);
  ReadChoice(file.get(), "scripts", settings.scripts);
  ReadChoice(file.get(), "https only", settings.https_only);
  ReadChoice(file.get(), "no default browser", settings.no_default_browser);
  ReadChoice(file.get(), "tracking prevention", settings.tracking_prevention);
  ReadNumber(file.get(), "minimum font size", LeastFontSize, MostFontSize, settings.minimum_font_size);
  ReadNumber(file.get(), "zoom", LeastZoom, MostZoom, settings.zoom);
  ReadTexts(file.get(), "window sites", settings.window_sites);
  return settings;
}

void ElementSettings::Save(const std::string& path) const {
  const KeyFile file(g_key_file_new());
  g_key_file_set_string(file.get(), Group, "home", home.c_str());
  g_key_file_set_string(file.get(), Group, "search", search.c_str());
  g_key_file_set_string(file.get(), Group, "keywords", keywords.c_str());
  g_key_file_set_string(file.get(), Group, "proxy", ProxyNames[static_cast<size_t>(proxy)]);
  g_key_file_set_string(file.get(), Group, "proxy address", proxy_address.c_str());
  g_key_file_set_boolean(file.get(), Group, "scripts", scripts);
  g_key_file_set_boolean(file.get(), Group, "https only", https_only);
  g_key_file_set_boolean(file.get(), Group, "no default browser", no_default_browser);
  g_key_file_set_boolean(file.get(), Group, "tracking prevention", tracking_prevention);
  g_key_file_set_integer(file.get(), Group, "minimum font size", minimum_font_size);
  g_key_file_set_integer(file.get(), Group, "zoom", zoom);
  std::vector<const char*> sites;
  for (const std::string& site : window_sites) sites.push_back(site.c_str());
  if (!sites.empty())
    g_key_file_set_string_list(file.get(), Group, "window sites", sites.data(), sites.size());
  GError* error = nullptr;
  if (g_key_file_save_to_file(file.get(), path.c_str(), &error)) return;
  const OwnedError reason(error);
  throw Failure("Can't write the file \"" + path + "\": " + reason->message);
}

void ElementSettings::Apply(WebKitSettings* settings) const {
  webkit_settings_set_enable_javascript(settings, scripts);
  webkit_settings_set_minimum_font_size(settings, static_cast<guint32>(minimum_font_size));
}

void ElementSettings::ApplyTo(WebKitWebsiteDataManager* manager) const {
  webkit_website_data_manager_set_itp_enabled(manager, tracking_prevention);
}

std::optional<std::string> ElementSettings::BadProxy() const {
  const bool bad = proxy == Proxy::ByHand && ::Proxy::FromTyped(proxy_address).empty();
  return bad ? std::optional(proxy_address) : std::nullopt;
}

void ElementSettings::LeadNowhere(WebKitWebsiteDataManager* manager) { SetProxy(manager, Nowhere); }

void ElementSettings::ApplyProxy(WebKitWebsiteDataManager* manager) const {
  if (BadProxy()) return LeadNowhere(manager);
  if (proxy == Proxy::ByHand) return SetProxy(manager, ::Proxy::FromTyped(proxy_address));
  // The engine's own "no proxy" goes by the environment's.
  if (proxy == Proxy::None) return SetProxy(manager, "direct://");
  webkit_website_data_manager_set_network_proxy_settings(manager, WEBKIT_NETWORK_PROXY_MODE_DEFAULT, nullptr);
}
