#include "gtk/page/DownloadRow.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <utility>

#include "gtk/page/text/Address.h"
#include "gtk/page/text/PageNames.h"

namespace {

// How much more must have come before the row is drawn anew.
constexpr guint64 StepBytes = 64 * 1024;

std::string DownloadFolder() {
  const std::string named = TextOf(g_get_user_special_dir(G_USER_DIRECTORY_DOWNLOAD));
  const std::string folder = named.empty() ? std::string(g_get_home_dir()) + "/Downloads" : named;
  if (g_mkdir_with_parents(folder.c_str(), 0755) == 0) return folder;
  return g_get_home_dir();
}

std::string Size(guint64 bytes) { return TakeText(g_format_size(bytes)); }

std::string NameOf(const std::string& path) { return path.substr(path.rfind('/') + 1); }

}  // namespace

DownloadRow::DownloadRow(WebKitDownload* download, GtkWindow* window)
    : download_(Share(download)),
      row_(GTK_WIDGET(g_object_ref_sink(gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 6)))),
      label_(gtk_label_new("A download begins")),
      bar_(gtk_progress_bar_new()),
      window_(window) {
  gtk_style_context_add_class(gtk_widget_get_style_context(row_.get()), "toolbar");
  gtk_label_set_ellipsize(GTK_LABEL(label_), PANGO_ELLIPSIZE_MIDDLE);
  gtk_label_set_xalign(GTK_LABEL(label_), 0);
  gtk_widget_set_valign(bar_, GTK_ALIGN_CENTER);
  gtk_box_pack_start(GTK_BOX(row_.get()), label_, TRUE, TRUE, 6);
  gtk_box_pack_start(GTK_BOX(row_.get()), bar_, FALSE, FALSE, 0);
  cancel_ = AddButton("Cancel", G_CALLBACK(OnCancel));
  open_ = AddButton("Open folder", G_CALLBACK(OnOpenFolder));
  close_ = AddButton("Close", G_CALLBACK(OnClose));
  gtk_widget_show_all(row_.get());
  gtk_widget_hide(open_);
  gtk_widget_hide(close_);
  g_signal_connect(download, "decide-destination", G_CALLBACK(OnDestination), this);
  g_signal_connect(download, "received-data", G_CALLBACK(OnData), this);
  g_signal_connect(download, "failed", G_CALLBACK(OnFailed), this);
  g_signal_connect(download, "finished", G_CALLBACK(OnFinished), this);
}

DownloadRow::~DownloadRow() {
  g_signal_handlers_disconnect_by_data(download_.get(), this);
  if (running_) {
    webkit_download_cancel(download_.get());
    Drop();
  }
  gtk_widget_destroy(row_.get());
}

GtkWidget* DownloadRow::AddButton(const char* text, GCallback pressed) {
  GtkWidget* button = gtk_button_new_with_label(text);
  gtk_box_pack_start(GTK_BOX(row_.get()), button, FALSE, FALSE, 0);
  g_signal_connect(button, "clicked", pressed, this);
  return button;
}

void DownloadRow::LeaveBar() {
  GtkWidget* bar = gtk_widget_get_parent(row_.get());
  if (bar) gtk_container_remove(GTK_CONTAINER(bar), row_.get());
  window_ = nullptr;
}

// Takes an unused name at once: another download may want the same one.
bool DownloadRow::Reserve(const std::string& suggested) {
  const std::string folder = DownloadFolder();
  const std::string wanted = PageNames::FromTitle(suggested);
  for (;;) {
    path_ = folder + "/" + PageNames::Unused(folder, wanted);
    const int file = ::open(path_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (file >= 0) return ::close(file) == 0;
    if (errno != EEXIST) return false;
  }
}

void DownloadRow::Drop() {
  if (!path_.empty()) {
    ::unlink(path_.c_str());
    ::unlink((path_ + ".wkdownload").c_str());
  }
}

gboolean DownloadRow::OnDestination(WebKitDownload* download, const char* suggested, gpointer data) {
  auto* self = static_cast<DownloadRow*>(data);
  if (!self->Reserve(TextOf(suggested))) {
    const std::string reason = std::strerror(errno);
    const std::string path = std::exchange(self->path_, {});
    webkit_download_cancel(download);
    self->path_ = path;
    self->Fail("it can't be written: " + reason);
    self->path_.clear();
    return TRUE;
  }
  webkit_download_set_allow_overwrite(download, TRUE);
  webkit_download_set_destination(download, Address::FromPath(self->path_).c_str());
  gtk_label_set_text(GTK_LABEL(self->label_), NameOf(self->path_).c_str());
  return TRUE;
}

void DownloadRow::OnData(WebKitDownload* download, guint64, gpointer data) {
  auto* self = static_cast<DownloadRow*>(data);
  const guint64 received = webkit_download_get_received_data_length(download);
  if (received < self->shown_ + StepBytes) return;
  self->shown_ = received;
  WebKitURIResponse* response = webkit_download_get_response(download);
  const guint64 length = response ? webkit_uri_response_get_content_length(response) : 0;
  std::string text = NameOf(self->path_) + "  " + Size(received);
  if (length > 0) {
    text += " of " + Size(length);
    gtk_progress_bar_set_fraction(GTK_PROGRESS_BAR(self->bar_),
                                  webkit_download_get_estimated_progress(download));
  } else {
    gtk_progress_bar_pulse(GTK_PROGRESS_BAR(self->bar_));
  }
  gtk_label_set_text(GTK_LABEL(self->label_), text.c_str());
}

void DownloadRow::Fail(const std::string& reason) {
  running_ = false;
  const std::string what =
      path_.empty() ? TextOf(webkit_uri_request_get_uri(webkit_download_get_request(download_.get())))
                    : path_;
  gtk_label_set_text(GTK_LABEL(label_), ("\"" + what + "\" wasn't downloaded: " + reason).c_str());
  gtk_widget_set_tooltip_text(label_, gtk_label_get_text(GTK_LABEL(label_)));
  gtk_widget_hide(bar_);
  gtk_widget_hide(cancel_);
  gtk_widget_show(close_);
}

void DownloadRow::OnFailed(WebKitDownload*, GError* error, gpointer data) {
  auto* self = static_cast<DownloadRow*>(data);
  if (!self->running_) return;
  const bool cancelled =
      g_error_matches(error, WEBKIT_DOWNLOAD_ERROR, WEBKIT_DOWNLOAD_ERROR_CANCELLED_BY_USER);
  self->Drop();
  self->Fail(cancelled ? "it was cancelled" : error->message);
}

void DownloadRow::OnFinished(WebKitDownload*, gpointer data) {
  auto* self = static_cast<DownloadRow*>(data);
  if (!self->running_) return;
  self->running_ = false;
  const std::string text = "Saved as " + self->path_;
  gtk_label_set_text(GTK_LABEL(self->label_), text.c_str());
  gtk_widget_set_tooltip_text(self->label_, text.c_str());
  gtk_widget_hide(self->bar_);
  gtk_widget_hide(self->cancel_);
  gtk_widget_show(self->open_);
  gtk_widget_show(self->close_);
}

void DownloadRow::OnCancel(GtkWidget*, gpointer data) {
  webkit_download_cancel(static_cast<DownloadRow*>(data)->download_.get());
}

void DownloadRow::OnOpenFolder(GtkWidget*, gpointer data) {
  auto* self = static_cast<DownloadRow*>(data);
  const std::string folder = Address::FromPath(self->path_.substr(0, self->path_.rfind('/')));
  GError* error = nullptr;
  if (gtk_show_uri_on_window(self->window_, folder.c_str(), GDK_CURRENT_TIME, &error)) return;
  const OwnedError reason(error);
  gtk_label_set_text(GTK_LABEL(self->label_),
                     ("The folder of \"" + self->path_ + "\" can't be opened: " + reason->message).c_str());
}

void DownloadRow::OnClose(GtkWidget*, gpointer data) {
  const auto closed = static_cast<DownloadRow*>(data)->Closed;
  if (closed) closed();
}
