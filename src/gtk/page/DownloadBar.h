#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "gtk/base/Callbacks.h"
#include "gtk/engine/Downloads.h"

class DownloadRow;

// The downloads that are shown below one page, on one line: the newest that runs, or else the newest, and how
// many more there are. They run without it; what has come well leaves it by itself.
class DownloadBar : private DownloadListener {
 public:
  DownloadBar(Downloads& downloads, const Callbacks::Runner& runner);
  DownloadBar(const DownloadBar&) = delete;
  ~DownloadBar() override;

  // The user wants to see them all.
  std::function<void()> More;

  GtkWidget* Widget() { return box_.get(); }
  void Show(Download& download);
  // Those that have a row here, oldest first.
  std::vector<Download*> Shown() const;

 private:
  void Begun(Download&, WebKitWebView*) override {}
  void Changed(Download& download) override;
  void Forgotten(Download& download) override;
  void Update();

  Downloads& downloads_;
  Callbacks::Runner runner_;
  Owned<GtkWidget> box_, more_;
  std::vector<std::unique_ptr<DownloadRow>> rows_;
  Callbacks callbacks_;
};
