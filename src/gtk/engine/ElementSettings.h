#pragma once

#include <webkit2/webkit2.h>

#include <optional>
#include <string>
#include <vector>

// The browser element's own settings: what every page of the program goes by.
struct ElementSettings {
  enum class Proxy { System, None, ByHand };
  static constexpr int LeastFontSize = 0, MostFontSize = 36;  // pixels
  static constexpr int LeastZoom = 30, MostZoom = 300;        // per cent

  // The searches that the address field knows; see page/text/Search.
  std::string search = "https://html.duckduckgo.com/html/?q=%s";
  std::string keywords = "w https://en.wikipedia.org/w/index.php?search=%s";
  std::string home;  // an address as people type it; empty: the delivered start page
  Proxy proxy = Proxy::System;
  std::string proxy_address;  // "host:port" or a full address; used by hand only
  bool scripts = true;
  bool https_only = false;          // the user is asked before each page that comes without encryption
  bool tracking_prevention = true;  // sites that follow the user from one site to another are hampered
  int minimum_font_size = 0;        // 0: none
  int zoom = 100;
  std::vector<std::string> window_sites;  // whose pages may open windows without a press
  bool no_default_browser = false;        // the user doesn't want the program to be the default one

  // A file that is missing leaves everything as delivered, a wrong value only itself.
  static ElementSettings Load(const std::string& path);
  // Fails where the file can't be written.
  void Save(const std::string& path) const;

  // To what all pages share. The zoom is each page's own.
  void Apply(WebKitSettings* settings) const;
  void ApplyTo(WebKitWebsiteDataManager* manager) const;
  // A proxy by hand that is none lets nothing through.
  void ApplyProxy(WebKitWebsiteDataManager* manager) const;
  // Nothing comes through from now on.
  static void LeadNowhere(WebKitWebsiteDataManager* manager);
  // The proxy named by hand, where it is none.
  std::optional<std::string> BadProxy() const;
};
