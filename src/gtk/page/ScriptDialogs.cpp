#include "gtk/page/ScriptDialogs.h"

#include <utility>

#include "gtk/window/Style.h"
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

bool AsksToLeave(WebKitScriptDialog* dialog) {
  return webkit_script_dialog_get_dialog_type(dialog) == WEBKIT_SCRIPT_DIALOG_BEFORE_UNLOAD_CONFIRM;
}

std::string Heading(WebKitScriptDialogType type, const std::string& asker) {
  if (type == WEBKIT_SCRIPT_DIALOG_BEFORE_UNLOAD_CONFIRM)
    return "Leave this page? What you have entered may be lost.";
  return (asker.empty() ? "This page" : asker) + (type == WEBKIT_SCRIPT_DIALOG_ALERT ? " says:" : " asks:");
}

Owned<GtkWidget> Keep(GtkWidget* widget) { return Owned<GtkWidget>(GTK_WIDGET(g_object_ref_sink(widget))); }

Owned<GtkWidget> MakeLabel() {
  GtkWidget* label = gtk_label_new(nullptr);
  gtk_label_set_line_wrap(GTK_LABEL(label), TRUE);
  gtk_label_set_line_wrap_mode(GTK_LABEL(label), PANGO_WRAP_WORD_CHAR);
  gtk_label_set_xalign(GTK_LABEL(label), 0);
  return Keep(label);
}

void MakeBold(GtkWidget* label) {
  PangoAttrList* bold = pango_attr_list_new();
  pango_attr_list_insert(bold, pango_attr_weight_new(PANGO_WEIGHT_BOLD));
  gtk_label_set_attributes(GTK_LABEL(label), bold);
  pango_attr_list_unref(bold);
}

Owned<GtkWidget> MakeScroller(GtkWidget* inside) {
  GtkWidget* scroller = gtk_scrolled_window_new(nullptr, nullptr);
  gtk_scrolled_window_set_policy(GTK_SCROLLED_WINDOW(scroller), GTK_POLICY_NEVER, GTK_POLICY_AUTOMATIC);
  gtk_scrolled_window_set_propagate_natural_height(GTK_SCROLLED_WINDOW(scroller), TRUE);
  gtk_scrolled_window_set_max_content_height(GTK_SCROLLED_WINDOW(scroller), MostHeight);
  gtk_container_add(GTK_CONTAINER(scroller), inside);
  return Keep(scroller);
}

}  // namespace

ScriptDialogs::ScriptDialogs(GtkWidget* place, Answered answered, Callbacks::Runner runner)
    : answered_(std::move(answered)), place_(Share(place)), callbacks_(std::move(runner)) {}

void ScriptDialogs::MakeBar() {
  bar_ = Keep(gtk_info_bar_new());
  auto* bar = GTK_INFO_BAR(bar_.get());
  gtk_info_bar_set_message_type(bar, GTK_MESSAGE_QUESTION);
  yes_ = Share(gtk_info_bar_add_button(bar, "_OK", GTK_RESPONSE_OK));
  no_ = Share(gtk_info_bar_add_button(bar, "_Cancel", GTK_RESPONSE_CANCEL));
  heading_ = MakeLabel();
  MakeBold(heading_.get());
  message_ = MakeLabel();
  scroller_ = MakeScroller(message_.get());
  entry_ = Keep(gtk_entry_new());
  // The bar's own colours leave selected text without a contrast.
  AddStyle(entry_.get(), "entry selection { color: #ffffff; background: #316ac5; }");
  enough_ = Keep(gtk_check_button_new_with_mnemonic("The page may not ask _again"));
  GtkWidget* rows = gtk_box_new(GTK_ORIENTATION_VERTICAL, 6);
  for (const auto* part : {&heading_, &scroller_, &entry_, &enough_})
    gtk_container_add(GTK_CONTAINER(rows), part->get());
  gtk_container_add(GTK_CONTAINER(gtk_info_bar_get_content_area(bar)), rows);
  callbacks_.On<void(GtkInfoBar*, int)>(
      bar, "response", [this](auto*, int response) { Respond(response == GTK_RESPONSE_OK); });
  callbacks_.On<void(GtkEntry*)>(entry_.get(), "activate", [this](auto*) { Respond(true); });
  gtk_box_pack_start(GTK_BOX(place_.get()), bar_.get(), FALSE, TRUE, 0);
}

void ScriptDialogs::Forget() {
  asked_ = 0;
  silenced_ = false;
}

void ScriptDialogs::Ask(WebKitScriptDialog* dialog, const std::string& asker) {
  // Where a page must not ask any more, nothing keeps the user from leaving it.
  if (silenced_) return SetAnswer(dialog, AsksToLeave(dialog), "");
  Answer(false);
  dialog_.reset(webkit_script_dialog_ref(dialog));
  ++asked_;
  if (!bar_) MakeBar();
  Fill(asker);
  TakeKeyboard();
}

void ScriptDialogs::Fill(const std::string& asker) {
  const WebKitScriptDialogType type = webkit_script_dialog_get_dialog_type(dialog_.get());
  const bool leaves = AsksToLeave(dialog_.get());
  const bool prompts = type == WEBKIT_SCRIPT_DIALOG_PROMPT;
  gtk_button_set_label(GTK_BUTTON(yes_.get()), leaves ? "_Leave" : "_OK");
  gtk_button_set_label(GTK_BUTTON(no_.get()), leaves ? "_Stay" : "_Cancel");
  gtk_label_set_text(GTK_LABEL(heading_.get()), Heading(type, asker).c_str());
  const std::string message =
      Text::Left(TextOf(webkit_script_dialog_get_message(dialog_.get())), MostCharacters);
  gtk_label_set_text(GTK_LABEL(message_.get()), message.c_str());
  if (prompts) {
    const std::string text = TextOf(webkit_script_dialog_prompt_get_default_text(dialog_.get()));
    gtk_entry_set_text(GTK_ENTRY(entry_.get()), text.c_str());
  }
  gtk_toggle_button_set_active(GTK_TOGGLE_BUTTON(enough_.get()), FALSE);
  gtk_widget_show_all(bar_.get());
  gtk_widget_set_visible(no_.get(), type != WEBKIT_SCRIPT_DIALOG_ALERT);
  gtk_widget_set_visible(scroller_.get(), !leaves);
  gtk_widget_set_visible(entry_.get(), prompts);
  gtk_widget_set_visible(enough_.get(), asked_ >= PatientQuestions);
}

// A page behind, or beside what the user is typing into, doesn't take the keyboard.
void ScriptDialogs::TakeKeyboard() {
  GtkWidget* page = gtk_widget_get_parent(place_.get());
  GtkWidget* top = gtk_widget_get_toplevel(place_.get());
  GtkWidget* focus = GTK_IS_WINDOW(top) ? gtk_window_get_focus(GTK_WINDOW(top)) : nullptr;
  if (!page || !gtk_widget_get_mapped(page) || (focus && !gtk_widget_is_ancestor(focus, page))) return;
  gtk_widget_grab_focus(gtk_widget_get_visible(entry_.get()) ? entry_.get() : yes_.get());
}

ScriptDialogs::Outcome ScriptDialogs::Answer(bool accepted) {
  if (!dialog_) return Outcome::Answered;
  const auto dialog = std::move(dialog_);
  silenced_ = gtk_toggle_button_get_active(GTK_TOGGLE_BUTTON(enough_.get()));
  SetAnswer(dialog.get(), accepted, gtk_entry_get_text(GTK_ENTRY(entry_.get())));
  gtk_widget_hide(bar_.get());
  return !accepted && AsksToLeave(dialog.get()) ? Outcome::StaysOnPage : Outcome::Answered;
}

bool ScriptDialogs::Refuse() {
  if (!dialog_) return false;
  Respond(false);
  return true;
}

void ScriptDialogs::Dismiss() {
  if (!dialog_) return;
  Answer(false);
  silenced_ = true;
}

void ScriptDialogs::Respond(bool accepted) {
  if (!dialog_) return;
  const Outcome outcome = Answer(accepted);
  const Answered answered = answered_;
  answered(outcome);
}
