#include "gtk/dialog/DialogBinder.h"

#include <set>
#include <utility>

#include "platform/Failure.h"
#include "platform/Text.h"

namespace {

Glib::RefPtr<Gtk::Builder> Look(const std::string& name) {
  try {
    return Gtk::Builder::create_from_resource("/marlowick/ui/" + name + ".ui");
  } catch (const Glib::Error& error) {
    throw Failure("The look of " + name + " can't be made: " + std::string(error.what()));
  }
}

// The ids of a look; the builder makes up names of its own for what has none.
std::set<std::string> Ids(Gtk::Builder& look) {
  std::set<std::string> ids;
  GSList* objects = gtk_builder_get_objects(look.gobj());
  for (const GSList* at = objects; at; at = at->next) {
    const char* id = GTK_IS_BUILDABLE(at->data) ? gtk_buildable_get_name(GTK_BUILDABLE(at->data)) : nullptr;
    if (id && !std::string_view(id).starts_with("___")) ids.insert(id);
  }
  g_slist_free(objects);
  return ids;
}

}  // namespace

DialogBinder::DialogBinder(Dialog& dialog, Events& gate, Owner owner)
    : dialog_(dialog), gate_(gate), owner_(std::move(owner)), look_(Look(dialog.Name)) {
  window_.reset(&Find<Gtk::Window>(dialog.Name));
  CompareNames();
  for (Controls::Control* part : dialog.Parts()) Bind(*part);
  // A look whose window can't be closed has no other system buttons either.
  if (!window_->get_deletable())
    window_->signal_realize().connect([this] {
      window_->get_window()->set_decorations(Gdk::DECOR_BORDER | Gdk::DECOR_TITLE);
      window_->get_window()->set_functions(Gdk::FUNC_MOVE);
    });
  window_->signal_delete_event().connect([this](GdkEventAny*) {
    if (dialog_.QueryUnload) gate_.Run([this] { dialog_.QueryUnload(); });
    return true;
  });
}

template <class Kind>
Kind& DialogBinder::Find(const std::string& name) const {
  auto* widget = dynamic_cast<Kind*>(look_->get_object(name).get());
  if (!widget) throw Failure("The look of " + dialog_.Name + " has no " + name + " of its kind");
  return *widget;
}

void DialogBinder::CompareNames() const {
  std::set<std::string> ids = Ids(*look_.get());
  std::string lacking;
  for (const Controls::Control* part : dialog_.Parts())
    if (!ids.erase(part->Name)) lacking += " The look has no " + part->Name + ".";
  ids.erase(dialog_.Name);
  for (const std::string& id : ids) lacking += " The dialog has no " + id + ".";
  if (!lacking.empty()) throw Failure("The dialog " + dialog_.Name + " and its look don't fit." + lacking);
}

void DialogBinder::Bind(Controls::Control& part) {
  widgets_[&part] = &Find<Gtk::Widget>(part.Name);
  if (auto* button = dynamic_cast<Controls::CommandButton*>(&part))
    Find<Gtk::Button>(part.Name).signal_clicked().connect([this, button] {
      gate_.Run([button] {
        if (button->Click) button->Click();
      });
    });
  else if (dynamic_cast<Controls::Label*>(&part))
    Find<Gtk::Label>(part.Name);
  else if (dynamic_cast<Controls::Image*>(&part))
    Find<Gtk::Image>(part.Name);
  for (const auto aspect : {Controls::Aspect::Visible, Controls::Aspect::Enabled}) Changed(part, aspect);
  // A part that says nothing yet keeps the text of its look.
  const auto* captioned = dynamic_cast<Controls::Captioned*>(&part);
  if (captioned && !captioned->Caption->empty()) Changed(part, Controls::Aspect::Caption);
}

void DialogBinder::Show() {
  GtkWindow* owner = owner_ ? owner_() : nullptr;
  // A hidden owner would hide the dialog with it.
  if (owner && !gtk_widget_get_visible(GTK_WIDGET(owner))) owner = nullptr;
  gtk_window_set_transient_for(window_->gobj(), owner);
  window_->set_position(owner ? Gtk::WIN_POS_CENTER_ON_PARENT : Gtk::WIN_POS_CENTER);
  window_->present();
}

void DialogBinder::Hide() {
  window_->hide();
  window_->set_modal(false);
}

void DialogBinder::ShowModal() {
  window_->set_modal(true);
  dialog_.Visible = true;
  while (dialog_.Visible) g_main_context_iteration(nullptr, TRUE);
}

void DialogBinder::SetFocus(Controls::Control& control) { widgets_.at(&control)->grab_focus(); }

void DialogBinder::Changed(Controls::Control& control, Controls::Aspect aspect) {
  Gtk::Widget& widget = *widgets_.at(&control);
  if (aspect == Controls::Aspect::Visible) widget.set_visible(control.Visible);
  if (aspect == Controls::Aspect::Enabled) widget.set_sensitive(control.Enabled);
  const auto* captioned = dynamic_cast<Controls::Captioned*>(&control);
  if (aspect != Controls::Aspect::Caption || !captioned) return;
  const std::string caption = Text::Valid(captioned->Caption());
  if (auto* label = dynamic_cast<Gtk::Label*>(&widget)) label->set_text(caption);
  if (auto* button = dynamic_cast<Gtk::Button*>(&widget)) button->set_label(caption);
}
