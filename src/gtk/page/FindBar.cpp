#include "gtk/page/FindBar.h"

#include <string>

#include "gtk/page/Page.h"

namespace {

constexpr guint MostMatches = 10000;

}  // namespace

FindBar::FindBar(Page& page)
    : page_(page),
      finder_(webkit_web_view_get_find_controller(page.View())),
      bar_(GTK_WIDGET(g_object_ref_sink(gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 4)))),
      entry_(gtk_search_entry_new()),
      match_case_(gtk_check_button_new_with_mnemonic("Match _case")),
      result_(gtk_label_new(nullptr)) {
  gtk_style_context_add_class(gtk_widget_get_style_context(bar_.get()), "toolbar");
  gtk_widget_set_name(entry_, "find-text");
  atk_object_set_name(gtk_widget_get_accessible(entry_), "Find on this page");
  gtk_entry_set_placeholder_text(GTK_ENTRY(entry_), "Find on this page");
  gtk_entry_set_width_chars(GTK_ENTRY(entry_), 20);
  gtk_box_pack_start(GTK_BOX(bar_.get()), entry_, FALSE, FALSE, 0);
  AddButton("go-up-symbolic", "Previous", G_CALLBACK(OnPrevious));
  AddButton("go-down-symbolic", "Next", G_CALLBACK(OnNext));
  gtk_box_pack_start(GTK_BOX(bar_.get()), match_case_, FALSE, FALSE, 6);
  gtk_label_set_ellipsize(GTK_LABEL(result_), PANGO_ELLIPSIZE_END);
  gtk_label_set_xalign(GTK_LABEL(result_), 0);
  gtk_box_pack_start(GTK_BOX(bar_.get()), result_, TRUE, TRUE, 6);
  GtkWidget* close = AddButton("window-close-symbolic", "Close", G_CALLBACK(OnClose));
  gtk_box_reorder_child(GTK_BOX(bar_.get()), close, -1);
  // Not "search-changed", which waits: what is found follows each key.
  g_signal_connect(entry_, "changed", G_CALLBACK(OnTyped), this);
  g_signal_connect(entry_, "activate", G_CALLBACK(OnNext), this);
  g_signal_connect(match_case_, "toggled", G_CALLBACK(OnCase), this);
  g_signal_connect(bar_.get(), "key-press-event", G_CALLBACK(OnKey), this);
  g_signal_connect(finder_, "counted-matches", G_CALLBACK(OnCounted), this);
  g_signal_connect(finder_, "failed-to-find-text", G_CALLBACK(OnMissed), this);
  page_.AddFoot(bar_.get());
}

FindBar::~FindBar() {
  g_signal_handlers_disconnect_by_data(finder_, this);
  gtk_widget_destroy(bar_.get());
}

GtkWidget* FindBar::AddButton(const char* icon, const char* name, GCallback pressed) {
  GtkWidget* button = gtk_button_new_from_icon_name(icon, GTK_ICON_SIZE_MENU);
  gtk_button_set_relief(GTK_BUTTON(button), GTK_RELIEF_NONE);
  gtk_widget_set_tooltip_text(button, name);
  atk_object_set_name(gtk_widget_get_accessible(button), name);
  gtk_box_pack_start(GTK_BOX(bar_.get()), button, FALSE, FALSE, 0);
  g_signal_connect(button, "clicked", pressed, this);
  return button;
}

void FindBar::Show() {
  gtk_widget_show_all(bar_.get());
  gtk_widget_grab_focus(entry_);
  Search();
}

void FindBar::Hide() {
  webkit_find_controller_search_finish(finder_);
  gtk_widget_hide(bar_.get());
  gtk_widget_grab_focus(GTK_WIDGET(page_.View()));
}

void FindBar::Renew() { gtk_widget_get_visible(bar_.get()) ? Search() : Tell("", true); }

void FindBar::Search() {
  const std::string text = gtk_entry_get_text(GTK_ENTRY(entry_));
  if (text.empty()) {
    webkit_find_controller_search_finish(finder_);
    return Tell("", true);
  }
  guint32 options = WEBKIT_FIND_OPTIONS_WRAP_AROUND;
  if (!gtk_toggle_button_get_active(GTK_TOGGLE_BUTTON(match_case_)))
    options |= WEBKIT_FIND_OPTIONS_CASE_INSENSITIVE;
  webkit_find_controller_search(finder_, text.c_str(), options, MostMatches);
  webkit_find_controller_count_matches(finder_, text.c_str(), options, MostMatches);
}

void FindBar::Step(bool forward) {
  // The page may have changed since, or the bar may have been closed: then there is no search to go on with.
  const char* text = gtk_entry_get_text(GTK_ENTRY(entry_));
  const char* searched = webkit_find_controller_get_search_text(finder_);
  if (!searched || std::string(searched) != text) return Search();
  forward ? webkit_find_controller_search_next(finder_) : webkit_find_controller_search_previous(finder_);
}

void FindBar::Tell(const char* text, bool found) {
  gtk_label_set_text(GTK_LABEL(result_), text);
  GtkStyleContext* style = gtk_widget_get_style_context(entry_);
  found ? gtk_style_context_remove_class(style, "error") : gtk_style_context_add_class(style, "error");
}

void FindBar::OnTyped(GtkEntry*, gpointer self) { static_cast<FindBar*>(self)->Search(); }
void FindBar::OnNext(GtkWidget*, gpointer self) { static_cast<FindBar*>(self)->Step(true); }
void FindBar::OnPrevious(GtkWidget*, gpointer self) { static_cast<FindBar*>(self)->Step(false); }
void FindBar::OnCase(GtkWidget*, gpointer self) { static_cast<FindBar*>(self)->Search(); }
void FindBar::OnClose(GtkWidget*, gpointer self) { static_cast<FindBar*>(self)->Hide(); }

gboolean FindBar::OnKey(GtkWidget*, GdkEventKey* event, gpointer data) {
  auto* self = static_cast<FindBar*>(data);
  const bool back =
      (event->state & GDK_SHIFT_MASK) && (event->keyval == GDK_KEY_Return || event->keyval == GDK_KEY_F3);
  if (event->keyval == GDK_KEY_Escape)
    self->Hide();
  else if (back)
    self->Step(false);
  else if (event->keyval == GDK_KEY_F3)
    self->Step(true);
  else
    return FALSE;
  return TRUE;
}

void FindBar::OnCounted(WebKitFindController*, guint matches, gpointer data) {
  if (matches == 0) return;
  const std::string count = matches == 1 ? "1 match" : std::to_string(matches) + " matches";
  static_cast<FindBar*>(data)->Tell(matches >= MostMatches ? "Very many matches" : count.c_str(), true);
}

void FindBar::OnMissed(WebKitFindController*, gpointer data) {
  static_cast<FindBar*>(data)->Tell("Not found", false);
}
