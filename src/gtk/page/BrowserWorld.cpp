#include "gtk/page/BrowserWorld.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "gtk/engine/DownloadLog.h"
#include "gtk/page/Automation.h"
#include "gtk/page/DownloadBar.h"
#include "gtk/page/DownloadsList.h"
#include "gtk/page/InternetOptions.h"
#include "gtk/page/Page.h"
#include "gtk/page/PlainWindow.h"
#include "gtk/page/text/Address.h"
#include "gtk/page/text/Search.h"
#include "platform/Failure.h"
#include "platform/Files.h"

namespace {

// How long a page that is closed may take to let go: milliseconds.
constexpr unsigned LetsGo = 800;

Callbacks::Runner Through(Events& gate) {
  return [&gate](const std::function<void()>& handler) { gate.Run(handler); };
}

}  // namespace

BrowserWorld::BrowserWorld(std::string folder, EngineGround ground, Events& gate,
                           std::function<GtkWindow*()> main_window, WindowPolicy window_policy,
                           LinkChoice link_choice)
    : folder_(std::move(folder)),
      gate_(gate),
      main_window_(std::move(main_window)),
      window_policy_(std::move(window_policy)),
      link_choice_(std::move(link_choice)),
      engine_(std::make_unique<Engine>(std::move(ground), Through(gate))),
      callbacks_(Through(gate)) {
  engine_->Fetches().Listen(*this);
  log_ = std::make_unique<DownloadLog>(engine_->Fetches(), HostPath(folder_ + "/downloads.dat"));
  if (engine_->Driven()) automation_ = std::make_unique<Automation>(*this);
  engine_->GuardChanged = [this] {
    for (Page* page : pages_) page->Guard();
  };
}

BrowserWorld::~BrowserWorld() { Shutdown(); }

void BrowserWorld::Shutdown() {
  if (!engine_) return;
  ClosePages();
  // Nobody waits for a process that hangs.
  // The end of a process is the end of its view's wait.
  for (const auto& view : std::vector(ending_)) webkit_web_view_terminate_web_process(view.get());
  ending_.clear();
  log_.reset();
  engine_.reset();
}

void BrowserWorld::AskPages(std::function<void()> agreed) { AskNext({}, ++round_, std::move(agreed)); }

// One after the other: pages that share a process can't have their questions answered in any order. The next
// round ends this one.
void BrowserWorld::AskNext(std::vector<Page*> asked, unsigned round, std::function<void()> agreed) {
  const auto next = std::find_if(pages_.begin(), pages_.end(), [&asked](Page* page) {
    return std::find(asked.begin(), asked.end(), page) == asked.end();
  });
  if (next == pages_.end()) return gate_.Run(agreed);
  asked.push_back(*next);
  (*next)->AskToClose([this, asked, round, agreed = std::move(agreed)](bool agrees) {
    if (agrees && round == round_) AskNext(asked, round, agreed);
  });
}

void BrowserWorld::ClosePages() {
  windows_.clear();
  for (Page* page : std::exchange(pages_, {})) page->Close();
}

void BrowserWorld::Change(const ElementSettings& settings) {
  const bool zoomed = settings.zoom != Settings().zoom;
  // A zoom that the user gave one page stays while this one doesn't change.
  for (Page* page : pages_)
    if (WebKitWebView* view = page->PresentView(); view && zoomed)
      webkit_web_view_set_zoom_level(view, settings.zoom / 100.0);
  engine_->Change(settings);
}

Address::Target BrowserWorld::FromTyped(std::string_view typed) const {
  return Search::FromTyped(typed, {Settings().search, Settings().keywords});
}

std::string BrowserWorld::Home() const {
  return Settings().home.empty() ? Address::FromPath(HostPath(folder_ + "/start.html")) : Settings().home;
}

bool BrowserWorld::IsHistory(const std::string& uri) const {
  const std::string path =
      TakeText(g_filename_from_uri(uri.substr(0, uri.find_first_of("?#")).c_str(), nullptr, nullptr));
  if (path.empty()) return false;
  // A link may lead to the files, and the folder may be one.
  const auto real = [](const std::string& name) {
    std::error_code unknown;
    return std::filesystem::weakly_canonical(name, unknown).native();
  };
  const std::string file = real(path);
  return file.starts_with(real(HostPath(folder_ + "/history")) + "/") ||
         file == real(HostPath(folder_ + "/history.htm")) ||
         file == real(HostPath(folder_ + "/contents.htm"));
}

std::string BrowserWorld::FrameError() const {
  return Address::FromPath(engine_->Folder() + "/frame-error.html");
}

std::string BrowserWorld::WriteFrameError(const std::string& html) const {
  GError* error = nullptr;
  const std::string path = engine_->Folder() + "/frame-error.html";
  g_file_set_contents(path.c_str(), html.data(), static_cast<gssize>(html.size()), &error);
  const OwnedError reason(error);
  if (reason) throw Failure("Can't write the file \"" + path + "\": " + reason->message);
  return FrameError();
}

void BrowserWorld::ShowDownloads() { DownloadsList::Show(*this); }

void BrowserWorld::ShowInternetOptions() { InternetOptions::Show(*this); }

PlainWindow& BrowserWorld::OpenPlainWindow() {
  return *windows_.emplace_back(std::make_unique<PlainWindow>(*this));
}

void BrowserWorld::Forget(PlainWindow& window) {
  const auto found = std::find_if(windows_.begin(), windows_.end(),
                                  [&window](const auto& one) { return one.get() == &window; });
  if (found == windows_.end()) return;
  // The window's end may come back here.
  const auto ending = std::move(*found);
  windows_.erase(found);
}

void BrowserWorld::Add(Page& page) {
  pages_.push_back(&page);
  // Downloads that went on while there was no page at all.
  if (pages_.size() > 1) return;
  for (const auto& download : engine_->Fetches().All()) page.Downloads().Show(*download);
}

void BrowserWorld::Remove(Page& page) {
  if (std::erase(pages_, &page) == 0) return;
  for (Download* download : page.Downloads().Shown()) {
    if (!download->Running())
      engine_->Fetches().Forget(*download);
    else if (!pages_.empty())
      pages_.front()->Downloads().Show(*download);
  }
}

void BrowserWorld::AskProgram(const WindowPolicy& handler, const std::string& asker, Page*& taker,
                              bool& cancel) {
  Browser* element = nullptr;
  gate_.Run([&] { handler(asker, element, cancel); });
  const auto found = std::find_if(pages_.begin(), pages_.end(),
                                  [element](Page* page) { return element && page->Element() == element; });
  if (found != pages_.end()) taker = *found;
}

const Page* BrowserWorld::InProcessOf(const std::string& site, const Page& page) const {
  const auto found = std::find_if(pages_.begin(), pages_.end(), [&](const Page* other) {
    WebKitWebView* view = other == &page ? nullptr : other->PresentView();
    return view && other->Process().IsFor(site) && webkit_web_view_get_is_web_process_responsive(view);
  });
  return found == pages_.end() ? nullptr : *found;
}

void BrowserWorld::ChooseLink(const std::string& address, bool in_front) {
  gate_.Run([&] { link_choice_(address, in_front); });
}

bool BrowserWorld::MayOpenWindows(const std::string& site) const {
  const std::vector<std::string>& allowed = Settings().window_sites;
  return std::find(allowed.begin(), allowed.end(), site) != allowed.end();
}

void BrowserWorld::AllowWindows(const std::string& site) {
  if (site.empty() || MayOpenWindows(site)) return;
  ElementSettings settings = Settings();
  settings.window_sites.push_back(site);
  Change(settings);
}

void BrowserWorld::Begun(Download& download, WebKitWebView* view) {
  const auto begun_on = std::find_if(pages_.begin(), pages_.end(),
                                     [view](Page* page) { return view && page->PresentView() == view; });
  if (begun_on != pages_.end())
    (*begun_on)->AskToDownload(download);
  else if (view && !download.Named())
    // A page that has been closed lives on for a moment, and there is nobody to ask any more.
    download.Refuse("its page had been closed");
  if (pages_.empty()) return;
  (begun_on == pages_.end() ? pages_.front() : *begun_on)->Downloads().Show(download);
}

void BrowserWorld::EndView(WebKitWebView* view, bool shared) {
  // A tool waits for the view's end, and asks what is left at once.
  if (engine_->Driven()) return DestroyLater(view);
  const auto held = ending_.emplace_back(Share(view));
  // What its scripts still want, nobody is there for.
  callbacks_.On<gboolean(WebKitWebView*, gpointer)>(view, "script-dialog", [](auto*, auto) { return TRUE; });
  callbacks_.On<gboolean(WebKitWebView*, gpointer)>(view, "print", [](auto*, auto) { return TRUE; });
  const auto end = [this, held = std::weak_ptr<WebKitWebView>(held)](bool hangs) {
    const auto view = held.lock();
    if (!view || std::erase(ending_, view) == 0) return;
    if (hangs) webkit_web_view_terminate_web_process(view.get());
    DestroyLater(view.get());
  };
  webkit_web_view_evaluate_javascript(view, "0", -1, "marlowick", nullptr, nullptr, Callbacks::Ended,
                                      callbacks_.Ending([end](auto*, auto*) { end(false); }));
  callbacks_.After(LetsGo, [end, shared] { end(!shared); });
}

int BrowserWorld::Fetching() const {
  const auto& all = engine_->Fetches().All();
  return static_cast<int>(
      std::count_if(all.begin(), all.end(), [](const auto& one) { return one->Running(); }));
}

void BrowserWorld::DestroyLater(WebKitWebView* view) {
  callbacks_.Later(
      [held = std::shared_ptr<WebKitWebView>(Share(view))] { gtk_widget_destroy(GTK_WIDGET(held.get())); });
}
