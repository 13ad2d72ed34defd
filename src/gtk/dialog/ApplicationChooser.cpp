#include "gtk/dialog/ApplicationChooser.h"

#include <memory>
#include <vector>

#include "gtk/base/Applications.h"
#include "gtk/base/Callbacks.h"
#include "platform/Failure.h"
#include "platform/Text.h"

namespace {

constexpr int Width = 360, Height = 400;  // of the list, pixels
constexpr int Margin = 12, Gap = 8;       // pixels

struct DestroyWidget {
  void operator()(GtkWidget* widget) const { gtk_widget_destroy(widget); }
};

class Chooser {
 public:
  Chooser(GtkWindow* owner, const std::string& title, Events& gate);
  InstalledApplication Run();

 private:
  void AddRow(const Applications::Application& application);
  void Search();
  static gboolean Shown(GtkListBoxRow* row, gpointer self) noexcept;

  const std::vector<Applications::Application> applications_ = Applications::Installed();
  std::vector<bool> shown_;  // of the applications, by the text that is searched
  std::unique_ptr<GtkWidget, DestroyWidget> dialog_;
  GtkWidget* search_ = gtk_search_entry_new();
  GtkListBox* list_ = GTK_LIST_BOX(gtk_list_box_new());
  Callbacks callbacks_;
};

Chooser::Chooser(GtkWindow* owner, const std::string& title, Events& gate)
    : shown_(applications_.size(), true),
      dialog_(gtk_dialog_new_with_buttons(title.c_str(), owner, GTK_DIALOG_MODAL, "_Ok", GTK_RESPONSE_ACCEPT,
                                          "_Cancel", GTK_RESPONSE_CANCEL, nullptr)),
      callbacks_([&gate](const std::function<void()>& handler) { gate.Run(handler); }) {
  for (const Applications::Application& application : applications_) AddRow(application);
  GtkWidget* none = gtk_label_new("No installed application has this in its name.");
  gtk_widget_show(none);
  gtk_list_box_set_placeholder(list_, none);
  gtk_list_box_set_filter_func(list_, Shown, this, nullptr);
  gtk_list_box_set_activate_on_single_click(list_, FALSE);
  atk_object_set_name(gtk_widget_get_accessible(GTK_WIDGET(list_)), "Installed applications");
  atk_object_set_name(gtk_widget_get_accessible(search_), "Search by name");

  GtkWidget* scrolled = gtk_scrolled_window_new(nullptr, nullptr);
  gtk_scrolled_window_set_policy(GTK_SCROLLED_WINDOW(scrolled), GTK_POLICY_NEVER, GTK_POLICY_AUTOMATIC);
  gtk_scrolled_window_set_shadow_type(GTK_SCROLLED_WINDOW(scrolled), GTK_SHADOW_IN);
  gtk_widget_set_size_request(scrolled, Width, -1);
  gtk_widget_set_vexpand(scrolled, TRUE);
  gtk_container_add(GTK_CONTAINER(scrolled), GTK_WIDGET(list_));

  GtkBox* content = GTK_BOX(gtk_dialog_get_content_area(GTK_DIALOG(dialog_.get())));
  gtk_box_set_spacing(content, Gap);
  gtk_container_set_border_width(GTK_CONTAINER(dialog_.get()), Margin);
  gtk_container_add(GTK_CONTAINER(content), search_);
  gtk_container_add(GTK_CONTAINER(content), scrolled);
  gtk_widget_show_all(GTK_WIDGET(content));
  gtk_window_set_default_size(GTK_WINDOW(dialog_.get()), -1, Height);
  gtk_window_set_skip_taskbar_hint(GTK_WINDOW(dialog_.get()), TRUE);
  gtk_dialog_set_default_response(GTK_DIALOG(dialog_.get()), GTK_RESPONSE_ACCEPT);
  gtk_entry_set_activates_default(GTK_ENTRY(search_), TRUE);

  callbacks_.On<void(GtkSearchEntry*)>(search_, "search-changed", [this](auto*) { Search(); });
  callbacks_.On<void(GtkSearchEntry*)>(search_, "stop-search", [this](auto*) {
    gtk_dialog_response(GTK_DIALOG(dialog_.get()), GTK_RESPONSE_CANCEL);
  });
  callbacks_.On<void(GtkListBox*, GtkListBoxRow*)>(list_, "row-activated", [this](auto*, auto*) {
    gtk_dialog_response(GTK_DIALOG(dialog_.get()), GTK_RESPONSE_ACCEPT);
  });
  callbacks_.On<void(GtkListBox*, GtkListBoxRow*)>(list_, "row-selected", [this](auto*, GtkListBoxRow* row) {
    gtk_dialog_set_response_sensitive(GTK_DIALOG(dialog_.get()), GTK_RESPONSE_ACCEPT, row != nullptr);
  });
  Search();
}

void Chooser::AddRow(const Applications::Application& application) {
  GtkWidget* row = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, Gap);
  gtk_container_set_border_width(GTK_CONTAINER(row), Gap / 2);
  GtkWidget* icon = application.Icon
                        ? gtk_image_new_from_gicon(application.Icon.get(), GTK_ICON_SIZE_DND)
                        : gtk_image_new_from_icon_name("application-x-executable", GTK_ICON_SIZE_DND);
  // What icons of an odd size would do to the rows.
  gtk_image_set_pixel_size(GTK_IMAGE(icon), 32);
  GtkWidget* name = gtk_label_new(Text::Valid(application.Name).c_str());
  gtk_label_set_ellipsize(GTK_LABEL(name), PANGO_ELLIPSIZE_END);
  gtk_label_set_xalign(GTK_LABEL(name), 0);
  gtk_container_add(GTK_CONTAINER(row), icon);
  gtk_container_add(GTK_CONTAINER(row), name);
  gtk_widget_set_tooltip_text(row, Text::Valid(application.Command).c_str());
  gtk_list_box_insert(list_, row, -1);
  atk_object_set_name(gtk_widget_get_accessible(gtk_widget_get_parent(row)),
                      gtk_label_get_text(GTK_LABEL(name)));
}

// Shows the names that contain the text, and selects the first of them.
void Chooser::Search() {
  const std::string wanted = Text::LowerCase(TextOf(gtk_entry_get_text(GTK_ENTRY(search_))));
  int first = -1;
  for (size_t i = applications_.size(); i-- > 0;) {
    shown_[i] = Text::LowerCase(applications_[i].Name).find(wanted) != std::string::npos;
    if (shown_[i]) first = static_cast<int>(i);
  }
  gtk_list_box_invalidate_filter(list_);
  gtk_list_box_select_row(list_, first < 0 ? nullptr : gtk_list_box_get_row_at_index(list_, first));
  gtk_dialog_set_response_sensitive(GTK_DIALOG(dialog_.get()), GTK_RESPONSE_ACCEPT, first >= 0);
}

gboolean Chooser::Shown(GtkListBoxRow* row, gpointer self) noexcept {
  const auto index = static_cast<size_t>(gtk_list_box_row_get_index(row));
  const std::vector<bool>& shown = static_cast<Chooser*>(self)->shown_;
  return index >= shown.size() || shown[index];
}

InstalledApplication Chooser::Run() {
  const int response = gtk_dialog_run(GTK_DIALOG(dialog_.get()));
  GtkListBoxRow* row = gtk_list_box_get_selected_row(list_);
  if (response != GTK_RESPONSE_ACCEPT || !row) throw Failure("No application was chosen");
  const auto& chosen = applications_.at(static_cast<size_t>(gtk_list_box_row_get_index(row)));
  return {chosen.Name, chosen.Command};
}

}  // namespace

namespace ApplicationChooser {

InstalledApplication Choose(GtkWindow* owner, const std::string& title, Events& gate) {
  return Chooser(owner, title, gate).Run();
}

}  // namespace ApplicationChooser
