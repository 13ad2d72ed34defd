#include "gtk/page/FullScreen.h"

#include <utility>

namespace {

constexpr unsigned NoticeMilliseconds = 4000;
constexpr int NoticeMargin = 24;  // pixels

}  // namespace

FullScreen::FullScreen(GtkWidget* place, GtkWidget* content, Callbacks::Runner runner)
    : place_(Share(place)), content_(Share(content)), callbacks_(std::move(runner)) {}

void FullScreen::Enter(const std::string& title, const std::string& notice) {
  if (On()) return Tell(notice);
  GtkWidget* from = gtk_widget_get_toplevel(place_.get());
  if (!GTK_IS_WINDOW(from)) return;
  window_ = gtk_window_new(GTK_WINDOW_TOPLEVEL);
  gtk_window_set_title(GTK_WINDOW(window_), title.c_str());
  gtk_window_set_transient_for(GTK_WINDOW(window_), GTK_WINDOW(from));
  gtk_window_set_skip_taskbar_hint(GTK_WINDOW(window_), TRUE);
  gtk_window_set_decorated(GTK_WINDOW(window_), FALSE);
  callbacks_.On<gboolean(GtkWidget*, GdkEventKey*)>(
      window_, "key-press-event",
      [this](auto*, GdkEventKey* event) -> gboolean { return Key && Key(*event); });
  callbacks_.On<gboolean(GtkWidget*, GdkEvent*)>(window_, "delete-event", [this](auto*, auto*) -> gboolean {
    if (Closed) Closed();
    return TRUE;
  });
  callbacks_.On<gboolean(GtkWidget*, GdkEvent*)>(window_, "map-event", [](GtkWidget* window, auto*) {
    gdk_window_focus(gtk_widget_get_window(window), GDK_CURRENT_TIME);
    return FALSE;
  });
  Show();
  Tell(notice);
  Cover(from);
}

// The monitor that the window is on, also where nobody manages windows.
void FullScreen::Cover(GtkWidget* from) {
  GdkDisplay* display = gtk_widget_get_display(from);
  GdkMonitor* monitor = gdk_display_get_monitor_at_window(display, gtk_widget_get_window(from));
  GdkRectangle all{};
  gdk_monitor_get_geometry(monitor, &all);
  gtk_window_set_default_size(GTK_WINDOW(window_), all.width, all.height);
  gtk_window_move(GTK_WINDOW(window_), all.x, all.y);
  for (int n = 0; n < gdk_display_get_n_monitors(display); ++n)
    if (gdk_display_get_monitor(display, n) == monitor)
      gtk_window_fullscreen_on_monitor(GTK_WINDOW(window_), gtk_widget_get_screen(window_), n);
  gtk_window_present(GTK_WINDOW(window_));
}

void FullScreen::Show() {
  GtkWidget* overlay = gtk_overlay_new();
  GtkWidget* label = notice_ = gtk_label_new(nullptr);
  gtk_style_context_add_class(gtk_widget_get_style_context(label), "osd");
  gtk_widget_set_halign(label, GTK_ALIGN_CENTER);
  gtk_widget_set_valign(label, GTK_ALIGN_START);
  gtk_widget_set_margin_top(label, NoticeMargin);
  gtk_container_add(GTK_CONTAINER(window_), overlay);
  gtk_container_remove(GTK_CONTAINER(place_.get()), content_.get());
  gtk_container_add(GTK_CONTAINER(overlay), content_.get());
  gtk_overlay_add_overlay(GTK_OVERLAY(overlay), label);
  gtk_overlay_set_overlay_pass_through(GTK_OVERLAY(overlay), label, TRUE);
  gtk_widget_show(overlay);
}

void FullScreen::Tell(const std::string& notice) {
  callbacks_.Cancel(hiding_);
  gtk_label_set_text(GTK_LABEL(notice_), notice.c_str());
  gtk_widget_show(notice_);
  hiding_ = callbacks_.After(NoticeMilliseconds, [this] {
    hiding_ = 0;
    gtk_widget_hide(notice_);
  });
}

void FullScreen::Leave() {
  GtkWidget* window = std::exchange(window_, nullptr);
  if (!window) return;
  callbacks_.Cancel(std::exchange(hiding_, 0));
  callbacks_.Off(window);
  gtk_container_remove(GTK_CONTAINER(gtk_widget_get_parent(content_.get())), content_.get());
  gtk_box_pack_start(GTK_BOX(place_.get()), content_.get(), TRUE, TRUE, 0);
  gtk_widget_destroy(window);
}
