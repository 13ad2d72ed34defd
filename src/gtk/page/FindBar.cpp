#include "gtk/page/FindBar.h"

#include <utility>

namespace {

constexpr guint MostMatches = 10000;

}  // namespace

FindBar::FindBar(WebKitWebView* view, std::function<void()> closed, Callbacks::Runner runner)
    : closed_(std::move(closed)),
      finder_(webkit_web_view_get_find_controller(view)),
      bar_(GTK_WIDGET(g_object_ref_sink(gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 4)))),
      entry_(gtk_search_entry_new()),
      match_case_(gtk_check_button_new_with_mnemonic("Match _case")),
      result_(gtk_label_new(nullptr)),
      callbacks_(std::move(runner)) {
  gtk_style_context_add_class(gtk_widget_get_style_context(bar_.get()), "toolbar");
  gtk_widget_set_name(entry_, "find-text");
  atk_object_set_name(gtk_widget_get_accessible(entry_), "Find on this page");
  gtk_entry_set_placeholder_text(GTK_ENTRY(entry_), "Find on this page");
  gtk_entry_set_width_chars(GTK_ENTRY(entry_), 20);
  gtk_box_pack_start(GTK_BOX(bar_.get()), entry_, FALSE, FALSE, 0);
  AddButton("go-up-symbolic", "Previous", [this] { Step(false); });
  AddButton("go-down-symbolic", "Next", [this] { Step(true); });
  gtk_box_pack_start(GTK_BOX(bar_.get()), match_case_, FALSE, FALSE, 6);
  gtk_label_set_ellipsize(GTK_LABEL(result_), PANGO_ELLIPSIZE_END);
  gtk_label_set_xalign(GTK_LABEL(result_), 0);
  gtk_box_pack_start(GTK_BOX(bar_.get()), result_, TRUE, TRUE, 6);
  AddButton("window-close-symbolic", "Close", [this] { Hide(); });
  Listen();
}

void FindBar::Listen() {
  // Not "search-changed", which waits: what is found follows each key.
  callbacks_.On<void(GtkEntry*)>(entry_, "changed", [this](auto*) { Search(); });
  callbacks_.On<void(GtkEntry*)>(entry_, "activate", [this](auto*) { Step(true); });
  callbacks_.On<void(GtkToggleButton*)>(match_case_, "toggled", [this](auto*) { Search(); });
  callbacks_.On<gboolean(GtkWidget*, GdkEventKey*)>(
      bar_.get(), "key-press-event", [this](auto*, GdkEventKey* event) { return TakeKey(*event); });
  callbacks_.On<void(WebKitFindController*, guint)>(finder_, "counted-matches",
                                                    [this](auto*, guint matches) { TellCount(matches); });
  callbacks_.On<void(WebKitFindController*)>(finder_, "failed-to-find-text",
                                             [this](auto*) { Tell("Not found", false); });
}

void FindBar::AddButton(const char* icon, const char* name, std::function<void()> pressed) {
  GtkWidget* button = gtk_button_new_from_icon_name(icon, GTK_ICON_SIZE_MENU);
  gtk_button_set_relief(GTK_BUTTON(button), GTK_RELIEF_NONE);
  gtk_widget_set_tooltip_text(button, name);
  atk_object_set_name(gtk_widget_get_accessible(button), name);
  gtk_box_pack_start(GTK_BOX(bar_.get()), button, FALSE, FALSE, 0);
  callbacks_.On<void(GtkWidget*)>(button, "clicked", [pressed = std::move(pressed)](auto*) { pressed(); });
}

void FindBar::Show() {
  gtk_widget_show_all(bar_.get());
  gtk_widget_grab_focus(entry_);
  Search();
}

void FindBar::Again(bool forward) {
  if (*gtk_entry_get_text(GTK_ENTRY(entry_)) == '\0') return Show();
  if (Shown()) return Step(forward);
  gtk_widget_show_all(bar_.get());
  Search(forward);
}

void FindBar::Hide() {
  webkit_find_controller_search_finish(finder_);
  gtk_widget_hide(bar_.get());
  closed_();
}

void FindBar::Renew() { Shown() ? Search() : Tell("", true); }

void FindBar::Search(bool forward) {
  const std::string text = gtk_entry_get_text(GTK_ENTRY(entry_));
  if (text.empty()) {
    webkit_find_controller_search_finish(finder_);
    return Tell("", true);
  }
  guint32 options = WEBKIT_FIND_OPTIONS_WRAP_AROUND;
  if (!gtk_toggle_button_get_active(GTK_TOGGLE_BUTTON(match_case_)))
    options |= WEBKIT_FIND_OPTIONS_CASE_INSENSITIVE;
  if (!forward) options |= WEBKIT_FIND_OPTIONS_BACKWARDS;
  webkit_find_controller_search(finder_, text.c_str(), options, MostMatches);
  webkit_find_controller_count_matches(finder_, text.c_str(), options, MostMatches);
}

void FindBar::Step(bool forward) {
  // The page may have changed since, or the bar may have been closed: then there is no search to go on with.
  const char* text = gtk_entry_get_text(GTK_ENTRY(entry_));
  const char* searched = webkit_find_controller_get_search_text(finder_);
  if (!searched || std::string(searched) != text) return Search(forward);
  forward ? webkit_find_controller_search_next(finder_) : webkit_find_controller_search_previous(finder_);
}

void FindBar::Tell(const std::string& text, bool found) {
  gtk_label_set_text(GTK_LABEL(result_), text.c_str());
  GtkStyleContext* style = gtk_widget_get_style_context(entry_);
  found ? gtk_style_context_remove_class(style, "error") : gtk_style_context_add_class(style, "error");
}

bool FindBar::TakeKey(const GdkEventKey& event) {
  // The window's own keys have come first.
  if (event.keyval != GDK_KEY_Return || !(event.state & GDK_SHIFT_MASK)) return false;
  Step(false);
  return true;
}

void FindBar::TellCount(guint matches) {
  if (matches == 0) return;
  const std::string count = matches == 1 ? "1 match" : std::to_string(matches) + " matches";
  Tell(matches >= MostMatches ? "Very many matches" : count, true);
}
