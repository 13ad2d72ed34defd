#include "gtk/page/DownloadBar.h"

#include <algorithm>
#include <string>

#include "gtk/page/DownloadRow.h"

namespace {

// Ended downloads beyond these aren't kept.
constexpr size_t MostRows = 20;
// How long one that has come well stays: milliseconds.
constexpr unsigned Stays = 10000;

auto IsRowOf(const Download& download) {
  return [&download](const auto& row) { return &row->Shown() == &download; };
}

Owned<GtkWidget> Keep(GtkWidget* widget) { return Owned<GtkWidget>(GTK_WIDGET(g_object_ref_sink(widget))); }

}  // namespace

DownloadBar::DownloadBar(Downloads& downloads, const Callbacks::Runner& runner)
    : downloads_(downloads),
      runner_(runner),
      box_(Keep(gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 0))),
      more_(Keep(gtk_button_new())),
      callbacks_(runner) {
  gtk_style_context_add_class(gtk_widget_get_style_context(box_.get()), "toolbar");
  gtk_box_pack_end(GTK_BOX(box_.get()), more_.get(), FALSE, FALSE, 0);
  callbacks_.On<void(GtkWidget*)>(more_.get(), "clicked", [this](auto*) {
    if (More) More();
  });
  // What is on show is this bar's own business.
  gtk_widget_set_no_show_all(box_.get(), TRUE);
  gtk_widget_set_no_show_all(more_.get(), TRUE);
  downloads_.Listen(*this);
}

DownloadBar::~DownloadBar() { downloads_.Leave(*this); }

void DownloadBar::Show(Download& download) {
  auto row = std::make_unique<DownloadRow>(download, runner_);
  row->Closed = [this, &download] { downloads_.Forget(download); };
  gtk_box_pack_start(GTK_BOX(box_.get()), row->Widget(), TRUE, TRUE, 0);
  rows_.push_back(std::move(row));
  const auto ended =
      std::find_if(rows_.begin(), rows_.end(), [](const auto& one) { return !one->Shown().Running(); });
  if (rows_.size() > MostRows && ended != rows_.end()) downloads_.Forget((*ended)->Shown());
  Update();
}

std::vector<Download*> DownloadBar::Shown() const {
  std::vector<Download*> shown;
  for (const auto& row : rows_) shown.push_back(&row->Shown());
  return shown;
}

void DownloadBar::Changed(Download& download) {
  const auto row = std::find_if(rows_.begin(), rows_.end(), IsRowOf(download));
  if (row == rows_.end()) return;
  (*row)->Update();
  Update();
  if (download.Now() != Download::State::Saved) return;
  callbacks_.After(Stays, [this, weak = download.weak_from_this()] {
    if (const auto saved = weak.lock()) downloads_.Forget(*saved);
  });
}

void DownloadBar::Forgotten(Download& download) {
  std::erase_if(rows_, IsRowOf(download));
  Update();
}

void DownloadBar::Update() {
  const auto running =
      std::find_if(rows_.rbegin(), rows_.rend(), [](const auto& row) { return row->Shown().Running(); });
  const DownloadRow* front = running != rows_.rend() ? running->get()
                             : rows_.empty()         ? nullptr
                                                     : rows_.back().get();
  for (const auto& row : rows_) gtk_widget_set_visible(row->Widget(), row.get() == front);
  gtk_button_set_label(GTK_BUTTON(more_.get()), (std::to_string(rows_.size() - 1) + " more…").c_str());
  gtk_widget_set_visible(more_.get(), rows_.size() > 1);
  gtk_widget_set_visible(box_.get(), front != nullptr);
}
