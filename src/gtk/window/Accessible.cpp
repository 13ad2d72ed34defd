#include "gtk/window/Accessible.h"

#include <gtk/gtk-a11y.h>

#include <algorithm>

#include "platform/Text.h"

namespace {

constexpr char OwnerKey[] = "marlowick-accessible";
constexpr size_t LongestName = 500;  // characters

AtkRole RoleOf(Role role) {
  switch (role) {
    case Role::Button:
      return ATK_ROLE_PUSH_BUTTON;
    case Role::Tab:
      return ATK_ROLE_PAGE_TAB;
    case Role::MenuLabel:
    case Role::SubMenu:
      return ATK_ROLE_MENU;
    case Role::MenuItem:
      return ATK_ROLE_MENU_ITEM;
    case Role::Text:
      return ATK_ROLE_LABEL;
    case Role::None:
      break;
  }
  return ATK_ROLE_UNKNOWN;
}

// Those whose highlight is where the keyboard is.
bool InMenu(Role role) { return role == Role::MenuItem || role == Role::SubMenu; }

std::string NameOf(const Control& control) {
  if (!control.AccessibleName.empty()) return control.AccessibleName;
  if (const auto* label = dynamic_cast<const Label*>(&control)) return label->Caption;
  return control.ToolTipText;
}

void Collect(const Control& parent, const PixelRect& clip, std::vector<Accessible::Seen>& list) {
  for (Control* child : parent.Children()) {
    if (!child->Visible) continue;
    const PixelRect bounds = child->PixelBounds(), inside = bounds.Intersect(clip);
    if (child->AccessibleRole != Role::None)
      list.push_back({child->Alive(), child->AccessibleRole, bounds, !inside.Empty(),
                      child->AccessibleSelected, child->Click || child->AccessiblePress,
                      Text::Left(Text::Valid(NameOf(*child)), LongestName)});
    Collect(*child, inside, list);
  }
}

bool SameControl(const Accessible::Seen& a, const Accessible::Seen& b) {
  return !a.Source.owner_before(b.Source) && !b.Source.owner_before(a.Source) && a.Kind == b.Kind;
}

// A drawn control. Once it has left the scene, or the scene the screen, its object has no owner and is
// defunct.
struct ControlObject {
  AtkObject Base;
  Accessible* Owner;
  Accessible::Seen* Shown;
};

struct ControlObjectClass {
  AtkObjectClass Base;
};

ControlObject* AsControl(gpointer object) { return static_cast<ControlObject*>(object); }

AtkObject* ControlParent(AtkObject* object) {
  const Accessible* owner = AsControl(object)->Owner;
  return owner ? owner->Object() : nullptr;
}

int ControlIndex(AtkObject* object) {
  return Guarded([&] {
    const Accessible* owner = AsControl(object)->Owner;
    return owner ? owner->IndexOf(object) : -1;
  });
}

AtkStateSet* ControlStates(AtkObject* object) {
  return Guarded([&] {
    const auto& [base, owner, shown] = *AsControl(object);
    AtkStateSet* states = atk_state_set_new();
    const auto add = [states](AtkStateType state, bool holds) {
      if (holds) atk_state_set_add_state(states, state);
    };
    add(ATK_STATE_DEFUNCT, !owner);
    if (!owner) return states;
    add(ATK_STATE_VISIBLE, true);
    add(ATK_STATE_SHOWING, shown->InSight && owner->Mapped());
    add(ATK_STATE_ENABLED, true);
    add(ATK_STATE_SENSITIVE, true);
    add(ATK_STATE_SELECTABLE, shown->Kind == Role::Tab || InMenu(shown->Kind));
    add(ATK_STATE_SELECTED, shown->Selected);
    add(ATK_STATE_FOCUSABLE, InMenu(shown->Kind));
    add(ATK_STATE_FOCUSED, InMenu(shown->Kind) && shown->Selected);
    return states;
  });
}

void ControlExtents(AtkComponent* object, int* x, int* y, int* width, int* height, AtkCoordType type) {
  return Guarded([&] {
    const auto& [base, owner, shown] = *AsControl(object);
    int left = -1, top = -1;
    const bool known = owner && owner->Origin(type, left, top);
    *x = known ? left + shown->Bounds.Left : -1;
    *y = known ? top + shown->Bounds.Top : -1;
    *width = known ? shown->Bounds.Width : -1;
    *height = known ? shown->Bounds.Height : -1;
  });
}

int ControlActions(AtkAction* object) {
  return AsControl(object)->Owner && AsControl(object)->Shown->Pressable;
}

const char* ControlActionName(AtkAction*, int index) { return index == 0 ? "press" : nullptr; }

gboolean ControlPress(AtkAction* object, int index) {
  if (index != 0 || !ControlActions(object)) return FALSE;
  return Guarded([&] {
    AsControl(object)->Owner->PressLater(*AsControl(object)->Shown);
    return TRUE;
  });
}

void InitComponent(AtkComponentIface* component) { component->get_extents = ControlExtents; }

void InitAction(AtkActionIface* action) {
  action->get_n_actions = ControlActions;
  action->get_name = ControlActionName;
  action->get_localized_name = ControlActionName;
  action->do_action = ControlPress;
}

G_DEFINE_TYPE_WITH_CODE(ControlObject, control_object, ATK_TYPE_OBJECT,
                        G_IMPLEMENT_INTERFACE(ATK_TYPE_COMPONENT, InitComponent)
                            G_IMPLEMENT_INTERFACE(ATK_TYPE_ACTION, InitAction))

void control_object_init(ControlObject* object) { object->Shown = new Accessible::Seen; }

void ControlFinalize(GObject* object) {
  delete AsControl(object)->Shown;
  G_OBJECT_CLASS(control_object_parent_class)->finalize(object);
}

void control_object_class_init(ControlObjectClass* type) {
  G_OBJECT_CLASS(type)->finalize = ControlFinalize;
  ATK_OBJECT_CLASS(type)->get_parent = ControlParent;
  ATK_OBJECT_CLASS(type)->get_index_in_parent = ControlIndex;
  ATK_OBJECT_CLASS(type)->ref_state_set = ControlStates;
}

AtkObject* MakeControl(Accessible& owner, const Accessible::Seen& seen) {
  auto* object = ATK_OBJECT(g_object_new(control_object_get_type(), nullptr));
  object->role = RoleOf(seen.Kind);
  AsControl(object)->Owner = &owner;
  *AsControl(object)->Shown = seen;
  atk_object_set_name(object, seen.Name.c_str());
  return object;
}

// Takes over what is to be seen of the control now, and tells what of it is new.
void Tell(AtkObject* object, const Accessible::Seen& seen) {
  const Accessible::Seen before = std::exchange(*AsControl(object)->Shown, seen);
  if (seen.Name != before.Name) atk_object_set_name(object, seen.Name.c_str());
  if (seen.Selected != before.Selected) {
    atk_object_notify_state_change(object, ATK_STATE_SELECTED, seen.Selected);
    if (InMenu(seen.Kind)) atk_object_notify_state_change(object, ATK_STATE_FOCUSED, seen.Selected);
  }
  if (seen.InSight != before.InSight) atk_object_notify_state_change(object, ATK_STATE_SHOWING, seen.InSight);
}

void Release(AtkObject* object) {
  AsControl(object)->Owner = nullptr;
  atk_object_notify_state_change(object, ATK_STATE_DEFUNCT, TRUE);
  g_object_unref(object);
}

// The view. Its real widgets' objects stand behind the drawn controls.
struct ViewObject {
  GtkContainerAccessible Base;
  Accessible* Owner;
};

struct ViewObjectClass {
  GtkContainerAccessibleClass Base;
};

ViewObject* AsView(gpointer object) { return static_cast<ViewObject*>(object); }

int DrawnCount(gpointer view) { return AsView(view)->Owner ? AsView(view)->Owner->Count() : 0; }

G_DEFINE_TYPE(ViewObject, view_object, GTK_TYPE_CONTAINER_ACCESSIBLE)

void view_object_init(ViewObject*) {}

void ViewInitialize(AtkObject* object, gpointer widget) {
  return Guarded([&] {
    ATK_OBJECT_CLASS(view_object_parent_class)->initialize(object, widget);
    auto* owner = static_cast<Accessible*>(g_object_get_data(G_OBJECT(widget), OwnerKey));
    AsView(object)->Owner = owner;
    if (owner) owner->Attach(object);
  });
}

int ViewCount(AtkObject* object) {
  return Guarded([&] {
    return DrawnCount(object) + ATK_OBJECT_CLASS(view_object_parent_class)->get_n_children(object);
  });
}

AtkObject* ViewChild(AtkObject* object, int index) {
  return Guarded([&] {
    const int drawn = DrawnCount(object);
    if (index >= 0 && index < drawn) return ATK_OBJECT(g_object_ref(AsView(object)->Owner->Child(index)));
    AtkObject* child = ATK_OBJECT_CLASS(view_object_parent_class)->ref_child(object, index - drawn);
    // A widget's object that has been told its parent asks that for its index, instead of counting widgets.
    if (child && !atk_object_peek_parent(child)) atk_object_set_parent(child, object);
    return child;
  });
}

int TellWidget(GtkContainer* container, GtkWidget* widget, gpointer view, const char* signal) {
  return Guarded([&] {
    GList* widgets = gtk_container_get_children(container);
    const int index = g_list_index(widgets, widget);
    g_list_free(widgets);
    if (index >= 0)
      g_signal_emit_by_name(view, signal, DrawnCount(view) + index, gtk_widget_get_accessible(widget));
    return 1;
  });
}

int ViewWidgetAdded(GtkContainer* container, GtkWidget* widget, gpointer view) {
  return TellWidget(container, widget, view, "children-changed::add");
}

int ViewWidgetRemoved(GtkContainer* container, GtkWidget* widget, gpointer view) {
  return TellWidget(container, widget, view, "children-changed::remove");
}

void view_object_class_init(ViewObjectClass* type) {
  ATK_OBJECT_CLASS(type)->initialize = ViewInitialize;
  ATK_OBJECT_CLASS(type)->get_n_children = ViewCount;
  ATK_OBJECT_CLASS(type)->ref_child = ViewChild;
  type->Base.add_gtk = ViewWidgetAdded;
  type->Base.remove_gtk = ViewWidgetRemoved;
}

}  // namespace

Accessible::Accessible(GtkWidget* view, Events& gate, Window& scene)
    : view_(view), gate_(gate), scene_(scene) {
  gtk_widget_class_set_accessible_type(GTK_WIDGET_GET_CLASS(view), view_object_get_type());
  g_object_set_data(G_OBJECT(view), OwnerKey, this);
}

Accessible::~Accessible() {
  g_object_set_data(G_OBJECT(view_), OwnerKey, nullptr);
  if (object_) {
    AsView(object_)->Owner = nullptr;
    g_object_remove_weak_pointer(G_OBJECT(object_), reinterpret_cast<gpointer*>(&object_));
  }
  for (AtkObject* child : std::exchange(drawn_, {})) Release(child);
}

void Accessible::Attach(AtkObject* object) {
  object_ = object;
  object_->role = scene_.WindowKind() == Window::Kind::Popup ? ATK_ROLE_MENU : ATK_ROLE_PANEL;
  g_object_add_weak_pointer(G_OBJECT(object_), reinterpret_cast<gpointer*>(&object_));
  for (const Seen& seen : Look()) drawn_.push_back(MakeControl(*this, seen));
}

void Accessible::Update() {
  if (!object_) return;
  const std::vector<Seen> wanted = Look();
  const auto stands_for = [](AtkObject* child, const Seen& seen) {
    return SameControl(*AsControl(child)->Shown, seen);
  };
  if (!std::equal(drawn_.begin(), drawn_.end(), wanted.begin(), wanted.end(), stands_for)) Replace(wanted);
  for (size_t i = 0; i < drawn_.size(); ++i) Tell(drawn_[i], wanted[i]);
}

std::vector<Accessible::Seen> Accessible::Look() const {
  std::vector<Seen> list;
  const PixelRect window = scene_.PixelBounds();
  Collect(scene_, {0, 0, window.Width, window.Height}, list);
  return list;
}

// Brings the children into the wanted order, one told change at a time: what has gone, then what is new or
// has moved.
void Accessible::Replace(const std::vector<Seen>& wanted) {
  const auto stands_for = [](const Seen& seen) {
    return [&seen](AtkObject* child) { return SameControl(*AsControl(child)->Shown, seen); };
  };
  for (size_t i = drawn_.size(); i-- > 0;) {
    const Seen& shown = *AsControl(drawn_[i])->Shown;
    const bool stays =
        std::any_of(wanted.begin(), wanted.end(), [&](const Seen& seen) { return SameControl(shown, seen); });
    if (!stays) Release(TakeOut(i));
  }
  for (size_t i = 0; i < wanted.size(); ++i) {
    const auto place = drawn_.begin() + static_cast<std::ptrdiff_t>(i);
    const auto found = std::find_if(place, drawn_.end(), stands_for(wanted[i]));
    if (found == place && found != drawn_.end()) continue;
    const bool moves = found != drawn_.end();
    Insert(i, moves ? TakeOut(static_cast<size_t>(found - drawn_.begin())) : MakeControl(*this, wanted[i]));
  }
}

void Accessible::Insert(size_t index, AtkObject* child) {
  drawn_.insert(drawn_.begin() + static_cast<std::ptrdiff_t>(index), child);
  g_signal_emit_by_name(object_, "children-changed::add", static_cast<guint>(index), child);
}

AtkObject* Accessible::TakeOut(size_t index) {
  AtkObject* child = drawn_[index];
  drawn_.erase(drawn_.begin() + static_cast<std::ptrdiff_t>(index));
  g_signal_emit_by_name(object_, "children-changed::remove", static_cast<guint>(index), child);
  return child;
}

int Accessible::IndexOf(const AtkObject* child) const {
  const auto found = std::find(drawn_.begin(), drawn_.end(), child);
  return found == drawn_.end() ? -1 : static_cast<int>(found - drawn_.begin());
}

bool Accessible::Origin(AtkCoordType type, int& left, int& top) const {
  GdkWindow* window = gtk_layout_get_bin_window(GTK_LAYOUT(view_));
  if (!window) return false;
  left = top = 0;
  if (type == ATK_XY_PARENT) return true;
  gdk_window_get_origin(window, &left, &top);
  if (type == ATK_XY_SCREEN) return true;
  int frame_left = 0, frame_top = 0;
  gdk_window_get_origin(gdk_window_get_toplevel(window), &frame_left, &frame_top);
  left -= frame_left;
  top -= frame_top;
  return true;
}

// Not within the call that asks for it: a press may open a dialog or end the program, and the caller waits.
void Accessible::PressLater(const Seen& seen) {
  callbacks_.Later([this, seen] { Press(seen); });
}

void Accessible::Press(const Seen& seen) {
  // A modal dialog keeps presses by name off the window as it does the mouse.
  GtkWidget* modal = gtk_grab_get_current();
  if (modal && modal != view_ && !gtk_widget_is_ancestor(view_, modal)) return;
  if (BeforePress) BeforePress();
  const auto control = seen.Source.lock();
  if (!control || control->Root() != &scene_ || !control->Showing()) return;
  gate_.Run([&control] { control->PressByName(); });
}
