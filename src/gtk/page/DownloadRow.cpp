#include "gtk/page/DownloadRow.h"

#include <utility>

#include "gtk/base/FileManager.h"
#include "gtk/engine/Download.h"
#include "platform/WebAddress.h"

namespace {

std::string Size(guint64 bytes) { return TakeText(g_format_size(bytes)); }

std::string NameOf(const std::string& path) { return path.substr(path.rfind('/') + 1); }

}  // namespace

DownloadRow::DownloadRow(Download& download, Callbacks::Runner runner)
    : download_(download),
      row_(GTK_WIDGET(g_object_ref_sink(gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 6)))),
      label_(gtk_label_new("A download begins")),
      bar_(gtk_progress_bar_new()),
      callbacks_(std::move(runner)) {
  gtk_style_context_add_class(gtk_widget_get_style_context(row_.get()), "toolbar");
  gtk_label_set_ellipsize(GTK_LABEL(label_), PANGO_ELLIPSIZE_MIDDLE);
  gtk_label_set_xalign(GTK_LABEL(label_), 0);
  gtk_widget_set_valign(bar_, GTK_ALIGN_CENTER);
  gtk_box_pack_start(GTK_BOX(row_.get()), label_, TRUE, TRUE, 6);
  gtk_box_pack_start(GTK_BOX(row_.get()), bar_, FALSE, FALSE, 0);
  cancel_ = AddButton("Cancel", [this] { download_.Cancel(); });
  open_ = AddButton("Show in folder", [this] {
    FileManager::Show(download_.Path(), callbacks_, [this](const std::string& reason) { Tell(reason); });
  });
  close_ = AddButton("Close", [this] {
    // What is told ends this row.
    if (const auto closed = Closed) closed();
  });
  gtk_widget_show_all(row_.get());
  Update();
}

GtkWidget* DownloadRow::AddButton(const char* text, std::function<void()> pressed) {
  GtkWidget* button = gtk_button_new_with_label(text);
  gtk_box_pack_start(GTK_BOX(row_.get()), button, FALSE, FALSE, 0);
  callbacks_.On<void(GtkWidget*)>(button, "clicked", [pressed = std::move(pressed)](auto*) { pressed(); });
  return button;
}

void DownloadRow::Update() {
  const Download::State state = download_.Now();
  gtk_widget_set_visible(bar_, state == Download::State::Running);
  gtk_widget_set_visible(cancel_, state == Download::State::Running);
  gtk_widget_set_visible(open_, state == Download::State::Saved);
  gtk_widget_set_visible(close_, state != Download::State::Running);
  switch (state) {
    case Download::State::Running:
      return ShowProgress();
    case Download::State::Saved:
      return Tell("Saved as " + download_.Path());
    case Download::State::Failed:
      const std::string what =
          download_.Path().empty() ? WebAddress::WithoutUser(download_.Uri()) : download_.Path();
      return Tell("\"" + what + "\" wasn't downloaded: " + download_.Reason());
  }
}

void DownloadRow::ShowProgress() {
  if (download_.Path().empty()) return;
  std::string text = NameOf(download_.Path());
  if (download_.Received() > 0) {
    text += "  " + Size(download_.Received());
    if (download_.Length() > 0) {
      text += " of " + Size(download_.Length());
      gtk_progress_bar_set_fraction(GTK_PROGRESS_BAR(bar_), download_.Share());
    } else {
      gtk_progress_bar_pulse(GTK_PROGRESS_BAR(bar_));
    }
  }
  gtk_label_set_text(GTK_LABEL(label_), text.c_str());
}

void DownloadRow::Tell(const std::string& text) {
  gtk_label_set_text(GTK_LABEL(label_), text.c_str());
  gtk_widget_set_tooltip_text(label_, text.c_str());
}
