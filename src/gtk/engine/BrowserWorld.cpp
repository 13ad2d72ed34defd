#include "gtk/engine/BrowserWorld.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "gtk/engine/GraphicsProbe.h"
#include "gtk/engine/InternetOptions.h"
#include "gtk/page/DownloadBar.h"
#include "gtk/page/Page.h"
#include "gtk/page/PlainWindow.h"
#include "gtk/page/text/Address.h"
#include "platform/Files.h"

namespace {

// A port of this machine that belongs to the system and where nothing listens: what is sent there goes
// nowhere.
constexpr const char* Nowhere = "socks5://127.0.0.1:1";

Owned<WebKitWebContext> MakeContext(const std::string& engine) {
  const Owned<WebKitWebsiteDataManager> data(
      webkit_website_data_manager_new("base-data-directory", (engine + "/data").c_str(),
                                      "base-cache-directory", (engine + "/cache").c_str(), nullptr));
  Owned<WebKitWebContext> context(webkit_web_context_new_with_website_data_manager(data.get()));
  webkit_web_context_set_sandbox_enabled(context.get(), TRUE);
  webkit_cookie_manager_set_persistent_storage(webkit_web_context_get_cookie_manager(context.get()),
                                               (engine + "/cookies.sqlite").c_str(),
                                               WEBKIT_COOKIE_PERSISTENT_STORAGE_SQLITE);
  return context;
}

// What the engine does ahead of the user's wishes. A name that is looked up in advance leaves the machine
// past every proxy, even while the program works offline.
void TurnOffLookingAhead(WebKitSettings* settings) {
  WebKitFeatureList* features = webkit_settings_get_all_features();
  for (gsize i = 0; i < webkit_feature_list_get_length(features); ++i) {
    WebKitFeature* feature = webkit_feature_list_get(features, i);
    const std::string name = TextOf(webkit_feature_get_identifier(feature));
    if (name == "LinkDNSPrefetch" || name == "LinkPreconnect")
      webkit_settings_set_feature_enabled(settings, feature, FALSE);
  }
  webkit_feature_list_unref(features);
}

Owned<WebKitSettings> MakeViewSettings(bool graphics_processor) {
  Owned<WebKitSettings> settings(webkit_settings_new());
  webkit_settings_set_hardware_acceleration_policy(
      settings.get(), graphics_processor ? WEBKIT_HARDWARE_ACCELERATION_POLICY_ALWAYS
                                         : WEBKIT_HARDWARE_ACCELERATION_POLICY_NEVER);
  // Every new window is asked about, so none is held back before.
  webkit_settings_set_javascript_can_open_windows_automatically(settings.get(), TRUE);
  TurnOffLookingAhead(settings.get());
  return settings;
}

}  // namespace

BrowserWorld::BrowserWorld(std::string folder, Events& gate, std::function<GtkWindow*()> main_window)
    : folder_(std::move(folder)),
      engine_(folder_ + "/engine"),
      gate_(gate),
      main_window_(std::move(main_window)),
      settings_(ElementSettings::Load(engine_ + "/engine.ini")) {
  const bool graphics_processor = HasGraphicsProcessor();
  // Sharing buffers with a graphics processor that isn't there costs time at each start.
  if (!graphics_processor) g_setenv("WEBKIT_DISABLE_DMABUF_RENDERER", "1", FALSE);
  context_ = MakeContext(engine_);
  view_settings_ = MakeViewSettings(graphics_processor);
  settings_.Apply(view_settings_.get());
  ApplyProxy();
  g_signal_connect(context_.get(), "download-started", G_CALLBACK(OnDownload), this);
  // A message, to which nobody listens, starts the page's process: it comes up while the program does.
  first_view_.reset(GTK_WIDGET(g_object_ref_sink(NewView())));
  webkit_web_view_send_message_to_page(WEBKIT_WEB_VIEW(first_view_.get()),
                                       webkit_user_message_new("start", nullptr), nullptr, nullptr, nullptr);
}

GtkWidget* BrowserWorld::NewView() {
  return GTK_WIDGET(g_object_new(WEBKIT_TYPE_WEB_VIEW, "web-context", context_.get(), "settings",
                                 view_settings_.get(), nullptr));
}

GtkWidget* BrowserWorld::MakeView() {
  if (!first_view_) return NewView();
  GtkWidget* view = first_view_.release();
  g_object_force_floating(G_OBJECT(view));
  return view;
}

BrowserWorld::~BrowserWorld() { Shutdown(); }

void BrowserWorld::Shutdown() {
  if (!context_) return;
  g_signal_handlers_disconnect_by_data(context_.get(), this);
  first_view_.reset();
  windows_.clear();
  for (Page* page : std::exchange(pages_, {})) page->Close();
  view_settings_.reset();
  context_.reset();
}

void BrowserWorld::Change(const ElementSettings& settings) {
  const bool zoomed = settings.zoom != settings_.zoom;
  settings_ = settings;
  settings_.Apply(view_settings_.get());
  ApplyProxy();
  // A zoom that the user gave one page stays while this one doesn't change.
  for (Page* page : pages_)
    if (WebKitWebView* view = page->PresentView(); view && zoomed)
      webkit_web_view_set_zoom_level(view, settings_.zoom / 100.0);
  settings_.Save(engine_ + "/engine.ini");
}

std::string BrowserWorld::Home() const {
  return settings_.home.empty() ? Address::FromPath(HostPath(folder_ + "/start.html")) : settings_.home;
}

bool BrowserWorld::IsHistory(const std::string& uri) const {
  const std::string path =
      TakeText(g_filename_from_uri(uri.substr(0, uri.find_first_of("?#")).c_str(), nullptr, nullptr));
  if (path.empty()) return false;
  // A link may lead to the files, and the folder may be one.
  const auto real = [](const std::string& name) {
    std::error_code unknown;
    return std::filesystem::weakly_canonical(name, unknown).native();
  };
  const std::string file = real(path);
  return file.starts_with(real(HostPath(folder_ + "/history")) + "/") ||
         file == real(HostPath(folder_ + "/history.htm")) ||
         file == real(HostPath(folder_ + "/contents.htm"));
}

void BrowserWorld::SetOffline(bool offline) {
  if (offline == offline_) return;
  offline_ = offline;
  ApplyProxy();
}

// Every request of every page goes by the proxy; offline, that one leads nowhere.
void BrowserWorld::ApplyProxy() {
  WebKitWebsiteDataManager* data = webkit_web_context_get_website_data_manager(context_.get());
  if (!offline_) return settings_.ApplyProxy(data);
  WebKitNetworkProxySettings* nowhere = webkit_network_proxy_settings_new(Nowhere, nullptr);
  webkit_website_data_manager_set_network_proxy_settings(data, WEBKIT_NETWORK_PROXY_MODE_CUSTOM, nowhere);
  webkit_network_proxy_settings_free(nowhere);
}

PlainWindow& BrowserWorld::OpenPlainWindow() {
  return *windows_.emplace_back(std::make_unique<PlainWindow>(*this));
}

void BrowserWorld::Forget(PlainWindow& window) {
  std::erase_if(windows_, [&window](const auto& one) { return one.get() == &window; });
}

void BrowserWorld::ShowInternetOptions() { InternetOptions::Show(*this); }

void BrowserWorld::OnDownload(WebKitWebContext*, WebKitDownload* download, gpointer data) {
  auto* self = static_cast<BrowserWorld*>(data);
  if (DownloadBar::IsKeptOut(download) || self->pages_.empty()) return;
  WebKitWebView* view = webkit_download_get_web_view(download);
  const auto begun_on = std::find_if(self->pages_.begin(), self->pages_.end(), [view](const Page* page) {
    return view && page->PresentView() == view;
  });
  Page* page = begun_on == self->pages_.end() ? self->pages_.front() : *begun_on;
  page->Downloads().Add(download);
}
