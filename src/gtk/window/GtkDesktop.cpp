#include "gtk/window/GtkDesktop.h"

#include <gtk/gtk.h>

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

#include "gtk/base/GObjects.h"
#include "gtk/base/ProgramLine.h"
#include "gtk/dialog/DialogBinder.h"
#include "gtk/dialog/Dialogs.h"
#include "gtk/favourites/BookmarkReader.h"
#include "gtk/page/BrowserWorld.h"
#include "gtk/page/GtkBrowser.h"
#include "gtk/window/GtkComboField.h"
#include "gtk/window/ProgramFiles.h"
#include "platform/scene/Drawing.h"

namespace {

// One pass of the pump handles what is waiting; a source that never runs dry doesn't hold it.
constexpr int MostEventsInOnePass = 200;

}  // namespace

GtkDesktop::GtkDesktop(std::string command_line)
    : command_line_(std::move(command_line)),
      drawing_(MakeDrawing()),
      session_([this] { EndSession(); },
               [this](const std::function<void()>& handler) { Gate.Run(handler); }) {
  gdk_event_handler_set(&GtkDesktop::OnEvent, this, nullptr);
  Gate.Unhandled = [this](const Failure& failure) { Die(failure); };
}

GtkDesktop::~GtkDesktop() = default;

void GtkDesktop::EndSession() {
  session_ended_ = true;
  // Whoever waits in the middle of something comes to its end first.
  if (waiting_.InCourse()) return;
  SessionEnding ? SessionEnding() : End(0);
}

int GtkDesktop::Run(const std::function<void()>& start) {
  Gate.Run([&] {
    // The engine comes up on the other processors while the program does on this one.
    World();
    start();
    files_->FinishLater();
  });
  gtk_main();
  return 0;
}

std::string GtkDesktop::ProgramFolder() {
  if (!files_)
    files_ =
        std::make_unique<ProgramFiles>([this](const std::function<void()>& handler) { Gate.Run(handler); });
  return files_->Folder();
}

BrowserWorld& GtkDesktop::World() {
  const auto policy = [this](Browser*& taker, bool& cancel) {
    if (NewWindow2) NewWindow2(taker, cancel);
  };
  if (!world_)
    world_ = std::make_unique<BrowserWorld>(
        ProgramFolder(), Gate, [this] { return MainFrame(); }, policy);
  return *world_;
}

void GtkDesktop::DoEvents() {
  for (int i = 0; i < MostEventsInOnePass && gtk_events_pending(); ++i) gtk_main_iteration_do(FALSE);
}

void GtkDesktop::End(int status) {
  if (world_) world_->Shutdown();
  if (files_) files_->Finish();
  std::fflush(nullptr);
#ifdef __SANITIZE_ADDRESS__
  __lsan_do_leak_check();  // which only an ordinary exit does by itself
#endif
  std::_Exit(status);
}

void GtkDesktop::Die(const Failure& failure) {
  // Timers and pages go on while the message is read, but not into the program.
  Gate.Close();
  SessionEnd::LetSignalsKill();
  std::fprintf(stderr, "marlowick: %s\n", failure.what());
  ClearTheWay();
  MsgBox(std::string(failure.what()) +
             "\n\nMarlowick can't go on and closes. Put right what is named above, and start " + "it again.",
         Buttons::Ok, "Marlowick");
  GtkDesktop::End(1);
}

void GtkDesktop::ClearTheWay() {
  for (PopupHost* popup : popups_) popup->Hide();
  if (splash_) splash_->Hide();
}

Moment GtkDesktop::Now() {
  GDateTime* now = g_date_time_new_now_local();
  const Moment moment{g_date_time_get_year(now),         g_date_time_get_month(now),
                      g_date_time_get_day_of_month(now), g_date_time_get_hour(now),
                      g_date_time_get_minute(now),       g_date_time_get_second(now)};
  g_date_time_unref(now);
  return moment;
}

std::string GtkDesktop::ShortDate(const Moment& moment) {
  GDateTime* date = g_date_time_new_local(moment.Year, moment.Month, moment.Day, 0, 0, 0);
  char* text = g_date_time_format(date, "%x");
  const std::string result = text ? text : "";
  g_free(text);
  g_date_time_unref(date);
  return result;
}

std::unique_ptr<WindowHost> GtkDesktop::MakeHost(Window& window) {
  switch (window.WindowKind()) {
    case Window::Kind::Main: {
      auto host = std::make_unique<MainHost>(*this, window);
      main_host = host.get();
      return host;
    }
    case Window::Kind::Splash:
      return std::make_unique<SplashHost>(*this, window);
    case Window::Kind::Popup:
      return std::make_unique<PopupHost>(*this, window);
    case Window::Kind::Relay:
      break;
  }
  return std::make_unique<RelayHost>(*this, window);
}

std::unique_ptr<Browser> GtkDesktop::MakeBrowser(Control& parent) {
  return std::make_unique<GtkBrowser>(parent, World());
}

void GtkDesktop::ClosePages() {
  if (world_) world_->ClosePages();
}

CookieCache& GtkDesktop::Cookies() {
  if (!cookies_)
    cookies_ = std::make_unique<EngineCookies>(
        EngineCookies::Ground{webkit_web_context_get_cookie_manager(World().Base().Context()),
                              World().Base().CookieStore(), [this] { return !World().Pages().empty(); },
                              [this](const std::function<bool()>& done) {
                                waiting_.For(done);
                                if (session_ended_) session_.Later();
                              }},
        [this](const std::function<void()>& handler) { Gate.Run(handler); });
  return *cookies_;
}

std::unique_ptr<ComboBox> GtkDesktop::MakeComboBox(Control& parent, const Place& place) {
  return std::make_unique<GtkComboField>(parent, place, Gate);
}

std::unique_ptr<DialogHost> GtkDesktop::MakeDialog(Dialog& dialog) {
  // A dialog may show what lies in the program's folder.
  if (files_) files_->Finish();
  return std::make_unique<DialogBinder>(dialog, Gate, [this] { return MainFrame(); });
}

GtkWindow* GtkDesktop::MainFrame() { return main_host ? main_host->Frame().gobj() : nullptr; }

ScreenRect GtkDesktop::WorkArea(const Window& window) {
  GdkDisplay* display = gdk_display_get_default();
  GdkMonitor* monitor = gdk_display_get_monitor_at_point(
      display, static_cast<int>((window.Left + window.Width / 2) / TwipsPerPixel),
      static_cast<int>((window.Top + window.Height / 2) / TwipsPerPixel));
  GdkRectangle area{};
  gdk_monitor_get_workarea(monitor, &area);
  return {area.x * TwipsPerPixel, area.y * TwipsPerPixel, (area.x + area.width) * TwipsPerPixel,
          (area.y + area.height) * TwipsPerPixel};
}

Answer GtkDesktop::MsgBox(const std::string& text, Buttons buttons, const std::string& title) {
  return Dialogs::MsgBox(MainFrame(), text, buttons, title);
}

std::string GtkDesktop::ShowOpen(const std::string& title, const std::string& filter) {
  return Dialogs::ShowOpen(MainFrame(), title, filter);
}

std::string GtkDesktop::ShowSave(const std::string& title, const std::string& filter) {
  return Dialogs::ShowSave(MainFrame(), title, filter);
}

void GtkDesktop::ShowInternetOptions() { World().ShowInternetOptions(); }

std::string GtkDesktop::ShowFolder(const std::string& title) {
  return Dialogs::ShowFolder(MainFrame(), title);
}

bool GtkDesktop::MoveToTrash(const std::string& path) {
  const Owned<GFile> file(g_file_new_for_path(path.c_str()));
  GError* error = nullptr;
  if (g_file_trash(file.get(), nullptr, &error)) return true;
  const OwnedError failure(error);
  if (g_error_matches(error, G_IO_ERROR, G_IO_ERROR_NOT_SUPPORTED)) return false;
  throw Failure("Can't move \"" + path + "\" to the trash: " + TextOf(error ? error->message : nullptr));
}

Bookmarks GtkDesktop::ReadBookmarks(const std::string& path) { return ::ReadBookmarks(path); }

std::string GtkDesktop::AddressInShortcut(const std::string& path) { return ::AddressInShortcut(path); }

void GtkDesktop::Shell(const std::string& command) {
  // What is set for our own engine is nobody else's business.
  char** environment = g_environ_unsetenv(g_get_environ(), "WEBKIT_DISABLE_DMABUF_RENDERER");
  const std::unique_ptr<char*, decltype(&g_strfreev)> owner(environment, &g_strfreev);
  try {
    std::vector<std::string> words = TakeApart(command);
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    GError* error = nullptr;
    if (!g_spawn_async(nullptr, arguments.data(), environment, G_SPAWN_SEARCH_PATH, nullptr, nullptr, nullptr,
                       &error))
      throw Failure(OwnedError(error)->message);
  } catch (const Failure& failure) {
    throw Failure("The program \"" + command + "\" can't be started: " + failure.what());
  }
}

int GtkDesktop::Start(int milliseconds, std::function<void()> tick) {
  struct Count {
    Events& gate;
    std::function<void()> tick;
  };
  const auto run = +[](gpointer data) -> gboolean {
    const auto* count = static_cast<Count*>(data);
    // The count may be stopped, and so gone, by its own tick.
    const auto own_tick = count->tick;
    count->gate.Run(own_tick);
    return G_SOURCE_CONTINUE;
  };
  const auto drop = +[](gpointer data) { delete static_cast<Count*>(data); };
  return static_cast<int>(g_timeout_add_full(G_PRIORITY_DEFAULT, static_cast<guint>(milliseconds), run,
                                             new Count{Gate, std::move(tick)}, drop));
}

void GtkDesktop::Stop(int number) { g_source_remove(static_cast<guint>(number)); }

void GtkDesktop::EndPopups() {
  // The end of one may be the end of others.
  for (PopupHost* popup : std::vector(popups_))
    if (std::find(popups_.begin(), popups_.end(), popup) != popups_.end()) popup->End();
}

void GtkDesktop::OnEvent(GdkEvent* event, gpointer self) {
  auto* desktop = static_cast<GtkDesktop*>(self);
  if (!desktop->waiting_.Holds(event) && !desktop->TakenForPopup(event)) gtk_main_do_event(event);
}

// While a menu is up it grabs the mouse, so that it hears of everything. What happens outside it is handed
// on: hovering and presses to the main window's own scene, where they slide along the menu bar; a press
// anywhere ends the menu before it acts. Whether the event has been dealt with.
bool GtkDesktop::TakenForPopup(GdkEvent* event) {
  if (popups_.empty() || (event->type != GDK_BUTTON_PRESS && event->type != GDK_MOTION_NOTIFY)) return false;
  double x = 0, y = 0;
  gdk_event_get_root_coords(event, &x, &y);
  GdkWindow* top = gdk_window_get_toplevel(event->any.window);
  const auto contains = [x, y](PopupHost* popup) { return popup->Contains(x, y); };
  const auto grabs = [top](PopupHost* popup) {
    return gtk_widget_get_window(GTK_WIDGET(popup->Frame().gobj())) == top;
  };
  if (std::any_of(popups_.begin(), popups_.end(), contains)) return false;
  const bool comes_to_menu = std::any_of(popups_.begin(), popups_.end(), grabs);
  // Another program's window may lie over the main window.
  GdkWindow* under = gdk_device_get_window_at_position(gdk_event_get_device(event), nullptr, nullptr);
  GtkWindow* frame = MainFrame();
  const bool on_main =
      under && frame && gdk_window_get_toplevel(under) == gtk_widget_get_window(GTK_WIDGET(frame));
  if (event->type == GDK_MOTION_NOTIFY) {
    if (comes_to_menu && on_main) main_host->HoverFromMenu(x, y);
    return comes_to_menu;
  }
  EndPopups();
  if (comes_to_menu && on_main) main_host->PressFromMenu(static_cast<int>(event->button.button), x, y);
  return comes_to_menu;
}
