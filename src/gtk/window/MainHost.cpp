#include "gtk/window/MainHost.h"

#include <utility>

#include "gtk/window/Input.h"
#include "gtk/window/KeyboardFocus.h"

namespace {

// How long the window manager may take to carry out a move or size of the program's own.
constexpr gint64 SettlingMicroseconds = 250000;
constexpr unsigned SettlingLookMilliseconds = 100;

}  // namespace

MainHost::MainHost(Events& gate, PopupGroup& popups, std::shared_ptr<TaskBarEntry> entry, Window& scene)
    : SceneHost(gate, popups, scene, GTK_WINDOW_TOPLEVEL), entry_(std::move(entry)) {
  entry_->frame = Frame();
  popups_.StandOver(Frame(), &scene);
  gtk_window_set_role(FrameWindow(), "main");
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
    if (!waiting_) AdoptPlace();
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
    return Input::TellKey(gate_, scene_, event->key);
  });
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

// Takes over where the window really stands, once the program's own moves and sizes have been carried out and
// no drag is going on: reports before that are of places on the way.
void MainHost::AdoptPlace() {
  waiting_ = scene_.Captures() || g_get_monotonic_time() < settled_at_;
  if (waiting_) {
    callbacks_.After(SettlingLookMilliseconds, [this] { AdoptPlace(); });
    return;
  }
  if (!gtk_widget_get_mapped(Frame()) || iconified_ || moved_ || sized_) return;
  int left = 0, top = 0, width = 0, height = 0;
  gtk_window_get_position(FrameWindow(), &left, &top);
  gtk_window_get_size(FrameWindow(), &width, &height);
  if (left != ToPixels(scene_.Left) || top != ToPixels(scene_.Top)) {
    // Some window managers keep a window on the screen when it is moved and sized at once, but not when it is
    // moved alone.
    if (ask_again_) {
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
  if (!entry_->relay) return;
  if (event.changed_mask & GDK_WINDOW_STATE_ICONIFIED) {
    iconified_ = event.new_window_state & GDK_WINDOW_STATE_ICONIFIED;
    gate_.Run([this] { entry_->relay->WindowState = iconified_ ? Window::Minimised : Window::Normal; });
  }
  if (!(event.changed_mask & event.new_window_state & GDK_WINDOW_STATE_MAXIMIZED)) return;
  // The desktop's maximising never stays: it becomes the program's own.
  gtk_window_unmaximize(FrameWindow());
  gate_.Run([this] {
    if (!entry_->relay) return;
    entry_->relay->WindowState = Window::Maximised;
    entry_->relay->WindowState = Window::Normal;
  });
}
