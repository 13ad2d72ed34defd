#include "gtk/engine/Downloads.h"

#include <algorithm>
#include <utility>

namespace {

constexpr const char *UnseenKey = "unseen-download", *PathKey = "download-path";

}  // namespace

Downloads::Downloads(WebKitWebContext* context, Callbacks::Runner runner)
    : context_(context), runner_(runner), callbacks_(std::move(runner)) {
  callbacks_.On<void(WebKitWebContext*, WebKitDownload*)>(
      context, "download-started", [this](auto*, WebKitDownload* download) { Begin(download); });
}

void Downloads::Begin(WebKitDownload* started) {
  if (g_object_get_data(G_OBJECT(started), UnseenKey)) return;
  const auto download = all_.emplace_back(std::make_shared<Download>(started, runner_));
  if (const auto* path = static_cast<const char*>(g_object_get_data(G_OBJECT(started), PathKey)))
    download->SaveTo(path);
  download->Changed = [this, one = download.get()] {
    const auto keep = one->shared_from_this();
    for (DownloadListener* listener : std::vector(listeners_)) listener->Changed(*keep);
  };
  WebKitWebView* view = webkit_download_get_web_view(started);
  for (DownloadListener* listener : std::vector(listeners_)) listener->Begun(*download, view);
}

void Downloads::Forget(Download& download) {
  const auto keep = download.shared_from_this();
  if (std::erase(all_, keep) == 0) return;
  keep->Changed = nullptr;
  keep->Cancel();
  for (DownloadListener* listener : std::vector(listeners_)) listener->Forgotten(*keep);
}

void Downloads::FetchTo(WebKitWebView* view, const std::string& uri, const std::string& path) {
  const Owned<WebKitDownload> download(webkit_web_view_download_uri(view, uri.c_str()));
  g_object_set_data_full(G_OBJECT(download.get()), PathKey, g_strdup(path.c_str()), g_free);
}

void Downloads::Fetch(const std::string& uri) {
  const Owned<WebKitDownload> download(webkit_web_context_download_uri(context_, uri.c_str()));
}

Owned<WebKitDownload> Downloads::FetchUnseen(const char* uri) {
  Owned<WebKitDownload> download(webkit_web_context_download_uri(context_, uri));
  g_object_set_data(G_OBJECT(download.get()), UnseenKey, GINT_TO_POINTER(1));
  return download;
}
