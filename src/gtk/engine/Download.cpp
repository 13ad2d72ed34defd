#include "gtk/engine/Download.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <utility>

#include "gtk/page/text/Address.h"
#include "gtk/page/text/PageNames.h"

namespace {

// How much more must have come before it is told.
constexpr guint64 StepBytes = 64 * 1024;

std::string DownloadFolder() {
  const std::string named = TextOf(g_get_user_special_dir(G_USER_DIRECTORY_DOWNLOAD));
  std::string folder = named.empty() ? std::string(g_get_home_dir()) + "/Downloads" : named;
  if (g_mkdir_with_parents(folder.c_str(), 0755) == 0) return folder;
  return g_get_home_dir();
}

}  // namespace

Download::Download(WebKitDownload* download, Callbacks::Runner runner)
    : download_(::Share(download)), callbacks_(std::move(runner)) {
  callbacks_.On<gboolean(WebKitDownload*, const char*)>(download, "decide-destination",
                                                        [this](auto*, const char* suggested) {
                                                          Begin(TextOf(suggested));
                                                          return TRUE;
                                                        });
  callbacks_.On<void(WebKitDownload*, guint64)>(download, "received-data",
                                                [this](auto*, guint64) { Receive(); });
  callbacks_.On<void(WebKitDownload*, GError*)>(download, "failed", [this](auto*, GError* error) {
    const bool cancelled =
        g_error_matches(error, WEBKIT_DOWNLOAD_ERROR, WEBKIT_DOWNLOAD_ERROR_CANCELLED_BY_USER);
    Fail(cancelled ? "it was cancelled" : error->message);
  });
  callbacks_.On<void(WebKitDownload*)>(download, "finished", [this](auto*) { Finish(); });
}

Download::~Download() {
  Changed = nullptr;
  Cancel();
}

std::string Download::Uri() const {
  return TextOf(webkit_uri_request_get_uri(webkit_download_get_request(download_.get())));
}

guint64 Download::Length() const {
  WebKitURIResponse* response = webkit_download_get_response(download_.get());
  return response ? webkit_uri_response_get_content_length(response) : 0;
}

// Takes an unused name at once: another download may want the same one. 0, or the number of the error.
int Download::Reserve(const std::string& suggested) {
  const std::string folder = DownloadFolder();
  const std::string wanted = PageNames::FromFile(suggested);
  for (;;) {
    const std::string path = folder + "/" + PageNames::Unused(folder, wanted);
    const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (file < 0 && errno == EEXIST) continue;
    if (file < 0) return errno;
    path_ = path;
    return ::close(file) == 0 ? 0 : errno;
  }
}

void Download::Release() {
  held_ = false;
  if (Changed) Changed();
  if (const auto suggested = std::exchange(suggested_, std::nullopt)) Begin(*suggested);
}

// It stays held: nobody lists it among what was downloaded.
void Download::Refuse(const std::string& reason) {
  if (!Running()) return;
  held_ = true;
  Fail(reason);
  webkit_download_cancel(download_.get());
}

double Download::Speed() const {
  const double seconds = webkit_download_get_elapsed_time(download_.get());
  return seconds > 0 ? static_cast<double>(received_) / seconds : 0;
}

void Download::Begin(const std::string& suggested) {
  if (held_) {
    suggested_ = suggested;
    return;
  }
  if (!named_.empty()) {
    path_ = named_;
  } else if (const int error = Reserve(suggested)) {
    Fail("no file can be made for it in \"" + DownloadFolder() + "\": " + std::strerror(error));
    return webkit_download_cancel(download_.get());
  }
  webkit_download_set_allow_overwrite(download_.get(), TRUE);
  webkit_download_set_destination(download_.get(), Address::FromPath(path_).c_str());
  if (Changed) Changed();
}

void Download::Receive() {
  const guint64 received = webkit_download_get_received_data_length(download_.get());
  if (received < received_ + StepBytes) return;
  received_ = received;
  if (Changed) Changed();
}

void Download::Finish() {
  if (!Running()) return;
  state_ = State::Saved;
  received_ = webkit_download_get_received_data_length(download_.get());
  if (Changed) Changed();
}

// What has come so far is no file that anybody could use.
void Download::Fail(const std::string& reason) {
  if (!Running()) return;
  state_ = State::Failed;
  reason_ = reason;
  if (!path_.empty()) {
    // A file that was there before stays as it was.
    if (named_.empty()) ::unlink(path_.c_str());
    ::unlink((path_ + ".wkdownload").c_str());
  }
  if (Changed) Changed();
}

void Download::Cancel() {
  if (!Running()) return;
  Fail("it was cancelled");
  webkit_download_cancel(download_.get());
}
