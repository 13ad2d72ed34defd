#include "gtk/engine/Engine.h"

#include <utility>

#include "gtk/engine/GraphicsProbe.h"
#include "gtk/engine/store/PromisedHttps.h"

namespace {

// Looking for a graphics processor that isn't there loads one made of software, which costs the start a tenth
// of its time, and memory. So the library is told that no buffers are shared and which device isn't there.
bool FindGraphicsProcessor() {
  const bool found = HasGraphicsProcessor();
  if (!found)
    for (const auto& [name, value] : Engine::NoGraphicsProcessor) g_setenv(name, value, FALSE);
  return found;
}

// What sites have promised lies where it always lay: it is no copy of anything.
std::string PromisesFolder(const EngineGround& ground) { return ground.folder + "/cache"; }

Owned<WebKitWebContext> MakeContext(const EngineGround& ground, const std::string& cookies) {
  const Owned<WebKitWebsiteDataManager> data(webkit_website_data_manager_new(
      "base-data-directory", (ground.folder + "/data").c_str(), "base-cache-directory", ground.cache.c_str(),
      "hsts-cache-directory", PromisesFolder(ground).c_str(), nullptr));
  // A page of another site gets a process of its own, so that what one site's process knows stays that
  // site's.
  Owned<WebKitWebContext> context(
      WEBKIT_WEB_CONTEXT(g_object_new(WEBKIT_TYPE_WEB_CONTEXT, "website-data-manager", data.get(),
                                      "process-swap-on-cross-site-navigation-enabled", TRUE, nullptr)));
  WebKitSecurityManager* security = webkit_web_context_get_security_manager(context.get());
  webkit_security_manager_register_uri_scheme_as_local(security, Engine::OwnScheme);
  webkit_security_manager_register_uri_scheme_as_secure(security, Engine::OwnScheme);
  webkit_security_manager_register_uri_scheme_as_display_isolated(security, Engine::OwnScheme);
  webkit_security_manager_register_uri_scheme_as_no_access(security, Engine::OwnScheme);
  webkit_web_context_set_sandbox_enabled(context.get(), ground.sandboxed);
  webkit_cookie_manager_set_persistent_storage(webkit_web_context_get_cookie_manager(context.get()),
                                               cookies.c_str(), WEBKIT_COOKIE_PERSISTENT_STORAGE_SQLITE);
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

// What is heard needs a press first.
Owned<WebKitWebsitePolicies> MakePolicies() {
  return Owned<WebKitWebsitePolicies>(
      webkit_website_policies_new_with_policies("autoplay", WEBKIT_AUTOPLAY_ALLOW_WITHOUT_SOUND, nullptr));
}

Owned<WebKitSettings> MakeViewSettings(bool graphics_processor) {
  Owned<WebKitSettings> settings(webkit_settings_new());
  webkit_settings_set_hardware_acceleration_policy(
      settings.get(), graphics_processor ? WEBKIT_HARDWARE_ACCELERATION_POLICY_ALWAYS
                                         : WEBKIT_HARDWARE_ACCELERATION_POLICY_NEVER);
  // Every new window is asked about, so none is held back before.
  webkit_settings_set_javascript_can_open_windows_automatically(settings.get(), TRUE);
  // For "Inspect" in the page's menu.
  webkit_settings_set_enable_developer_extras(settings.get(), TRUE);
  TurnOffLookingAhead(settings.get());
  return settings;
}

}  // namespace

Engine::Engine(EngineGround ground, const Callbacks::Runner& runner)
    : ground_(std::move(ground)),
      settings_(ElementSettings::Load(Folder() + "/engine.ini")),
      // A tool's pictures of a page are made of the buffers that a graphics processor would share.
      graphics_processor_(ground_.driven || FindGraphicsProcessor()),
      context_(MakeContext(ground_, CookieStore())),
      downloads_(context_.get(), runner),
      plain_(Folder() + "/rules", runner) {
  view_settings_ = MakeViewSettings(graphics_processor_);
  ApplySettings();
  // To be said before there is a view.
  if (ground_.driven) webkit_web_context_set_automation_allowed(context_.get(), TRUE);
  // A message, to which nobody listens, starts the page's process: it comes up while the program does.
  first_view_.reset(GTK_WIDGET(g_object_ref_sink(NewView(false))));
  webkit_web_view_send_message_to_page(WEBKIT_WEB_VIEW(first_view_.get()),
                                       webkit_user_message_new("start", nullptr), nullptr, nullptr, nullptr);
}

void Engine::ApplySettings() {
  settings_.Apply(view_settings_.get());
  settings_.ApplyTo(webkit_web_context_get_website_data_manager(context_.get()));
  ApplyProxy();
  const auto tell = [this] {
    if (GuardChanged) GuardChanged();
  };
  settings_.https_only ? plain_.Prepare(tell) : tell();
}

Owned<WebKitSettings> Engine::SettingsForOwnScript() const {
  Owned<WebKitSettings> settings(MakeViewSettings(graphics_processor_));
  settings_.Apply(settings.get());
  if (settings_.scripts) return settings;
  webkit_settings_set_enable_javascript(settings.get(), TRUE);
  webkit_settings_set_enable_javascript_markup(settings.get(), FALSE);
  return settings;
}

// Each view is guarded for itself.
GtkWidget* Engine::MakeRelatedView(WebKitWebView* opener) {
  const Owned<WebKitWebsitePolicies> policies(MakePolicies());
  const Owned<WebKitUserContentManager> content(webkit_user_content_manager_new());
  return GTK_WIDGET(g_object_new(WEBKIT_TYPE_WEB_VIEW, "related-view", opener, "settings",
                                 view_settings_.get(), "website-policies", policies.get(),
                                 "user-content-manager", content.get(), nullptr));
}

GtkWidget* Engine::NewView(bool window) {
  const Owned<WebKitWebsitePolicies> policies(MakePolicies());
  return GTK_WIDGET(g_object_new(WEBKIT_TYPE_WEB_VIEW, "web-context", context_.get(), "settings",
                                 view_settings_.get(), "website-policies", policies.get(),
                                 "is-controlled-by-automation", ground_.driven,
                                 "automation-presentation-type",
                                 window ? WEBKIT_AUTOMATION_BROWSING_CONTEXT_PRESENTATION_WINDOW
                                        : WEBKIT_AUTOMATION_BROWSING_CONTEXT_PRESENTATION_TAB,
                                 nullptr));
}

GtkWidget* Engine::MakeView(bool window) {
  if (!first_view_ || window) return NewView(window);
  GtkWidget* view = first_view_.release();
  g_object_force_floating(G_OBJECT(view));
  return view;
}

void Engine::Change(const ElementSettings& settings) {
  settings_ = settings;
  ApplySettings();
  settings_.Save(Folder() + "/engine.ini");
}

void Engine::Trust(GTlsCertificate* certificate, const std::string& host) {
  webkit_web_context_allow_tls_certificate_for_host(context_.get(), certificate, host.c_str());
  trusted_.insert(host);
}

bool Engine::PromisedHttps(const std::string& host) const {
  return ::PromisedHttps(PromisesFolder(ground_) + "/hsts-storage.sqlite", host);
}

void Engine::SetOffline(bool offline) {
  if (offline == offline_) return;
  offline_ = offline;
  ApplyProxy();
}

// Every request of every page goes by the proxy; offline, that one leads nowhere.
void Engine::ApplyProxy() {
  WebKitWebsiteDataManager* data = webkit_web_context_get_website_data_manager(context_.get());
  offline_ ? ElementSettings::LeadNowhere(data) : settings_.ApplyProxy(data);
}
