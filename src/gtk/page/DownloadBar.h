#pragma once

#include <memory>
#include <vector>

#include "gtk/base/Callbacks.h"
#include "gtk/engine/Downloads.h"

class DownloadRow;

// The downloads that are shown below one page, a row each. They run without it.
class DownloadBar : private DownloadListener {
 public:
  DownloadBar(Downloads& downloads, const Callbacks::Runner& runner);
  DownloadBar(const DownloadBar&) = delete;
  ~DownloadBar() override;

  GtkWidget* Widget() { return box_.get(); }
  void Show(Download& download);
  // Those that have a row here, oldest first.
  std::vector<Download*> Shown() const;

 private:
  void Begun(Download&, WebKitWebView*) override {}
  void Changed(Download& download) override;
  void Forgotten(Download& download) override;

  Downloads& downloads_;
  Callbacks::Runner runner_;
  Owned<GtkWidget> box_;
  std::vector<std::unique_ptr<DownloadRow>> rows_;
};
