#pragma once

#include <webkit2/webkit2.h>

#include <memory>
#include <string>
#include <vector>

#include "gtk/base/Callbacks.h"
#include "gtk/engine/Download.h"

// Hears of downloads. Must leave before it ends.
class DownloadListener {
 public:
  virtual ~DownloadListener() = default;
  // `view` is where it began; none where that isn't known.
  virtual void Begun(Download& download, WebKitWebView* view) = 0;
  // It has gone on, or has come to its end.
  virtual void Changed(Download& download) = 0;
  // Nothing is known of it any more.
  virtual void Forgotten(Download& download) = 0;
};

// All downloads of the program, running and ended, until they are forgotten. They need no page.
class Downloads {
 public:
  Downloads(WebKitWebContext* context, Callbacks::Runner runner);
  Downloads(const Downloads&) = delete;

  void Listen(DownloadListener& listener) { listeners_.push_back(&listener); }
  void Leave(DownloadListener& listener) { std::erase(listeners_, &listener); }

  // Those that haven't been forgotten, oldest first.
  const std::vector<std::shared_ptr<Download>>& All() const { return all_; }
  // Drops an ended one from the list; a running one ends, and nothing of it is left on the disk.
  void Forget(Download& download);

  // Begins a download of a page's into a file that the user has named, and may have agreed to replace.
  void FetchTo(WebKitWebView* view, const std::string& uri, const std::string& path);
  // Begins one that belongs to no page.
  void Fetch(const std::string& uri);
  // A fetch of the element's own, which users don't see. The caller says where to, and ends it.
  Owned<WebKitDownload> FetchUnseen(const char* uri);

 private:
  void Begin(WebKitDownload* download);

  WebKitWebContext* context_;
  Callbacks::Runner runner_;
  std::vector<DownloadListener*> listeners_;
  std::vector<std::shared_ptr<Download>> all_;
  Callbacks callbacks_;
};
