#pragma once

#include <webkit2/webkit2.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "gtk/base/Callbacks.h"
#include "gtk/base/GObjects.h"

// Keeps views from pages that come without encryption, whoever leads there: the engine turns the load down
// before anything is asked for. What a page is made of isn't kept from it.
class PlainGuard {
 public:
  // `folder` is where the engine keeps the rule in its own form.
  PlainGuard(std::string folder, const Callbacks::Runner& runner)
      : folder_(std::move(folder)), callbacks_(runner) {}

  // Gets ready to guard; `ready` runs once that is so, at once where it is already, and never where it fails.
  void Prepare(std::function<void()> ready);
  bool Ready() const { return filter_ != nullptr; }
  // `known` runs once Prepare has come to an end, be it that it fails; at once where it has.
  void Await(std::function<void()> known);
  // Where it isn't ready, nothing is guarded.
  void Guard(WebKitWebView* view, bool guarded) const;

 private:
  struct Unreference {
    void operator()(WebKitUserContentFilter* filter) const { webkit_user_content_filter_unref(filter); }
  };

  std::string folder_;
  Owned<WebKitUserContentFilterStore> store_;
  std::unique_ptr<WebKitUserContentFilter, Unreference> filter_;
  std::function<void()> ready_;
  bool settled_ = false;
  std::vector<std::function<void()>> waiting_;
  Callbacks callbacks_;
};
