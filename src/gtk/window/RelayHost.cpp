#include "gtk/window/RelayHost.h"

#include <utility>

#include "platform/Text.h"

RelayHost::RelayHost(std::shared_ptr<TaskBarEntry> entry, Window& scene)
    : entry_(std::move(entry)), scene_(scene) {
  entry_->relay = &scene;
  RelayHost::Caption();
}

RelayHost::~RelayHost() { entry_->relay = nullptr; }

void RelayHost::Caption() {
  if (!entry_->frame) return;
  gtk_window_set_title(GTK_WINDOW(entry_->frame), Text::ForTitleBar(scene_.Caption()).c_str());
}

void RelayHost::State() {
  if (entry_->frame && scene_.WindowState == Window::Minimised) gtk_window_iconify(GTK_WINDOW(entry_->frame));
}

void RelayHost::Focus() {
  if (entry_->frame) gtk_window_present_with_time(GTK_WINDOW(entry_->frame), gtk_get_current_event_time());
}
