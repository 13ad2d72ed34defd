#pragma once

#include <webkit2/webkit2.h>

#include <functional>
#include <string>

#include "gtk/base/GObjects.h"

// One download: how far it is, and what can be done with it. When the row goes, a download that still runs
// ends, and nothing of it is left on the disk.
class DownloadRow {
 public:
  DownloadRow(WebKitDownload* download, GtkWindow* window);
  DownloadRow(const DownloadRow&) = delete;
  ~DownloadRow();

  // The user has put the row away. The row may be destroyed within.
  std::function<void()> Closed;

  GtkWidget* Widget() { return row_.get(); }
  bool Running() const { return running_; }
  void LeaveBar();

 private:
  GtkWidget* AddButton(const char* text, GCallback pressed);
  bool Reserve(const std::string& suggested);
  void Drop();
  void Fail(const std::string& reason);

  static gboolean OnDestination(WebKitDownload*, const char* suggested, gpointer self);
  static void OnData(WebKitDownload*, guint64 length, gpointer self);
  static void OnFailed(WebKitDownload*, GError* error, gpointer self);
  static void OnFinished(WebKitDownload*, gpointer self);
  static void OnCancel(GtkWidget*, gpointer self);
  static void OnOpenFolder(GtkWidget*, gpointer self);
  static void OnClose(GtkWidget*, gpointer self);

  Owned<WebKitDownload> download_;
  Owned<GtkWidget> row_;
  GtkWidget *label_, *bar_, *cancel_, *open_, *close_;
  GtkWindow* window_;  // only for the call that opens a folder; may be none
  std::string path_;   // empty before there is a file
  guint64 shown_ = 0;  // bytes that the row tells of
  bool running_ = true;
};
