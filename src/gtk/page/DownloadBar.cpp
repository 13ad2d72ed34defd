#include "gtk/page/DownloadBar.h"

#include <algorithm>
#include <utility>

#include "gtk/engine/BrowserWorld.h"
#include "gtk/page/DownloadRow.h"
#include "gtk/page/Page.h"

namespace {

constexpr const char* OwnKey = "own-download";
// Finished downloads beyond these make room for the page again.
constexpr size_t MostRows = 5;

}  // namespace

DownloadBar::DownloadBar(Page& page) : page_(page) {}
DownloadBar::~DownloadBar() = default;

void DownloadBar::Add(WebKitDownload* download) {
  Take(std::make_shared<DownloadRow>(download, page_.Window()));
}

void DownloadBar::Take(std::shared_ptr<DownloadRow> row) {
  page_.AddFoot(row->Widget());
  row->Closed = [this, closed = row.get()] {
    std::erase_if(rows_, [closed](const auto& one) { return one.get() == closed; });
  };
  rows_.push_back(std::move(row));
  const auto finished =
      std::find_if(rows_.begin(), rows_.end(), [](const auto& one) { return !one->Running(); });
  if (rows_.size() > MostRows && finished != rows_.end()) rows_.erase(finished);
}

void DownloadBar::HandOver() {
  Page* heir = page_.World().Pages().empty() ? nullptr : page_.World().Pages().front();
  for (const auto& row : std::exchange(rows_, {})) {
    if (!heir || !row->Running()) continue;
    row->LeaveBar();
    heir->Downloads().Take(row);
  }
}

void DownloadBar::KeepOut(WebKitDownload* download) {
  g_object_set_data(G_OBJECT(download), OwnKey, GINT_TO_POINTER(1));
}

bool DownloadBar::IsKeptOut(WebKitDownload* download) {
  return g_object_get_data(G_OBJECT(download), OwnKey) != nullptr;
}
