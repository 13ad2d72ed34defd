#include "gtk/dialog/ButtonPeers.h"

#include "platform/Text.h"

namespace {

// A part that says nothing keeps the text of its look.
void ShowCaption(GtkWidget* widget, const std::string& caption) {
  gtk_button_set_label(GTK_BUTTON(widget), Text::Valid(caption).c_str());
}

// The handler may be the end of what it belongs to.
void Raise(const std::function<void()>& event) {
  const auto own = event;
  if (own) own();
}

}  // namespace

CommandPeer::CommandPeer(Controls::CommandButton& button, GtkWidget* widget, Callbacks& callbacks)
    : Peer(button, widget), button_(button) {
  callbacks.On<void(GtkButton*)>(widget, "clicked", [this](GtkButton*) { Raise(button_.Click); });
  callbacks.On<gboolean(GtkWidget*, GdkEvent*)>(widget, "focus-in-event", [this](auto*, auto*) {
    Raise(button_.GotFocus);
    return FALSE;
  });
}

void CommandPeer::JoinOwn() {
  if (!button_.Caption->empty()) Changed(Controls::Aspect::Caption);
}

void CommandPeer::Changed(Controls::Aspect aspect) {
  Peer::Changed(aspect);
  if (aspect == Controls::Aspect::Caption) ShowCaption(Widget(), button_.Caption);
}

CheckPeer::CheckPeer(Controls::CheckBox& box, GtkWidget* widget, Callbacks& callbacks)
    : Peer(box, widget), box_(box) {
  callbacks.On<void(GtkToggleButton*)>(widget, "toggled", [this](GtkToggleButton*) {
    if (!setting_) box_.Press();
  });
}

void CheckPeer::JoinOwn() {
  Changed(Controls::Aspect::Value);
  if (!box_.Caption->empty()) Changed(Controls::Aspect::Caption);
}

void CheckPeer::Changed(Controls::Aspect aspect) {
  Peer::Changed(aspect);
  if (aspect == Controls::Aspect::Caption) ShowCaption(Widget(), box_.Caption);
  if (aspect == Controls::Aspect::Value)
    Set([this] { gtk_toggle_button_set_active(GTK_TOGGLE_BUTTON(Widget()), box_.Value != 0); });
}

OptionPeer::OptionPeer(Controls::OptionButton& option, GtkWidget* widget, Callbacks& callbacks)
    : Peer(option, widget), option_(option) {
  gtk_radio_button_set_group(GTK_RADIO_BUTTON(widget), nullptr);
  callbacks.On<void(GtkToggleButton*)>(widget, "toggled", [this](GtkToggleButton* button) {
    // What goes off by another's coming on is told by that one.
    if (!setting_ && gtk_toggle_button_get_active(button)) option_.Value = true;
  });
}

OptionPeer::~OptionPeer() {
  if (none_) gtk_radio_button_set_group(GTK_RADIO_BUTTON(none_.get()), nullptr);
}

void OptionPeer::JoinOwn() {
  if (!option_.Caption->empty()) Changed(Controls::Aspect::Caption);
  Show();
}

void OptionPeer::Changed(Controls::Aspect aspect) {
  Peer::Changed(aspect);
  if (aspect == Controls::Aspect::Caption) ShowCaption(Widget(), option_.Caption);
  if (aspect == Controls::Aspect::Value) Show();
}

void OptionPeer::Show() {
  Set([this] {
    auto* own = GTK_RADIO_BUTTON(Widget());
    if (option_.Value) {
      gtk_toggle_button_set_active(GTK_TOGGLE_BUTTON(own), TRUE);
      if (none_) gtk_radio_button_set_group(GTK_RADIO_BUTTON(none_.get()), nullptr);
      none_.reset();
      return;
    }
    if (!gtk_toggle_button_get_active(GTK_TOGGLE_BUTTON(own))) return;
    if (!none_) none_.reset(GTK_WIDGET(g_object_ref_sink(gtk_radio_button_new(nullptr))));
    gtk_radio_button_join_group(GTK_RADIO_BUTTON(none_.get()), own);
    gtk_toggle_button_set_active(GTK_TOGGLE_BUTTON(none_.get()), TRUE);
  });
}

LinkPeer::LinkPeer(Controls::Link& link, GtkWidget* widget, Callbacks& callbacks)
    : Peer(link, widget), link_(link) {
  // Handled whatever becomes of it: the toolkit would open the address with another program.
  callbacks.On<gboolean(GtkLinkButton*)>(widget, "activate-link", [this](GtkLinkButton*) {
    Raise(link_.Click);
    return TRUE;
  });
}

void LinkPeer::JoinOwn() {
  if (!link_.Caption->empty()) Changed(Controls::Aspect::Caption);
}

void LinkPeer::Changed(Controls::Aspect aspect) {
  Peer::Changed(aspect);
  if (aspect == Controls::Aspect::Caption) ShowCaption(Widget(), link_.Caption);
}
