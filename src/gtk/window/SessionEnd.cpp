#include "gtk/window/SessionEnd.h"

#include <X11/Xlib.h>
#include <gdk/gdkx.h>
#include <glib-unix.h>
#include <unistd.h>

#include <csignal>
#include <string>
#include <utility>

#include "gtk/base/Widgets.h"

namespace {

constexpr int Signals[] = {SIGTERM, SIGINT, SIGHUP};
// How long an end without a screen may take, in seconds.
constexpr unsigned MostAfterScreen = 15;

// The session manager that most desktops have, and how it speaks to its clients.
constexpr const char *Manager = "org.gnome.SessionManager", *ManagerPath = "/org/gnome/SessionManager",
                     *Private = "org.gnome.SessionManager.ClientPrivate";

}  // namespace

SessionEnd::SessionEnd(std::function<void()> ended, Callbacks::Runner runner)
    : ended_(std::move(ended)), callbacks_(std::move(runner)) {
  const auto end = +[](gpointer self) -> gboolean {
    auto* watch = static_cast<SessionEnd*>(self);
    watch->callbacks_.Run(watch->ended_);
    return G_SOURCE_CONTINUE;
  };
  for (const int signal : Signals) g_unix_signal_add(signal, end, this);
  HearOfTheScreen();
  // Behind the start.
  callbacks_.Later([this] {
    g_bus_get(G_BUS_TYPE_SESSION, nullptr, &Callbacks::Ended,
              callbacks_.Ending([this](GObject*, GAsyncResult* result) {
                bus_.reset(g_bus_get_finish(result, nullptr));
                if (bus_) Register(bus_.get());
              }));
  });
}

// Without its screen the X library would end the process on the spot. What the program has to write needs
// none.
void SessionEnd::HearOfTheScreen() {
  GdkDisplay* display = gdk_display_get_default();
  if (!GDK_IS_X11_DISPLAY(display)) return;
  XSetIOErrorHandler(+[](Display*) { return 0; });
  XSetIOErrorExitHandler(
      gdk_x11_display_get_xdisplay(display),
      +[](Display*, void* self) {
        auto* watch = static_cast<SessionEnd*>(self);
        if (std::exchange(watch->screen_gone_, true)) return;
        g_object_set_data(G_OBJECT(gdk_display_get_default()), ScreenGone, watch);
        // Should something wait for an answer of the screen's.
        std::signal(SIGALRM, SIG_DFL);
        ::alarm(MostAfterScreen);
        watch->callbacks_.Later(watch->ended_);
      },
      this);
}

SessionEnd::~SessionEnd() {
  while (g_source_remove_by_user_data(this)) {
  }
  if (subscription_) g_dbus_connection_signal_unsubscribe(bus_.get(), subscription_);
}

void SessionEnd::LetSignalsKill() {
  for (const int signal : Signals) std::signal(signal, SIG_DFL);
}

void SessionEnd::Register(GDBusConnection* bus) {
  // Where there is no session manager, there are the signals.
  g_dbus_connection_call(bus, Manager, ManagerPath, Manager, "RegisterClient",
                         g_variant_new("(ss)", "marlowick", TextOf(g_getenv("DESKTOP_AUTOSTART_ID")).c_str()),
                         G_VARIANT_TYPE("(o)"), G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, nullptr,
                         &Callbacks::Ended, callbacks_.Ending([this](GObject* source, GAsyncResult* result) {
                           GVariant* answer =
                               g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, nullptr);
                           if (!answer) return;
                           const char* client = nullptr;
                           g_variant_get(answer, "(&o)", &client);
                           Subscribe(client);
                           g_variant_unref(answer);
                         }));
}

void SessionEnd::Subscribe(const char* client) {
  client_ = client;
  subscription_ = g_dbus_connection_signal_subscribe(
      bus_.get(), Manager, Private, nullptr, client, nullptr, G_DBUS_SIGNAL_FLAGS_NONE,
      +[](GDBusConnection*, const char*, const char*, const char*, const char* signal, GVariant*,
          gpointer self) {
        auto* watch = static_cast<SessionEnd*>(self);
        watch->callbacks_.Run([watch, signal] { watch->Told(signal); });
      },
      this, nullptr);
}

void SessionEnd::Told(const std::string& signal) {
  if (signal == "EndSession" || signal == "Stop") return ended_();
  // Nothing of this program's holds a log-out up.
  if (signal == "QueryEndSession")
    g_dbus_connection_call(bus_.get(), Manager, client_.c_str(), Private, "EndSessionResponse",
                           g_variant_new("(bs)", TRUE, ""), nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START, -1,
                           nullptr, nullptr, nullptr);
}
