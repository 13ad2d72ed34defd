#include "gtk/dialog/Peer.h"

#include <cmath>

#include "gtk/dialog/ButtonPeers.h"
#include "gtk/dialog/ListPeer.h"
#include "gtk/dialog/TextPeers.h"
#include "gtk/dialog/TreePeer.h"
#include "platform/Failure.h"
#include "platform/dialog/Controls.h"
#include "platform/scene/Scene.h"

Look::Look(std::string name) : name_(std::move(name)), builder_(gtk_builder_new()) {
  GError* error = nullptr;
  gtk_builder_add_from_resource(builder_.get(), ("/marlowick/ui/" + name_ + ".ui").c_str(), &error);
  const OwnedError reason(error);
  if (reason) throw Failure("The look of " + name_ + " can't be made: " + reason->message);
}

GtkWidget* Look::Find(const std::string& id, GType kind) const {
  GObject* object = gtk_builder_get_object(builder_.get(), id.c_str());
  if (!object) throw Failure("The look of " + name_ + " has no " + id);
  if (!G_TYPE_CHECK_INSTANCE_TYPE(object, kind))
    throw Failure("In the look of " + name_ + ", " + id + " is a " + G_OBJECT_TYPE_NAME(object) +
                  " and should be a " + g_type_name(kind));
  return GTK_WIDGET(object);
}

int Pixels(Controls::Twips twips) { return static_cast<int>(std::lround(twips / TwipsPerPixel)); }

void Peer::Join() {
  for (const auto aspect : {Controls::Aspect::Visible, Controls::Aspect::Enabled, Controls::Aspect::Place})
    Peer::Changed(aspect);
  JoinOwn();
}

void Peer::Changed(Controls::Aspect aspect) {
  if (aspect == Controls::Aspect::Visible) gtk_widget_set_visible(widget_, part_.Visible);
  if (aspect == Controls::Aspect::Enabled) gtk_widget_set_sensitive(widget_, part_.Enabled);
  if (aspect == Controls::Aspect::Place) Put();
}

void Peer::Put() {
  const auto is_set = [](Controls::Twips value) { return value != Controls::AsInLook; };
  // A list lies in a widget that scrolls it, and that one has the place.
  GtkWidget* widget = widget_;
  GtkWidget* parent = gtk_widget_get_parent(widget);
  if (GTK_IS_SCROLLED_WINDOW(parent)) parent = gtk_widget_get_parent(widget = parent);
  if (is_set(part_.Width) || is_set(part_.Height))
    gtk_widget_set_size_request(widget, is_set(part_.Width) ? Pixels(part_.Width) : -1,
                                is_set(part_.Height) ? Pixels(part_.Height) : -1);
  if (!GTK_IS_LAYOUT(parent) || (!is_set(part_.Left) && !is_set(part_.Top))) return;
  int x = 0, y = 0;
  gtk_container_child_get(GTK_CONTAINER(parent), widget, "x", &x, "y", &y, nullptr);
  gtk_layout_move(GTK_LAYOUT(parent), widget, is_set(part_.Left) ? Pixels(part_.Left) : x,
                  is_set(part_.Top) ? Pixels(part_.Top) : y);
}

namespace {

// One kind of part, where `part` is of it.
template <class Part, class PartsPeer>
bool Make(Controls::Control& part, const Look& look, GType kind, Callbacks& callbacks,
          std::unique_ptr<Peer>& made) {
  auto* own = dynamic_cast<Part*>(&part);
  if (!own) return false;
  made = std::make_unique<PartsPeer>(*own, look.Find(part.Name, kind), callbacks);
  return true;
}

}  // namespace

std::unique_ptr<Peer> MakePeer(Controls::Control& part, const Look& look, Callbacks& callbacks) {
  std::unique_ptr<Peer> made;
  const bool known =
      Make<Controls::CommandButton, CommandPeer>(part, look, GTK_TYPE_BUTTON, callbacks, made) ||
      Make<Controls::CheckBox, CheckPeer>(part, look, GTK_TYPE_CHECK_BUTTON, callbacks, made) ||
      Make<Controls::OptionButton, OptionPeer>(part, look, GTK_TYPE_RADIO_BUTTON, callbacks, made) ||
      Make<Controls::Link, LinkPeer>(part, look, GTK_TYPE_LINK_BUTTON, callbacks, made) ||
      Make<Controls::Label, LabelPeer>(part, look, GTK_TYPE_LABEL, callbacks, made) ||
      Make<Controls::Frame, FramePeer>(part, look, GTK_TYPE_FRAME, callbacks, made) ||
      Make<Controls::TextBox, TextPeer>(part, look, GTK_TYPE_ENTRY, callbacks, made) ||
      Make<Controls::NumberBox, NumberPeer>(part, look, GTK_TYPE_SPIN_BUTTON, callbacks, made) ||
      Make<Controls::ProgressBar, ProgressPeer>(part, look, GTK_TYPE_PROGRESS_BAR, callbacks, made) ||
      Make<Controls::TabPages, PagesPeer>(part, look, GTK_TYPE_NOTEBOOK, callbacks, made) ||
      Make<Controls::Image, ImagePeer>(part, look, GTK_TYPE_IMAGE, callbacks, made) ||
      Make<Controls::ListBox, ListPeer>(part, look, GTK_TYPE_TREE_VIEW, callbacks, made) ||
      Make<Controls::Tree, TreePeer>(part, look, GTK_TYPE_TREE_VIEW, callbacks, made);
  if (!known) throw Failure("No widget can stand for " + part.Name + ": its kind is unknown");
  made->Join();
  return made;
}
