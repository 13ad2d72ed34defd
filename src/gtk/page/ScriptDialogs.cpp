#include "gtk/page/ScriptDialogs.h"

#include <string>
#include <utility>

#include "gtk/page/Page.h"
#include "gtk/page/text/Address.h"
#include "platform/Text.h"

namespace {

// From this question on the user can tell the page to stop.
constexpr int PatientQuestions = 3;
constexpr int MostHeight = 200;          // pixels of a message; more of it scrolls
constexpr size_t MostCharacters = 5000;  // of a message

void SetAnswer(WebKitScriptDialog* dialog, bool accepted, const char* text) {
  switch (webkit_script_dialog_get_dialog_type(dialog)) {
    case WEBKIT_SCRIPT_DIALOG_PROMPT:
      if (accepted) webkit_script_dialog_prompt_set_text(dialog, text);
      break;
    case WEBKIT_SCRIPT_DIALOG_CONFIRM:
    case WEBKIT_SCRIPT_DIALOG_BEFORE_UNLOAD_CONFIRM:
      webkit_script_dialog_confirm_set_confirmed(dialog, accepted);
      break;
    case WEBKIT_SCRIPT_DIALOG_ALERT:
      break;
  }
}

std::string Heading(WebKitScriptDialogType type, const std::string& address) {
  if (type == WEBKIT_SCRIPT_DIALOG_BEFORE_UNLOAD_CONFIRM)
    return "Leave this page? What you have entered may be lost.";
  const std::string host = Address::Host(address);
  return (host.empty() ? "This page" : host) + (type == WEBKIT_SCRIPT_DIALOG_ALERT ? " says:" : " asks:");
}

GtkWidget* AddLabel(GtkWidget* box, const std::string& text) {
  GtkWidget* label = gtk_label_new(text.c_str());
  gtk_label_set_line_wrap(GTK_LABEL(label), TRUE);
  gtk_label_set_line_wrap_mode(GTK_LABEL(label), PANGO_WRAP_WORD_CHAR);
  gtk_label_set_selectable(GTK_LABEL(label), FALSE);
  gtk_label_set_xalign(GTK_LABEL(label), 0);
  gtk_container_add(GTK_CONTAINER(box), label);
  return label;
}

void AddMessage(GtkWidget* box, const std::string& text) {
  GtkWidget* scroller = gtk_scrolled_window_new(nullptr, nullptr);
  gtk_scrolled_window_set_policy(GTK_SCROLLED_WINDOW(scroller), GTK_POLICY_NEVER, GTK_POLICY_AUTOMATIC);
  gtk_scrolled_window_set_propagate_natural_height(GTK_SCROLLED_WINDOW(scroller), TRUE);
  gtk_scrolled_window_set_max_content_height(GTK_SCROLLED_WINDOW(scroller), MostHeight);
  AddLabel(scroller, Text::Left(text, MostCharacters));
  gtk_container_add(GTK_CONTAINER(box), scroller);
}

}  // namespace

void ScriptDialogs::Attach(WebKitWebView* view) {
  g_signal_connect(view, "script-dialog", G_CALLBACK(OnDialog), this);
}

void ScriptDialogs::Forget() {
  asked_ = 0;
  silenced_ = false;
}

gboolean ScriptDialogs::OnDialog(WebKitWebView*, WebKitScriptDialog* dialog, gpointer data) {
  auto* self = static_cast<ScriptDialogs*>(data);
  // Where a page must not ask any more, nothing keeps the user from leaving it.
  const bool leaves =
      webkit_script_dialog_get_dialog_type(dialog) == WEBKIT_SCRIPT_DIALOG_BEFORE_UNLOAD_CONFIRM;
  if (self->silenced_)
    SetAnswer(dialog, leaves, "");
  else
    self->Ask(dialog);
  return TRUE;
}

void ScriptDialogs::Ask(WebKitScriptDialog* dialog) {
  Answer(false);
  dialog_ = webkit_script_dialog_ref(dialog);
  ++asked_;
  const WebKitScriptDialogType type = webkit_script_dialog_get_dialog_type(dialog);
  bar_ = MakeBar(type);
  page_.AddBar(bar_);
  gtk_widget_show_all(bar_);
  // A page behind, or beside what the user is typing into, doesn't take the keyboard.
  GtkWidget* top = gtk_widget_get_toplevel(page_.Widget());
  GtkWidget* focus = GTK_IS_WINDOW(top) ? gtk_window_get_focus(GTK_WINDOW(top)) : nullptr;
  if (gtk_widget_get_mapped(page_.Widget()) && (!focus || gtk_widget_is_ancestor(focus, page_.Widget())))
    gtk_widget_grab_focus(entry_ ? entry_ : first_button_);
}

GtkWidget* ScriptDialogs::MakeBar(WebKitScriptDialogType type) {
  const bool leaves = type == WEBKIT_SCRIPT_DIALOG_BEFORE_UNLOAD_CONFIRM;
  GtkWidget* bar = gtk_info_bar_new();
  gtk_info_bar_set_message_type(GTK_INFO_BAR(bar), GTK_MESSAGE_QUESTION);
  first_button_ = gtk_info_bar_add_button(GTK_INFO_BAR(bar), leaves ? "_Leave" : "_OK", GTK_RESPONSE_OK);
  if (type != WEBKIT_SCRIPT_DIALOG_ALERT)
    gtk_info_bar_add_button(GTK_INFO_BAR(bar), leaves ? "_Stay" : "_Cancel", GTK_RESPONSE_CANCEL);
  GtkWidget* box = gtk_box_new(GTK_ORIENTATION_VERTICAL, 6);
  gtk_container_add(GTK_CONTAINER(gtk_info_bar_get_content_area(GTK_INFO_BAR(bar))), box);
  GtkWidget* heading = AddLabel(box, Heading(type, page_.Address()));
  PangoAttrList* bold = pango_attr_list_new();
  pango_attr_list_insert(bold, pango_attr_weight_new(PANGO_WEIGHT_BOLD));
  gtk_label_set_attributes(GTK_LABEL(heading), bold);
  pango_attr_list_unref(bold);
  if (!leaves) AddMessage(box, TextOf(webkit_script_dialog_get_message(dialog_)));
  entry_ = enough_ = nullptr;
  if (type == WEBKIT_SCRIPT_DIALOG_PROMPT) {
    entry_ = gtk_entry_new();
    gtk_entry_set_text(GTK_ENTRY(entry_),
                       TextOf(webkit_script_dialog_prompt_get_default_text(dialog_)).c_str());
    gtk_container_add(GTK_CONTAINER(box), entry_);
    g_signal_connect(entry_, "activate", G_CALLBACK(OnActivate), this);
  }
  if (asked_ >= PatientQuestions) {
    enough_ = gtk_check_button_new_with_mnemonic("The page may not ask _again");
    gtk_container_add(GTK_CONTAINER(box), enough_);
  }
  g_signal_connect(bar, "response", G_CALLBACK(OnResponse), this);
  return bar;
}

void ScriptDialogs::Answer(bool accepted) {
  if (!dialog_) return;
  WebKitScriptDialog* dialog = std::exchange(dialog_, nullptr);
  GtkWidget* bar = std::exchange(bar_, nullptr);
  const std::string text = entry_ ? gtk_entry_get_text(GTK_ENTRY(entry_)) : "";
  silenced_ = enough_ && gtk_toggle_button_get_active(GTK_TOGGLE_BUTTON(enough_));
  const bool stays =
      !accepted && webkit_script_dialog_get_dialog_type(dialog) == WEBKIT_SCRIPT_DIALOG_BEFORE_UNLOAD_CONFIRM;
  SetAnswer(dialog, accepted, text.c_str());
  webkit_script_dialog_close(dialog);
  webkit_script_dialog_unref(dialog);
  gtk_widget_destroy(bar);
  if (stays) page_.Load().Denied();
}

void ScriptDialogs::Dismiss() {
  if (!dialog_) return;
  Answer(false);
  silenced_ = true;
}

void ScriptDialogs::OnResponse(GtkInfoBar*, int response, gpointer data) {
  auto* self = static_cast<ScriptDialogs*>(data);
  const auto keep = self->page_.shared_from_this();
  self->Answer(response == GTK_RESPONSE_OK);
  if (!self->page_.Closed()) gtk_widget_grab_focus(GTK_WIDGET(self->page_.View()));
}

void ScriptDialogs::OnActivate(GtkEntry*, gpointer data) { OnResponse(nullptr, GTK_RESPONSE_OK, data); }
