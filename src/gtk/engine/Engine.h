#pragma once

#include <webkit2/webkit2.h>

#include <functional>
#include <set>
#include <string>
#include <utility>

#include "gtk/base/Callbacks.h"
#include "gtk/base/GObjects.h"
#include "gtk/engine/Downloads.h"
#include "gtk/engine/ElementSettings.h"
#include "gtk/engine/PlainGuard.h"

// Where the engine keeps things, and what it keeps its pages in.
struct EngineGround {
  std::string folder;     // of cookies, storage and settings
  std::string cache;      // of what can be fetched again
  bool sandboxed = true;  // where not, pages reach whatever the user does
  bool driven = false;    // a tool may drive the pages
};

// What loads and shows pages, for the whole program: the context with its sandbox, cookies and cache, the
// settings, the proxy, whether the program works offline, and the downloads. Knows no page.
class Engine {
 public:
  // The scheme and the origin of the element's own pages: no web page shares it, is let into it, or may lead
  // to it.
  static constexpr const char* OwnScheme = "marlowick";
  static constexpr const char* OwnOrigin = "marlowick:own";

  // What the engine is told by way of the environment where there is no graphics processor.
  static constexpr std::pair<const char*, const char*> NoGraphicsProcessor[] = {
      {"WEBKIT_DISABLE_DMABUF_RENDERER", "1"}, {"WEBKIT_WEB_RENDER_DEVICE_FILE", "/dev/null"}};

  // Its callbacks go through `runner`.
  Engine(EngineGround ground, const Callbacks::Runner& runner);
  Engine(const Engine&) = delete;

  WebKitWebContext* Context() { return context_.get(); }
  const std::string& Folder() const { return ground_.folder; }
  // Whether pages run in a sandbox.
  bool Sandboxed() const { return ground_.sandboxed; }
  // The file that keeps the cookies.
  std::string CookieStore() const { return Folder() + "/cookies.sqlite"; }
  Downloads& Fetches() { return downloads_; }
  bool Driven() const { return ground_.driven; }

  // A view without an opener, floating; `window`: not in a tab. The first one was made ahead, with its
  // process.
  GtkWidget* MakeView(bool window);
  // A view for a window that the page in `opener` has asked for, floating.
  GtkWidget* MakeRelatedView(WebKitWebView* opener);
  // For a view while a script of the program's own runs in it: with scripts off, no page's runs with it.
  Owned<WebKitSettings> SettingsForOwnScript() const;

  const ElementSettings& Settings() const { return settings_; }
  // Takes new settings into use, then keeps them. Fails where they can't be written; they are in use then.
  void Change(const ElementSettings& settings);

  // True for what is to be asked about before it comes without encryption.
  bool GuardsPlain() const { return settings_.https_only; }
  PlainGuard& Plain() { return plain_; }
  // Views are to be guarded anew, or no longer.
  std::function<void()> GuardChanged;

  // Takes a certificate for its host's own, for this session.
  void Trust(GTlsCertificate* certificate, const std::string& host);
  bool Trusts(const std::string& host) const { return trusted_.contains(host); }
  // The host has promised to be there by https: only.
  bool PromisedHttps(const std::string& host) const;

  bool Offline() const { return offline_; }
  void SetOffline(bool offline);

 private:
  GtkWidget* NewView(bool window);
  void ApplySettings();
  void ApplyProxy();

  const EngineGround ground_;
  ElementSettings settings_;
  const bool graphics_processor_;  // to be known before the context is made
  Owned<WebKitWebContext> context_;
  Owned<WebKitSettings> view_settings_;
  Owned<GtkWidget> first_view_;  // made ahead, until the first page takes it
  Downloads downloads_;
  PlainGuard plain_;
  std::set<std::string> trusted_;  // hosts
  bool offline_ = false;
};
