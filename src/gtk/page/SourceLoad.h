#pragma once

#include <webkit2/webkit2.h>

#include <functional>
#include <string>

#include "gtk/base/Callbacks.h"
#include "gtk/base/GObjects.h"
#include "gtk/page/text/LoadErrors.h"

class Engine;

// Gets a page's source as the server sent it: from the page itself where it is the one on show, else once
// more. When the object goes, nothing is told any more.
class SourceLoad {
 public:
  using Done = std::function<void(const std::string& html)>;
  using Failed = std::function<void(const ErrorPage& error)>;

  // `shown`: what the page on show was loaded from where that page has this address and is none of the
  // element's own; else none.
  SourceLoad(Engine& engine, const std::string& uri, WebKitWebResource* shown, Done done, Failed failed,
             Callbacks::Runner runner);
  SourceLoad(const SourceLoad&) = delete;
  ~SourceLoad();

 private:
  std::string Address() const { return "view-source:" + uri_; }
  void ReadShown(WebKitWebResource* resource);
  void TakeShown(WebKitWebResource* resource, GAsyncResult* result);
  void ReadElsewhere();
  void ReadFile();
  void Fetch();
  void SetDestination(WebKitDownload* download);
  void TakeFetched(WebKitDownload* download);
  void Tell(const std::string& bytes, const std::string& encoding);
  void Fail(const ErrorPage& error);
  void Fail(const LoadFault& fault);
  Owned<WebKitDownload> Ended();

  Engine& engine_;
  std::string uri_;
  Done done_;
  Failed failed_;
  std::string temporary_;
  Owned<GCancellable> cancel_;
  Owned<WebKitDownload> download_;
  Callbacks callbacks_;
};
