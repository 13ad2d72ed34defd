#include "gtk/window/MainHost.h"

#include <algorithm>
#include <utility>

#include "gtk/window/Input.h"
#include "gtk/window/KeyboardFocus.h"
#include "gtk/window/Manager.h"
#include "gtk/window/WorkArea.h"

namespace {

// How long the window manager may take to carry out a move or size of the program's own.
constexpr gint64 SettlingMicroseconds = 250000;
constexpr unsigned SettlingLookMilliseconds = 100;
// Between a place that is reported and what belongs to it: the frame around it, its being the maximised one.
constexpr gint64 NamingMicroseconds = 50000;

}  // namespace

MainHost::MainHost(Events& gate, PopupGroup& popups, std::shared_ptr<TaskBarEntry> entry, Window& scene)
    : SceneHost(gate, popups, scene, GTK_WINDOW_TOPLEVEL),
      entry_(std::move(entry)),
      frame_of_view_(gtk_layout_new(nullptr, nullptr)) {
  g_object_ref(View());
  gtk_container_remove(GTK_CONTAINER(Frame()), View());
  gtk_layout_put(GTK_LAYOUT(frame_of_view_), View(), 0, 0);
  g_object_unref(View());
  gtk_container_add(GTK_CONTAINER(Frame()), frame_of_view_);
  gtk_widget_show(frame_of_view_);
  entry_->frame = Frame();
  popups_.StandOver(Frame(), &scene);
  gtk_window_set_role(FrameWindow(), "main");
  // For window managers that would put the first window into the corner; the others place it as they like.
  gtk_window_set_position(FrameWindow(), GTK_WIN_POS_CENTER);
  gtk_widget_add_events(Frame(), GDK_STRUCTURE_MASK | GDK_FOCUS_CHANGE_MASK);
  Wire();
  sized_ = true;
}

MainHost::~MainHost() {
  popups_.StandOver(nullptr, nullptr);
  entry_->frame = nullptr;
}

void MainHost::Wire() {
  using Handled = gboolean(GtkWidget*, GdkEvent*);
  callbacks_.On<Handled>(Frame(), "configure-event", [this](auto*, auto*) {
    if (waiting_) return FALSE;
    // The window manager may still be framing the window, or be about to say that this size is the maximised
    // one.
    settled_at_ = std::max(settled_at_, g_get_monotonic_time() + NamingMicroseconds);
    AdoptPlace();
    return FALSE;
  });
  callbacks_.On<Handled>(View(), "event", [this](auto*, GdkEvent* event) {
    if (event->type == GDK_BUTTON_PRESS || event->type == GDK_BUTTON_RELEASE) OnButton(event->button);
    // What a press begins counts from where the window is, be it that no report of that has come.
    if (event->type == GDK_BUTTON_PRESS && !waiting_) AdoptPlace();
    return FALSE;
  });
  callbacks_.On<Handled>(Frame(), "window-state-event", [this](auto*, GdkEvent* event) {
    OnState(event->window_state);
    return FALSE;
  });
  callbacks_.On<Handled>(Frame(), "delete-event", [this](auto*, auto*) {
    gate_.Run([this] {
      if (entry_->relay && entry_->relay->QueryUnload) entry_->relay->QueryUnload();
    });
    return TRUE;
  });
  callbacks_.On<Handled>(Frame(), "focus-in-event", [this](auto*, auto*) {
    OnFocus(true);
    return FALSE;
  });
  callbacks_.On<Handled>(Frame(), "focus-out-event", [this](auto*, auto*) {
    OnFocus(false);
    return FALSE;
  });
  callbacks_.On<Handled>(Frame(), "key-press-event", [this](auto*, GdkEvent* event) -> gboolean {
    if (Input::TellKey(gate_, scene_, event->key)) return TRUE;
    FindKeyboardAPlace();
    return FALSE;
  });
  // Whoever takes the keyboard from one widget for another has done so by then.
  callbacks_.On<void(GtkWindow*, GtkWidget*)>(Frame(), "set-focus", [this](auto*, GtkWidget* widget) {
    if (!widget) callbacks_.Later([this] { FindKeyboardAPlace(); });
  });
}

void MainHost::FindKeyboardAPlace() {
  if (!gtk_window_get_focus(FrameWindow()) && scene_.KeyboardFree)
    gate_.Run([this] { scene_.KeyboardFree(); });
}

void MainHost::OnFocus(bool in) {
  if (in == active_ || (!in && KeepsFocus())) return;
  active_ = in;
  if (!in) popups_.EndAll();
  gate_.Run([this, in] {
    if (const auto changed = in ? scene_.Activate : scene_.Deactivate) changed();
    if (const auto moved = in ? scene_.GotFocus : scene_.LostFocus) moved();
  });
}

bool MainHost::KeepsFocus() const {
  GdkWindow* own = gtk_widget_get_window(Frame());
  return popups_.AnyOpen() && (HasKeyboard(own) || KeyboardIsNobodys(gdk_window_get_display(own)));
}

void MainHost::Show() {
  if (iconified_) gtk_window_deiconify(FrameWindow());
  SceneHost::Show();
}

void MainHost::Hide() {
  // A minimised window is off the screen, and its task bar entry has to stay.
  if (scene_.WindowState != Window::Minimised) SceneHost::Hide();
}

void MainHost::Move() {
  ask_again_ = true;
  settled_at_ = g_get_monotonic_time() + SettlingMicroseconds;
  SceneHost::Move();
}

void MainHost::Resize() {
  settled_at_ = g_get_monotonic_time() + SettlingMicroseconds;
  SceneHost::Resize();
}

void MainHost::State() {
  if (scene_.WindowState == Window::Minimised && !iconified_) gtk_window_iconify(FrameWindow());
  if (scene_.WindowState == Window::Normal && iconified_) gtk_window_deiconify(FrameWindow());
}

void MainHost::Focus() { gtk_window_present_with_time(FrameWindow(), gtk_get_current_event_time()); }

void MainHost::ApplyPlace() {
  const bool managed = ApplyMaximised();
  PlaceView();
  if (managed && IsMaximised()) {
    moved_ = sized_ = false;
    return;
  }
  if (moved_ && !sized_ && scene_.Captures()) HandOverDrag();
  SceneHost::ApplyPlace();
}

bool MainHost::ApplyMaximised() {
  if (!Manager::Can(FrameWindow(), "_NET_WM_STATE_MAXIMIZED_VERT")) return false;
  const bool fills = scene_.FillsScreen;
  if (IsMaximised() == fills) return true;
  awaited_ = fills;
  if (fills) {
    MeasureOverhang();
    gtk_window_maximize(FrameWindow());
  } else {
    gtk_window_unmaximize(FrameWindow());
  }
  return true;
}

void MainHost::MeasureOverhang() {
  overhang_ = scene_.FillsScreen ? std::max(0, ToPixels(WorkAreaOf(scene_).Left - scene_.Left)) : 0;
}

void MainHost::PlaceView() {
  const GdkRectangle place{-Cut(), -Cut(), ToPixels(scene_.Width), ToPixels(scene_.Height)};
  if (gdk_rectangle_equal(&place, &place_of_view_)) return;
  place_of_view_ = place;
  gtk_layout_move(GTK_LAYOUT(frame_of_view_), View(), place.x, place.y);
  gtk_widget_set_size_request(View(), place.width, place.height);
}

// Moves by the title bar are the window manager's, which knows edges, halves of the screen and other
// workspaces. The first step is the program's own; where the button is up again by then, all of them are.
void MainHost::HandOverDrag() {
  if (!Manager::Can(FrameWindow(), "_NET_WM_MOVERESIZE")) return;
  GdkWindow* window = gtk_widget_get_window(Frame());
  GdkDevice* mouse = gdk_seat_get_pointer(gdk_display_get_default_seat(gdk_window_get_display(window)));
  GdkModifierType held{};
  int x = 0, y = 0;
  gdk_window_get_device_position(gdk_screen_get_root_window(gdk_window_get_screen(window)), mouse, &x, &y,
                                 &held);
  if (!(held & GDK_BUTTON1_MASK)) return;
  gate_.Run([&] {
    const Twips left = x * TwipsPerPixel - scene_.Left, top = y * TwipsPerPixel - scene_.Top;
    scene_.MouseMoved(Input::Held(held), Input::Shift(held), left, top);
    scene_.MouseReleased(Input::Button(GDK_BUTTON_PRIMARY), Input::Shift(held), left, top);
  });
  SceneHost::ApplyPlace();
  dragged_at_ = {x - ToPixels(scene_.Left), y - ToPixels(scene_.Top)};
  ask_again_ = false;
  gtk_window_begin_move_drag(FrameWindow(), GDK_BUTTON_PRIMARY, x, y, GDK_CURRENT_TIME);
}

// The end of a drag is told to who moves the window: if that is still the program, the window manager was too
// late.
void MainHost::OnButton(const GdkEventButton& event) {
  const auto at = std::exchange(dragged_at_, std::nullopt);
  if (!at || event.type != GDK_BUTTON_RELEASE) return;
  gate_.Run([&] {
    scene_.Move((static_cast<int>(event.x_root) - at->x) * TwipsPerPixel,
                (static_cast<int>(event.y_root) - at->y) * TwipsPerPixel);
  });
}

// Takes over where the window really stands, once the program's own moves and sizes have been carried out and
// no drag is going on: reports before that are of places on the way.
void MainHost::AdoptPlace() {
  waiting_ = gtk_widget_get_mapped(Frame()) && !iconified_ &&
             (scene_.Captures() || moved_ || sized_ || g_get_monotonic_time() < settled_at_);
  if (waiting_) {
    callbacks_.After(SettlingLookMilliseconds, [this] { AdoptPlace(); });
    return;
  }
  if (!gtk_widget_get_mapped(Frame()) || iconified_ || moved_ || sized_ || awaited_) return;
  int left = 0, top = 0, width = 0, height = 0;
  int frame_left = 0, frame_top = 0;
  gdk_window_get_origin(gtk_widget_get_window(Frame()), &left, &top);
  gtk_window_get_position(FrameWindow(), &frame_left, &frame_top);
  border_ = {left - frame_left, top - frame_top};
  gtk_window_get_size(FrameWindow(), &width, &height);
  left -= Cut();
  top -= Cut();
  width += 2 * Cut();
  height += 2 * Cut();
  if (left != ToPixels(scene_.Left) || top != ToPixels(scene_.Top)) {
    // Some window managers keep a window on the screen when it is moved and sized at once, but not when it is
    // moved alone.
    if (ask_again_ && !maximised_) {
      Move();
      ask_again_ = false;
      ApplyPlace();
      AdoptPlace();
      return;
    }
    scene_.Placed(left * TwipsPerPixel, top * TwipsPerPixel);
  }
  if (width == ToPixels(scene_.Width) && height == ToPixels(scene_.Height)) return;
  gate_.Run([&] { scene_.Sized(width * TwipsPerPixel, height * TwipsPerPixel); });
}

void MainHost::OnState(const GdkEventWindowState& event) {
  if (event.changed_mask & GDK_WINDOW_STATE_ICONIFIED) {
    iconified_ = event.new_window_state & GDK_WINDOW_STATE_ICONIFIED;
    gate_.Run([this] {
      if (entry_->relay) entry_->relay->WindowState = iconified_ ? Window::Minimised : Window::Normal;
    });
  }
  if (event.changed_mask & GDK_WINDOW_STATE_MAXIMIZED)
    OnMaximised(event.new_window_state & GDK_WINDOW_STATE_MAXIMIZED);
}

void MainHost::OnMaximised(bool maximised) {
  maximised_ = maximised;
  if (!awaited_ && maximised != scene_.FillsScreen) {
    // The desktop's maximising becomes the program's own, and so does its end.
    gate_.Run([this] {
      if (!entry_->relay) return;
      entry_->relay->WindowState = Window::Maximised;
      entry_->relay->WindowState = Window::Normal;
    });
    MeasureOverhang();
  }
  if (awaited_ == maximised) awaited_.reset();
  if (awaited_) return;
  if (!maximised_) Move(), Resize();  // whatever the window manager takes for the place before
  PlaceView();
  AdoptPlace();
}
