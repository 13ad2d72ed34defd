#pragma once

#include <gtk/gtk.h>

#include <functional>
#include <string>

#include "gtk/base/Callbacks.h"
#include "gtk/base/GObjects.h"

class Download;

// One download on show: how far it is, and what can be done with it.
class DownloadRow {
 public:
  DownloadRow(Download& download, Callbacks::Runner runner);
  DownloadRow(const DownloadRow&) = delete;
  ~DownloadRow() { gtk_widget_destroy(row_.get()); }

  // The user has put the row of an ended download away. The row may be destroyed within.
  std::function<void()> Closed;

  GtkWidget* Widget() { return row_.get(); }
  Download& Shown() { return download_; }
  // The download has changed.
  void Update();

 private:
  GtkWidget* AddButton(const char* text, std::function<void()> pressed);
  void ShowProgress();
  void Tell(const std::string& text);

  Download& download_;
  Owned<GtkWidget> row_;
  GtkWidget *label_, *bar_, *cancel_, *open_, *close_;
  Callbacks callbacks_;
};
