#include "gtk/page/DownloadBar.h"

#include <algorithm>

#include "gtk/page/DownloadRow.h"

namespace {

// Ended downloads beyond these make room for the page again.
constexpr size_t MostRows = 5;

auto IsRowOf(const Download& download) {
  return [&download](const auto& row) { return &row->Shown() == &download; };
}

}  // namespace

DownloadBar::DownloadBar(Downloads& downloads, const Callbacks::Runner& runner)
    : downloads_(downloads),
      runner_(runner),
      box_(GTK_WIDGET(g_object_ref_sink(gtk_box_new(GTK_ORIENTATION_VERTICAL, 0)))) {
  gtk_widget_show(box_.get());
  downloads_.Listen(*this);
}

DownloadBar::~DownloadBar() { downloads_.Leave(*this); }

void DownloadBar::Show(Download& download) {
  auto row = std::make_unique<DownloadRow>(download, runner_);
  row->Closed = [this, &download] { downloads_.Forget(download); };
  gtk_box_pack_start(GTK_BOX(box_.get()), row->Widget(), FALSE, TRUE, 0);
  rows_.push_back(std::move(row));
  const auto ended =
      std::find_if(rows_.begin(), rows_.end(), [](const auto& one) { return !one->Shown().Running(); });
  if (rows_.size() > MostRows && ended != rows_.end()) downloads_.Forget((*ended)->Shown());
}

std::vector<Download*> DownloadBar::Shown() const {
  std::vector<Download*> shown;
  for (const auto& row : rows_) shown.push_back(&row->Shown());
  return shown;
}

void DownloadBar::Changed(Download& download) {
  const auto row = std::find_if(rows_.begin(), rows_.end(), IsRowOf(download));
  if (row != rows_.end()) (*row)->Update();
}

void DownloadBar::Forgotten(Download& download) { std::erase_if(rows_, IsRowOf(download)); }
