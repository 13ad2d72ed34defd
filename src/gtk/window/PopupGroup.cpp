#include "gtk/window/PopupGroup.h"

#include <algorithm>
#include <utility>

#include "gtk/window/Input.h"
#include "gtk/window/Manager.h"

namespace {

// Somebody else may hold the mouse, mostly for a moment only. Popups that hear of no press would never end.
constexpr unsigned RetryMilliseconds = 100;
constexpr int MostTries = 30;

GdkWindow* TopOf(const GdkEvent* event) {
  return event->any.window ? gdk_window_get_toplevel(event->any.window) : nullptr;
}

bool Contains(GtkWidget* frame, double x, double y) {
  GdkWindow* window = gtk_widget_get_window(frame);
  if (!window || !gdk_window_is_visible(window)) return false;
  int left = 0, top = 0;
  gdk_window_get_origin(window, &left, &top);
  return x >= left && y >= top && x < left + gdk_window_get_width(window) &&
         y < top + gdk_window_get_height(window);
}

}  // namespace

PopupGroup::PopupGroup(Events& gate) : gate_(gate) {}

PopupGroup::~PopupGroup() { LetGo(); }

// Made with the first popup: the first widget of a program loads the desktop's theme, and a start has better
// things to do.
void PopupGroup::MakeHolder() {
  if (holder_) return;
  holder_.reset(gtk_invisible_new());
  Manager::WaitForNoFrames(holder_.get());
  gtk_widget_show(holder_.get());
  callbacks_.On<gboolean(GtkWidget*, GdkEvent*)>(holder_.get(), "grab-broken-event", [this](auto*, auto*) {
    grabbed_ = false;
    EndAll();
    return TRUE;
  });
}

void PopupGroup::StandOver(GtkWidget* frame, Window* scene) {
  main_frame_ = frame;
  main_scene_ = scene;
}

void PopupGroup::Add(GtkWidget* frame, Window& scene) {
  // The grab stays while the one that there is moves to the front.
  std::erase_if(popups_, [&scene](const Popup& popup) { return popup.scene == &scene; });
  popups_.push_back({frame, &scene});
  Grab();
}

void PopupGroup::Remove(const Window& scene) {
  std::erase_if(popups_, [&scene](const Popup& popup) { return popup.scene == &scene; });
  if (popups_.empty()) LetGo();
}

bool PopupGroup::EndAll() {
  const std::vector<Popup> open = popups_;
  for (auto popup = open.rbegin(); popup != open.rend(); ++popup) {
    // The end of one may be the end of others.
    if (!Lists(popup->scene)) continue;
    gate_.Run([scene = popup->scene] {
      if (scene->Visible && scene->Deactivate) scene->Deactivate();
    });
  }
  return !open.empty();
}

void PopupGroup::Clear() {
  for (const Popup& popup : std::exchange(popups_, {})) gtk_widget_hide(popup.frame);
  LetGo();
}

// With owner events, so that nothing is lost of what happens in the program's own windows.
void PopupGroup::Grab() {
  retry_ = 0;
  if (grabbed_ || popups_.empty()) return;
  MakeHolder();
  GdkSeat* seat = gdk_display_get_default_seat(gtk_widget_get_display(holder_.get()));
  grabbed_ = gdk_seat_grab(seat, gtk_widget_get_window(holder_.get()), GDK_SEAT_CAPABILITY_ALL_POINTING, TRUE,
                           nullptr, nullptr, nullptr, nullptr) == GDK_GRAB_SUCCESS;
  if (grabbed_) return;
  if (++tries_ > MostTries) {
    EndAll();
    return;
  }
  retry_ = callbacks_.After(RetryMilliseconds, [this] { Grab(); });
}

void PopupGroup::LetGo() {
  callbacks_.Cancel(std::exchange(retry_, 0));
  tries_ = 0;
  if (!std::exchange(grabbed_, false)) return;
  gdk_seat_ungrab(gdk_display_get_default_seat(gtk_widget_get_display(holder_.get())));
}

bool PopupGroup::Takes(GdkEvent* event) {
  if (lone_alt_.Completes(event) && ReachesMain(event)) Input::TellKey(gate_, *main_scene_, {"Alt"});
  switch (event->type) {
    case GDK_KEY_PRESS:
    case GDK_KEY_RELEASE:
      return TakesKey(event->key);
    case GDK_MOTION_NOTIFY:
      return AnyOpen() && TakesMove(event);
    case GDK_BUTTON_PRESS:
      if (TakesSideButton(event->button)) return true;
      [[fallthrough]];
    case GDK_BUTTON_RELEASE:
      return AnyOpen() && TakesPress(event);
    case GDK_SCROLL:
      return AnyOpen() && TakesWheel(event->scroll);
    default:
      return false;
  }
}

bool PopupGroup::TakesKey(const GdkEventKey& event) {
  if (event.type == GDK_KEY_RELEASE) return taken_.erase(event.hardware_keycode) > 0;
  taken_.erase(event.hardware_keycode);
  if (!AnyOpen()) return false;
  taken_.insert(event.hardware_keycode);
  const std::vector<Popup> open = popups_;
  for (auto popup = open.rbegin(); popup != open.rend(); ++popup)
    if (Lists(popup->scene) && Input::TellKey(gate_, *popup->scene, event)) return true;
  if (main_scene_ && Input::TellKey(gate_, *main_scene_, event)) return true;
  if (event.keyval == GDK_KEY_Escape) EndAll();
  return true;
}

// The buttons at a mouse's side are keys, wherever in the main window or over its popups.
bool PopupGroup::TakesSideButton(const GdkEventButton& event) {
  if (event.button != Input::BackButton && event.button != Input::ForwardButton) return false;
  if (!ReachesMain(reinterpret_cast<const GdkEvent*>(&event))) return false;
  return Input::TellKey(gate_, *main_scene_, {event.button == Input::BackButton ? "Back" : "Forward"});
}

bool PopupGroup::ReachesMain(const GdkEvent* event) const {
  if (!main_scene_) return false;
  GtkWidget* modal = gtk_grab_get_current();
  if (modal && !gtk_widget_is_ancestor(modal, main_frame_)) return false;
  return ComesToGroup(event) || TopOf(event) == gtk_widget_get_window(main_frame_);
}

bool PopupGroup::TakesMove(GdkEvent* event) {
  if (!ComesToGroup(event)) return false;
  const Popup* popup = At(event);
  if (popup && gtk_widget_get_window(popup->frame) == TopOf(event)) return false;
  // Where a button is held the mouse belongs to the popup that it went down on.
  const bool held =
      std::any_of(popups_.begin(), popups_.end(), [](const Popup& one) { return one.scene->Captures(); });
  if (held) return false;
  if (popup)
    Tell(*popup->scene, event);
  else if (OnMain(event))
    Tell(*main_scene_, event);
  return true;
}

bool PopupGroup::TakesPress(GdkEvent* event) {
  const bool comes_to_group = ComesToGroup(event), presses = event->type == GDK_BUTTON_PRESS;
  if (const Popup* popup = At(event)) {
    const bool own = gtk_widget_get_window(popup->frame) == TopOf(event);
    if (own || !comes_to_group || (!presses && !popup->scene->Captures())) return false;
    Tell(*popup->scene, event);
    return true;
  }
  if (!presses) return false;
  const bool on_main = comes_to_group && OnMain(event);
  EndAll();
  if (on_main && main_scene_) Tell(*main_scene_, event);
  return comes_to_group;
}

// To the popup under the mouse, whatever was reported it; nothing behind the popups is scrolled.
bool PopupGroup::TakesWheel(const GdkEventScroll& event) {
  const int notches = wheel_.Turn(event);
  const Popup* popup = At(reinterpret_cast<const GdkEvent*>(&event));
  if (notches == 0 || !popup) return true;
  gate_.Run([scene = popup->scene, notches, &event] {
    scene->Wheeled(notches, event.x_root * TwipsPerPixel - scene->Left,
                   event.y_root * TwipsPerPixel - scene->Top);
  });
  return true;
}

bool PopupGroup::ComesToGroup(const GdkEvent* event) const {
  GdkWindow* top = TopOf(event);
  return top && ((holder_ && top == gtk_widget_get_window(holder_.get())) ||
                 std::any_of(popups_.begin(), popups_.end(), [top](const Popup& popup) {
                   return gtk_widget_get_window(popup.frame) == top;
                 }));
}

const PopupGroup::Popup* PopupGroup::At(const GdkEvent* event) const {
  double x = 0, y = 0;
  gdk_event_get_root_coords(event, &x, &y);
  const auto found = std::find_if(popups_.rbegin(), popups_.rend(),
                                  [x, y](const Popup& popup) { return Contains(popup.frame, x, y); });
  return found == popups_.rend() ? nullptr : &*found;
}

// Another program's window may lie over the main window.
bool PopupGroup::OnMain(GdkEvent* event) const {
  GdkWindow* under = gdk_device_get_window_at_position(gdk_event_get_device(event), nullptr, nullptr);
  return under && main_frame_ && gdk_window_get_toplevel(under) == gtk_widget_get_window(main_frame_);
}

bool PopupGroup::Lists(const Window* scene) const {
  return std::any_of(popups_.begin(), popups_.end(),
                     [scene](const Popup& popup) { return popup.scene == scene; });
}

void PopupGroup::Tell(Window& scene, const GdkEvent* event) {
  double x = 0, y = 0;
  gdk_event_get_root_coords(event, &x, &y);
  const Twips left = x * TwipsPerPixel - scene.Left, top = y * TwipsPerPixel - scene.Top;
  if (left < 0 || top < 0 || left >= scene.Width || top >= scene.Height) return;
  GdkModifierType state{};
  gdk_event_get_state(event, &state);
  gate_.Run([&] {
    if (event->type == GDK_MOTION_NOTIFY)
      scene.MouseMoved(0, Input::Shift(state), left, top);
    else if (event->type == GDK_BUTTON_PRESS)
      scene.MousePressed(Input::Button(event->button.button), Input::Shift(state), left, top);
    else
      scene.MouseReleased(Input::Button(event->button.button), Input::Shift(state), left, top);
  });
}
