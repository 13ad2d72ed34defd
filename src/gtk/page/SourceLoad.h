#pragma once

#include <webkit2/webkit2.h>

#include <functional>
#include <memory>
#include <string>

#include "gtk/base/GObjects.h"
#include "gtk/page/text/ErrorPage.h"

class Failure;
class Page;

// Gets a page's source as the server sent it: from the page itself where it is the one on show, else once
// more. When the object goes, nothing is told any more.
class SourceLoad {
 public:
  using Done = std::function<void(const std::string& html)>;
  using Failed = std::function<void(const ErrorPage& error)>;

  // `shown`: the page on show has this address and is no page of the element's own.
  static std::unique_ptr<SourceLoad> Begin(Page& page, const std::string& uri, bool shown, Done done,
                                           Failed failed);
  SourceLoad(const SourceLoad&) = delete;
  ~SourceLoad();

 private:
  SourceLoad(std::string uri, Done done, Failed failed);

  void ReadShown(WebKitWebResource* resource);
  void ReadFile();
  void Fetch();
  void Tell(const std::string& bytes, const std::string& encoding);
  void Fail(const ErrorPage& error);
  void FailReading(const Failure& failure);
  Owned<WebKitDownload> Ended();

  static gboolean OnIdle(gpointer self);
  static void OnShown(GObject* resource, GAsyncResult* result, gpointer self);
  static gboolean OnDestination(WebKitDownload* download, const char*, gpointer self);
  static void OnFetchFailed(WebKitDownload* download, GError* error, gpointer self);
  static void OnFetched(WebKitDownload* download, gpointer self);

  std::string uri_;
  Done done_;
  Failed failed_;
  Page* page_ = nullptr;
  std::string engine_folder_, temporary_;
  Owned<GCancellable> cancel_;
  Owned<WebKitDownload> download_;
  unsigned idle_ = 0;
};
