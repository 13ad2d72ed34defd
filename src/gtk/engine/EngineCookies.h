#pragma once

#include <webkit2/webkit2.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "gtk/base/Callbacks.h"
#include "gtk/base/GObjects.h"
#include "platform/CookieCache.h"

// The engine's cookies as entries.
//
// The first walk is the one of the start, before there is a page: it reads the store on the disk, as the
// engine would have to be waited for. All later ones ask the engine. Cookies of the session are entries while
// a page is open.
class EngineCookies : public CookieCache {
 public:
  struct Ground {
    WebKitCookieManager* manager;
    std::string store;                // the file on the disk
    std::function<bool()> has_pages;  // any page is open, whether the program's or outside it
    // Serves the pump until the work is done, or for so long that it can't be waited for.
    std::function<void(const std::function<bool()>& done)> wait;
  };

  EngineCookies(Ground ground, Callbacks::Runner runner);

  void Walk(const Visit& visit) override;
  void Delete(const std::vector<std::string>& source_names) override;

 private:
  struct FreeCookie {
    void operator()(SoupCookie* cookie) const { soup_cookie_free(cookie); }
  };
  using Cookie = std::unique_ptr<SoupCookie, FreeCookie>;
  // By their source names, so in the same order each time.
  using Cookies = std::multimap<std::string, Cookie>;

  Cookies Ask();
  void DeleteAll(const std::vector<SoupCookie*>& cookies);

  const Ground ground_;
  const Owned<WebKitCookieManager> manager_;
  bool walked_ = false;
  Callbacks callbacks_;
};
