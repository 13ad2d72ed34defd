#include "gtk/window/Hosts.h"

#include <glibmm/main.h>

#include <cmath>

#include "gtk/window/GtkDesktop.h"
#include "platform/Text.h"

namespace {

// How long the window manager may take to carry out a move or size of the program's own.
constexpr gint64 SettlingMicroseconds = 250000;

int Pixels(Twips twips) { return static_cast<int>(std::floor(twips / TwipsPerPixel + 0.5)); }

}  // namespace

SceneHost::SceneHost(GtkDesktop& desktop, Window& scene, Gtk::WindowType type)
    : desktop_(desktop), scene_(scene), frame_(type), view_(desktop.Gate, scene) {
  frame_.set_decorated(false);
  frame_.set_title(scene.Caption());
  frame_.add(view_);
  view_.show();
  view_.BeforeFrame = [this] { ApplyPlace(); };
  // As with the mouse: a press outside an open menu ends it first.
  if (scene.WindowKind() != Window::Kind::Popup)
    view_.accessible.BeforePress = [this] { desktop_.EndPopups(); };
}

SceneHost::~SceneHost() = default;

void SceneHost::Show() {
  ApplyPlace();
  frame_.show();
}

void SceneHost::Hide() { frame_.hide(); }

void SceneHost::Move() {
  moved_ = true;
  if (!frame_.get_mapped()) ApplyPlace();
}

void SceneHost::Resize() {
  sized_ = true;
  if (!frame_.get_mapped()) ApplyPlace();
}

void SceneHost::ApplyPlace() {
  const int width = std::max(1, Pixels(scene_.Width)), height = std::max(1, Pixels(scene_.Height));
  if (sized_) {
    // An unmapped window takes its first size from the default, later ones from a resize.
    frame_.set_default_size(width, height);
    frame_.resize(width, height);
  }
  if (moved_) frame_.move(Pixels(scene_.Left), Pixels(scene_.Top));
  moved_ = sized_ = false;
}

SplashHost::SplashHost(GtkDesktop& desktop, Window& scene) : SceneHost(desktop, scene, Gtk::WINDOW_POPUP) {
  desktop.AddSplash(*this);
}

SplashHost::~SplashHost() { desktop_.RemoveSplash(); }

void SplashHost::Show() {
  const ScreenRect area = desktop_.WorkArea(scene_);
  sized_ = true;
  scene_.Move(area.Left + (area.Right - area.Left - scene_.Width) / 2,
              area.Top + (area.Bottom - area.Top - scene_.Height) / 2);
  SceneHost::Show();
}

PopupHost::PopupHost(GtkDesktop& desktop, Window& scene) : SceneHost(desktop, scene, Gtk::WINDOW_POPUP) {
  frame_.set_type_hint(Gdk::WINDOW_TYPE_HINT_POPUP_MENU);
  frame_.signal_grab_broken_event().connect([this](GdkEventGrabBroken*) {
    grabbed_ = false;
    End();
    return false;
  });
  desktop.AddPopup(*this);
}

PopupHost::~PopupHost() {
  Hide();
  desktop_.RemovePopup(*this);
}

void PopupHost::Show() {
  moved_ = sized_ = true;
  if (GtkWindow* owner = desktop_.MainFrame()) gtk_window_set_transient_for(frame_.gobj(), owner);
  SceneHost::Show();
  if (Grab()) return;
  // Somebody else holds the mouse, perhaps for a moment only. A menu that hears of no press would never end.
  retry_ = Glib::signal_timeout().connect(
      [this] {
        if (!Grab()) End();
        return false;
      },
      100);
}

// With owner events, so that nothing is lost of what happens in the program's other windows.
bool PopupHost::Grab() {
  GdkWindow* window = gtk_widget_get_window(GTK_WIDGET(frame_.gobj()));
  GdkSeat* seat = gdk_display_get_default_seat(gdk_window_get_display(window));
  grabbed_ = gdk_seat_grab(seat, window, GDK_SEAT_CAPABILITY_ALL_POINTING, TRUE, nullptr, nullptr, nullptr,
                           nullptr) == GDK_GRAB_SUCCESS;
  return grabbed_;
}

void PopupHost::Hide() {
  retry_.disconnect();
  if (grabbed_) gdk_seat_ungrab(gdk_display_get_default_seat(gdk_display_get_default()));
  grabbed_ = false;
  SceneHost::Hide();
}

void PopupHost::End() {
  if (scene_.Visible && scene_.Deactivate) desktop_.Gate.Run([this] { scene_.Deactivate(); });
}

bool PopupHost::Contains(double x, double y) {
  GdkWindow* window = gtk_widget_get_window(GTK_WIDGET(frame_.gobj()));
  if (!window || !gdk_window_is_visible(window)) return false;
  int left = 0, top = 0;
  gdk_window_get_origin(window, &left, &top);
  return x >= left && y >= top && x < left + gdk_window_get_width(window) &&
         y < top + gdk_window_get_height(window);
}

MainHost::MainHost(GtkDesktop& desktop, Window& scene) : SceneHost(desktop, scene, Gtk::WINDOW_TOPLEVEL) {
  frame_.set_role("main");
  frame_.add_events(Gdk::STRUCTURE_MASK | Gdk::FOCUS_CHANGE_MASK);
  frame_.signal_configure_event().connect([this](GdkEventConfigure* event) { return OnConfigure(event); },
                                          false);
  frame_.signal_window_state_event().connect([this](GdkEventWindowState* event) { return OnState(event); });
  frame_.signal_delete_event().connect([this](GdkEventAny*) {
    desktop_.Gate.Run([this] {
      if (relay && relay->QueryUnload) relay->QueryUnload();
    });
    return true;
  });
  frame_.signal_focus_in_event().connect(
      [this](GdkEventFocus*) {
        desktop_.Gate.Run([this] {
          if (scene_.Activate) scene_.Activate();
          if (scene_.GotFocus) scene_.GotFocus();
        });
        return false;
      },
      false);
  frame_.signal_focus_out_event().connect(
      [this](GdkEventFocus*) {
        desktop_.EndPopups();
        desktop_.Gate.Run([this] {
          if (scene_.Deactivate) scene_.Deactivate();
          if (scene_.LostFocus) scene_.LostFocus();
        });
        return false;
      },
      false);
  frame_.signal_key_press_event().connect([this](GdkEventKey* event) { return OnKey(event); }, false);
  sized_ = true;
}

bool MainHost::OnKey(GdkEventKey* event) {
  if (!scene_.KeyDown || event->state & (GDK_SUPER_MASK | GDK_META_MASK)) return false;
  // Where the layout has letters of another script, a key is what it is in the first layout.
  guint key = event->keyval;
  if (gdk_keyval_to_unicode(key) > 0x7F)
    gdk_keymap_translate_keyboard_state(gdk_keymap_get_for_display(gdk_display_get_default()),
                                        event->hardware_keycode, static_cast<GdkModifierType>(event->state),
                                        0, &key, nullptr, nullptr, nullptr);
  const char* name = gdk_keyval_name(key);
  if (!name) return false;
  const KeyPress press{name, (event->state & GDK_CONTROL_MASK) != 0, (event->state & GDK_SHIFT_MASK) != 0,
                       (event->state & GDK_MOD1_MASK) != 0};
  bool used = false;
  desktop_.Gate.Run([&] { used = scene_.KeyDown(press); });
  return used;
}

void MainHost::Show() {
  if (iconified_) frame_.deiconify();
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
  if (scene_.WindowState == Window::Minimised && !iconified_) frame_.iconify();
  if (scene_.WindowState == Window::Normal && iconified_) frame_.deiconify();
}

void MainHost::HoverFromMenu(double x, double y) {
  const Twips left = x * TwipsPerPixel - scene_.Left, top = y * TwipsPerPixel - scene_.Top;
  if (left < 0 || top < 0 || left >= scene_.Width || top >= scene_.Height) return;
  desktop_.Gate.Run([&] { scene_.MouseMoved(0, 0, left, top); });
}

void MainHost::PressFromMenu(int button, double x, double y) {
  const Twips left = x * TwipsPerPixel - scene_.Left, top = y * TwipsPerPixel - scene_.Top;
  if (left < 0 || top < 0 || left >= scene_.Width || top >= scene_.Height) return;
  desktop_.Gate.Run([&] { scene_.MousePressed(button == 1 ? 1 : button == 3 ? 2 : 4, 0, left, top); });
}

void MainHost::Focus() { gtk_window_present_with_time(frame_.gobj(), gtk_get_current_event_time()); }

bool MainHost::OnConfigure(GdkEventConfigure*) {
  if (!waiting_) AdoptPlace();
  return false;
}

// Takes over where the window really stands, once the program's own moves and sizes have been carried out and
// no drag is going on: reports before that are of places on the way.
void MainHost::AdoptPlace() {
  waiting_ = scene_.Captures() || g_get_monotonic_time() < settled_at_;
  if (waiting_) {
    Glib::signal_timeout().connect_once([this] { AdoptPlace(); }, 100);
    return;
  }
  if (!frame_.get_mapped() || iconified_ || moved_ || sized_) return;
  int left = 0, top = 0, width = 0, height = 0;
  frame_.get_position(left, top);
  frame_.get_size(width, height);
  if (left != Pixels(scene_.Left) || top != Pixels(scene_.Top)) {
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
  if (width == Pixels(scene_.Width) && height == Pixels(scene_.Height)) return;
  desktop_.Gate.Run([&] { scene_.Sized(width * TwipsPerPixel, height * TwipsPerPixel); });
}

bool MainHost::OnState(GdkEventWindowState* event) {
  if (!relay) return false;
  if (event->changed_mask & GDK_WINDOW_STATE_ICONIFIED) {
    iconified_ = event->new_window_state & GDK_WINDOW_STATE_ICONIFIED;
    desktop_.Gate.Run([this] { relay->WindowState = iconified_ ? Window::Minimised : Window::Normal; });
  }
  constexpr int Maximised = GDK_WINDOW_STATE_MAXIMIZED;
  if (event->changed_mask & event->new_window_state & Maximised) {
    // The desktop's maximising never stays: it becomes the program's own.
    frame_.unmaximize();
    desktop_.Gate.Run([this] {
      relay->WindowState = Window::Maximised;
      relay->WindowState = Window::Normal;
    });
  }
  return false;
}

RelayHost::RelayHost(GtkDesktop& desktop, Window& scene) : desktop_(desktop), scene_(scene) {
  if (desktop_.main_host) desktop_.main_host->relay = &scene;
  RelayHost::Caption();
}

RelayHost::~RelayHost() {
  if (desktop_.main_host) desktop_.main_host->relay = nullptr;
}

void RelayHost::Caption() {
  if (desktop_.main_host) desktop_.main_host->Frame().set_title(Text::ForTitleBar(scene_.Caption()));
}

void RelayHost::State() {
  if (desktop_.main_host && scene_.WindowState == Window::Minimised) desktop_.main_host->Frame().iconify();
}

void RelayHost::Focus() {
  if (desktop_.main_host) desktop_.main_host->Focus();
}
