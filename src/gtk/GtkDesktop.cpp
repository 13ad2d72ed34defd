#include "gtk/GtkDesktop.h"

#include <gtk/gtk.h>
#include <webkit2/webkit2.h>

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <utility>
#include <vector>

#include "gtk/base/Applications.h"
#include "gtk/base/GObjects.h"
#include "gtk/base/ProgramLine.h"
#include "gtk/dialog/ApplicationChooser.h"
#include "gtk/dialog/DialogBinder.h"
#include "gtk/dialog/Dialogs.h"
#include "gtk/dialog/Notice.h"
#include "gtk/favourites/BookmarkReader.h"
#include "gtk/page/BrowserWorld.h"
#include "gtk/page/GtkBrowser.h"
#include "gtk/page/PlainWindow.h"
#include "gtk/start/Entry.h"
#include "gtk/start/SandboxChoice.h"
#include "gtk/window/GtkComboField.h"
#include "gtk/window/MainHost.h"
#include "gtk/window/PopupHost.h"
#include "gtk/window/RelayHost.h"
#include "gtk/window/SplashHost.h"
#include "gtk/window/Startup.h"
#include "gtk/window/WorkArea.h"
#include "platform/scene/Drawing.h"

namespace {

// One pass of the pump handles what is waiting; a source that never runs dry doesn't hold it.
constexpr int MostEventsInOnePass = 200;

}  // namespace

GtkDesktop::GtkDesktop(Entry& entry)
    : start_(entry),
      drawing_(MakeDrawing()),
      session_([this] { EndSession(); },
               [this](const std::function<void()>& handler) { Gate.Run(handler); }) {
  gdk_event_handler_set(&GtkDesktop::OnEvent, this, nullptr);
  Gate.Unhandled = [this](const Failure& failure) { Die(failure); };
}

GtkDesktop::~GtkDesktop() {
  const auto plain = +[](GdkEvent* event, gpointer) { gtk_main_do_event(event); };
  gdk_event_handler_set(plain, nullptr, nullptr);
}

bool GtkDesktop::Driven() const { return start_.Driven(); }

void GtkDesktop::EndSession() {
  session_ended_ = true;
  // Whoever waits in the middle of something comes to its end first.
  if (waiting_.InCourse()) return;
  SessionEnding ? SessionEnding() : End(0);
}

int GtkDesktop::Run(const std::function<void()>& start) {
  Gate.Run([&] {
    if (start_.Trouble()) throw *start_.Trouble();
    const std::vector<Leftovers::Damaged> damaged = start_.Damaged();
    ChooseSandbox();
    // The engine comes up on the other processors while the program does on this one.
    World();
    start();
    files_->FinishLater();
    TellOf(damaged);
  });
  start_.Open([this](const Request& request) { return Receive(request); });
  gtk_main();
  return 0;
}

std::string GtkDesktop::ProgramFolder() {
  if (!files_)
    files_ = std::make_unique<ProgramFiles>(
        start_.Folder(), [this](const std::function<void()>& handler) { Gate.Run(handler); });
  return files_->Folder();
}

std::string GtkDesktop::CommandLine() { return start_.Address(); }

Reception GtkDesktop::Receive(const Request& request) {
  if (waiting_.InCourse()) return Reception::Later;
  Reception reception = Reception::Closing;
  const bool tab = request.what == Request::What::Tab;
  Gate.Run([&] {
    popups_.EndAll();
    if (!HandedOver || !HandedOver(tab ? request.address : "")) return;
    reception = Reception::Taken;
    if (tab)
      Startup::ComeToFront(MainFrame(), request.startup_id);
    else
      Startup::ComeToFront(World().OpenPlainWindow().Open(request.address), request.startup_id);
  });
  return reception;
}

void GtkDesktop::ChooseSandbox() {
  // A tool that drives the program can't answer.
  const auto ask = [this](const std::string& question) {
    return !Driven() && MsgBox(question, Buttons::YesNo, "Marlowick") == Answer::Yes;
  };
  const SandboxChoice::Way way = SandboxChoice::Choose(start_.Sandbox(), ask);
  if (way == SandboxChoice::Way::End) GtkDesktop::End(1);
  sandboxed_ = way == SandboxChoice::Way::Sandbox;
}

void GtkDesktop::TellOf(const std::vector<Leftovers::Damaged>& damaged) {
  if (damaged.empty()) return;
  std::string names;
  for (const Leftovers::Damaged& one : damaged)
    names += "\n\"" + one.store.string() + "\", which is now \"" + one.aside.filename().string() + "\"";
  Notice::Show(
      MainFrame(), "What sites kept here was damaged",
      "Marlowick has put aside what couldn't be read, and begun anew. You may have to log in again at some "
      "sites." +
          names);
}

EngineGround GtkDesktop::Ground() {
  const std::string folder = ProgramFolder() + "/engine";
  const std::string cache =
      start_.Folder().usual ? std::string(g_get_user_cache_dir()) + "/marlowick" : folder + "/cache";
  return {folder, cache, sandboxed_, Driven()};
}

BrowserWorld& GtkDesktop::World() {
  const auto policy = [this](const std::string& asker, Browser*& taker, bool& cancel) {
    if (NewWindow2) NewWindow2(asker, taker, cancel);
  };
  const auto choice = [this](const std::string& address, bool in_front) {
    if (LinkChosen) LinkChosen(address, in_front);
  };
  if (!world_)
    world_ = std::make_unique<BrowserWorld>(
        ProgramFolder(), Ground(), Gate, [this] { return MainFrame(); }, policy, choice);
  return *world_;
}

// What is typed meanwhile belongs to what comes up.
void GtkDesktop::DoEvents() { waiting_.Pass(MostEventsInOnePass); }

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
  if (Driven()) GtkDesktop::End(1);
  ClearTheWay();
  MsgBox(std::string(failure.what()) +
             "\n\nMarlowick can't go on and closes. Put right what is named above, and start " + "it again.",
         Buttons::Ok, "Marlowick");
  GtkDesktop::End(1);
}

// The splash, popup windows and lists that are dropped: whatever stands above all other windows.
void GtkDesktop::ClearTheWay() {
  popups_.Clear();
  GList* windows = gtk_window_list_toplevels();
  for (GList* at = windows; at; at = at->next) {
    auto* window = static_cast<GtkWidget*>(at->data);
    if (GTK_IS_WINDOW(window) && gtk_window_get_window_type(GTK_WINDOW(window)) == GTK_WINDOW_POPUP)
      gtk_widget_hide(window);
  }
  g_list_free(windows);
  gdk_seat_ungrab(gdk_display_get_default_seat(gdk_display_get_default()));
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
  std::string result = text ? text : "";
  g_free(text);
  g_date_time_unref(date);
  return result;
}

std::unique_ptr<WindowHost> GtkDesktop::MakeHost(Window& window) {
  switch (window.WindowKind()) {
    case Window::Kind::Main:
      return std::make_unique<MainHost>(Gate, popups_, entry_, window);
    case Window::Kind::Splash:
      return std::make_unique<SplashHost>(Gate, popups_, window);
    case Window::Kind::Popup:
      return std::make_unique<PopupHost>(Gate, popups_, entry_, window);
    case Window::Kind::Relay:
      break;
  }
  return std::make_unique<RelayHost>(entry_, window);
}

std::unique_ptr<Browser> GtkDesktop::MakeBrowser(Control& parent) {
  return std::make_unique<GtkBrowser>(parent, World());
}

void GtkDesktop::ClosePages() {
  if (world_) world_->ClosePages();
}

void GtkDesktop::AskPages(std::function<void()> agreed) { World().AskPages(std::move(agreed)); }

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

GtkWindow* GtkDesktop::MainFrame() { return entry_->frame ? GTK_WINDOW(entry_->frame) : nullptr; }

ScreenRect GtkDesktop::WorkArea(const Window& window) { return WorkAreaOf(window); }

Answer GtkDesktop::MsgBox(const std::string& text, Buttons buttons, const std::string& title) {
  popups_.EndAll();
  return Dialogs::MsgBox(OwnerFor(true, MainFrame()), text, buttons, title);
}

std::string GtkDesktop::ShowOpen(const std::string& title, const std::string& filter) {
  popups_.EndAll();
  return Dialogs::ShowOpen(OwnerFor(true, MainFrame()), title, filter);
}

std::string GtkDesktop::ShowSave(const std::string& title, const std::string& filter) {
  popups_.EndAll();
  return Dialogs::ShowSave(OwnerFor(true, MainFrame()), title, filter);
}

int GtkDesktop::Fetching() { return World().Fetching(); }

void GtkDesktop::ShowDownloads() { World().ShowDownloads(); }

void GtkDesktop::ShowInternetOptions() { World().ShowInternetOptions(); }

std::string GtkDesktop::ShowFolder(const std::string& title) {
  popups_.EndAll();
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
  char** environment = g_get_environ();
  for (const auto& [name, value] : Engine::NoGraphicsProcessor)
    environment = g_environ_unsetenv(environment, name);
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

InstalledApplication GtkDesktop::ChooseApplication(const std::string& title) {
  popups_.EndAll();
  return ApplicationChooser::Choose(OwnerFor(true, MainFrame()), title, Gate);
}

// Looked up anew each time: programs come and go.
const Registry& GtkDesktop::SystemRegistry() {
  const std::string tool = Applications::SystemInformation();
  registry_ = Registry();
  if (!tool.empty())
    registry_ =
        Registry({{.Key = R"(SOFTWARE\Microsoft\Shared Tools\MSINFO)", .Name = "PATH", .Data = tool}});
  return registry_;
}

std::string GtkDesktop::Versions() {
  const auto version = [](unsigned major, unsigned minor, unsigned micro) {
    return std::to_string(major) + "." + std::to_string(minor) + "." + std::to_string(micro);
  };
  return "Marlowick " MARLOWICK_VERSION ", WebKitGTK " +
         version(webkit_get_major_version(), webkit_get_minor_version(), webkit_get_micro_version()) +
         ", GTK " + version(gtk_get_major_version(), gtk_get_minor_version(), gtk_get_micro_version());
}

int GtkDesktop::Start(int milliseconds, std::function<void()> tick) {
  return static_cast<int>(callbacks_.Every(static_cast<unsigned>(milliseconds),
                                           [this, tick = std::move(tick)] { Gate.Run(tick); }));
}

void GtkDesktop::Stop(int number) { callbacks_.Cancel(static_cast<unsigned>(number)); }

void GtkDesktop::OnEvent(GdkEvent* event, gpointer self) noexcept {
  auto* desktop = static_cast<GtkDesktop*>(self);
  bool taken = false;
  desktop->callbacks_.Run([&] { taken = desktop->waiting_.Holds(event) || desktop->popups_.Takes(event); });
  if (!taken) gtk_main_do_event(event);
}
