#pragma once

#include <webkit2/webkit2.h>

#include <memory>
#include <vector>

class DownloadRow;
class Page;

// The downloads that began on a page, one row each, below it.
class DownloadBar {
 public:
  explicit DownloadBar(Page& page);
  DownloadBar(const DownloadBar&) = delete;
  ~DownloadBar();

  void Add(WebKitDownload* download);
  // The page closes: what is still under way goes on below another page, or ends where there is none.
  void HandOver();

  // A download of the element's own, which users don't see.
  static void KeepOut(WebKitDownload* download);
  static bool IsKeptOut(WebKitDownload* download);

 private:
  void Take(std::shared_ptr<DownloadRow> row);

  Page& page_;
  std::vector<std::shared_ptr<DownloadRow>> rows_;
};
