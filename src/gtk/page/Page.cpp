#include "gtk/page/Page.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "gtk/page/BrowserWorld.h"
#include "gtk/page/FindBar.h"
#include "gtk/page/HangWatch.h"
#include "gtk/page/LoadFaults.h"
#include "gtk/page/PageMenu.h"
#include "gtk/page/PagePolicy.h"
#include "gtk/page/PlainWindow.h"
#include "gtk/page/PrintPage.h"
#include "gtk/page/SourceLoad.h"
#include "gtk/page/text/HostName.h"
#include "gtk/page/text/SiteName.h"
#include "platform/Failure.h"
#include "platform/Text.h"
#include "platform/WebAddress.h"

namespace {

// Longer titles are cut: characters. Nobody reads them, and every one is handed about whole.
constexpr size_t MostTitle = 20000;

// Downloads of one page that run at once without a question.
constexpr int MostDownloadsAtOnce = 2;
// And how many of them wait for an answer.
constexpr int MostDownloadsWaiting = 10;

// Windows that one page may ask for with less than a second between them.
constexpr int MostInARow = 20;

// As the engine reads the address; without a host there is none.
std::string SiteOf(const std::string& uri) {
  const std::unique_ptr<WebKitSecurityOrigin, decltype(&webkit_security_origin_unref)> origin(
      webkit_security_origin_new_for_uri(uri.c_str()), webkit_security_origin_unref);
  return origin ? TextOf(webkit_security_origin_get_host(origin.get())) : std::string();
}

GtkWidget* MakeBox(GtkWidget* parent, bool at_end) {
  GtkWidget* box = gtk_box_new(GTK_ORIENTATION_VERTICAL, 0);
  if (parent && at_end)
    gtk_box_pack_end(GTK_BOX(parent), box, FALSE, TRUE, 0);
  else if (parent)
    gtk_box_pack_start(GTK_BOX(parent), box, FALSE, TRUE, 0);
  gtk_widget_show(box);
  return GTK_WIDGET(g_object_ref_sink(box));
}

}  // namespace

std::shared_ptr<Page> Page::Open(BrowserWorld& world, PageOwner& owner) {
  std::shared_ptr<Page> page(new Page(world, owner));
  world.Add(*page);
  page->MakeView(nullptr);
  return page;
}

Page::Page(BrowserWorld& world, PageOwner& owner)
    : world_(world),
      owner_(&owner),
      place_(MakeBox(nullptr, false)),
      box_(MakeBox(nullptr, false)),
      bars_(MakeBox(box_.get(), false)),
      scripts_(MakeBox(box_.get(), false)),
      feet_(MakeBox(box_.get(), true)),
      screen_(place_.get(), box_.get(), Runner()),
      load_(*this, *this, Runner()),
      questions_(bars_.get(), Runner(), [this] { return OtherBars(); }),
      dialogs_(
          scripts_.get(),
          [this](ScriptDialogs::Outcome outcome) {
            if (outcome == ScriptDialogs::Outcome::StaysOnPage) {
              load_.Stay();
              Tell([](PageOwner& owner) { owner.NameChanged(); });
              AnswerClosing(false);
            }
            if (view_) gtk_widget_grab_focus(GTK_WIDGET(view_));
          },
          Runner()),
      log_in_(scripts_.get(), Runner()),
      hang_(std::make_unique<HangWatch>(*this, bars_.get())),
      downloads_(world.Base().Fetches(), Runner()),
      held_(*this),
      callbacks_(Runner()) {
  gtk_box_pack_start(GTK_BOX(place_.get()), box_.get(), TRUE, TRUE, 0);
  gtk_box_pack_start(GTK_BOX(feet_.get()), downloads_.Widget(), FALSE, TRUE, 0);
  if (world.Base().Driven()) SayDriven();
  downloads_.More = [this] { world_.ShowDownloads(); };
}

Page::~Page() { Close(); }

void Page::SayDriven() {
  GtkWidget* bar = gtk_info_bar_new();
  gtk_info_bar_set_message_type(GTK_INFO_BAR(bar), GTK_MESSAGE_WARNING);
  GtkWidget* text = gtk_label_new("Another program drives Marlowick here, in a folder that goes with it.");
  gtk_label_set_ellipsize(GTK_LABEL(text), PANGO_ELLIPSIZE_END);
  gtk_container_add(GTK_CONTAINER(gtk_info_bar_get_content_area(GTK_INFO_BAR(bar))), text);
  gtk_box_pack_start(GTK_BOX(box_.get()), bar, FALSE, TRUE, 0);
  gtk_box_reorder_child(GTK_BOX(box_.get()), bar, 0);
  gtk_widget_show_all(bar);
}

Callbacks::Runner Page::Runner() {
  return [this](const std::function<void()>& handler) { RunHandler(handler); };
}

// A page on its way out runs nothing any more.
void Page::RunHandler(const std::function<void()>& handler) {
  const auto keep = weak_from_this().lock();
  if (!keep) return;
  std::string what;
  try {
    return handler();
  } catch (const Failure& failure) {
    what = failure.what();
  } catch (const std::exception& failure) {
    what = std::string("something that wasn't expected failed: ") + failure.what();
  }
  load_.Break(what);
}

void Page::Close() {
  owner_ = nullptr;
  if (!box_) return;
  world_.Remove(*this);
  screen_.Leave();
  DropView();
  quit_ = false;
  gtk_widget_destroy(place_.get());
}

void Page::Quit() {
  last_address_ = Address();
  last_title_ = Title();
  owner_ = nullptr;
  // The view's own handler still runs.
  callbacks_.Later([this] {
    if (Closed()) return;
    LeaveFullScreen();
    quit_ = true;
    DropView();
  });
}

WebKitWebView* Page::View() {
  if (Closed()) throw Failure("The page is closed");
  if (!view_) MakeView(nullptr);
  return view_;
}

void Page::MakeView(const Page* kin) {
  load_.Reset();
  AddView(kin);
}

void Page::AddView(const Page* kin) {
  Engine& engine = world_.Base();
  GtkWidget* view = kin ? engine.MakeRelatedView(kin->view_) : engine.MakeView(owner_ && !owner_->Element());
  view_ = WEBKIT_WEB_VIEW(view);
  // What a script writes into its new window comes without a load.
  blank_ = !kin;
  died_ = false;
  if (kin) process_.Join(kin->process_);
  gtk_box_pack_start(GTK_BOX(box_.get()), view, TRUE, TRUE, 0);
  gtk_widget_show(view);
  webkit_web_view_set_zoom_level(view_, engine.Settings().zoom / 100.0);
  Guard();
  ListenToLoad();
  ListenToPage();
  ListenToFullScreen();
  PagePolicy::Attach(*this, view_);
  PageMenu::Attach(*this, view_);
  hang_->Attach(view_);
}

void Page::ListenToLoad() {
  callbacks_.On<void(WebKitWebView*, WebKitLoadEvent)>(view_, "load-changed", [this](auto*, auto event) {
    switch (event) {
      case WEBKIT_LOAD_STARTED:
        // An own page isn't asked about before.
        Taken();
        sites_.LoadStarted();
        return load_.OnStarted();
      case WEBKIT_LOAD_REDIRECTED:
        return load_.OnRedirected();
      case WEBKIT_LOAD_COMMITTED:
        return load_.OnCommitted();
      case WEBKIT_LOAD_FINISHED:
        return load_.OnFinished();
    }
  });
  callbacks_.On<gboolean(WebKitWebView*, WebKitLoadEvent, const char*, GError*)>(
      view_, "load-failed", [this](auto*, WebKitLoadEvent event, const char* uri, GError* error) {
        load_.OnFailed(uri, event == WEBKIT_LOAD_COMMITTED, FaultOf(uri, error));
        return TRUE;
      });
  callbacks_.On<gboolean(WebKitWebView*, const char*, GTlsCertificate*, GTlsCertificateFlags)>(
      view_, "load-failed-with-tls-errors",
      [this](auto*, const char* uri, GTlsCertificate* certificate, GTlsCertificateFlags flags) {
        load_.OnBadCertificate(uri, certificate, flags);
        return TRUE;
      });
  callbacks_.On<void(WebKitWebView*, WebKitWebProcessTerminationReason)>(
      view_, "web-process-terminated", [this](auto*, auto reason) { ProcessEnded(reason); });
  callbacks_.On<void(WebKitWebView*, GParamSpec*)>(
      view_, "notify::estimated-load-progress", [this](WebKitWebView* view, auto*) {
        load_.OnProgress(webkit_web_view_get_estimated_load_progress(view));
      });
}

void Page::ListenToPage() {
  callbacks_.On<void(WebKitWebView*, GParamSpec*)>(view_, "notify::title",
                                                   [this](auto*, auto*) { TakeTitle(); });
  // A page may change its address without a load.
  callbacks_.On<void(WebKitWebView*, GParamSpec*)>(view_, "notify::uri", [this](auto*, auto*) {
    load_.OnAddress();
    if (!load_.Busy()) Tell([](PageOwner& owner) { owner.NameChanged(); });
  });
  callbacks_.On<void(WebKitWebView*, WebKitHitTestResult*, guint)>(
      view_, "mouse-target-changed", [this](auto*, WebKitHitTestResult* hit, guint) { TakeHover(hit); });
  callbacks_.On<void(WebKitWebView*)>(view_, "close", [this](auto*) { TakeClose(); });
  callbacks_.On<void(WebKitWebView*)>(view_, "ready-to-show",
                                      [this](auto*) { Tell([](PageOwner& owner) { owner.ReadyToShow(); }); });
  callbacks_.On<GtkWidget*(WebKitWebView*, WebKitNavigationAction*)>(
      view_, "create",
      [this](WebKitWebView* view, WebKitNavigationAction* action) { return Create(view, action); });
  callbacks_.On<gboolean(WebKitWebView*, WebKitPrintOperation*)>(
      view_, "print", [this](auto*, WebKitPrintOperation* operation) {
        AskToPrint(operation);
        return TRUE;
      });
  callbacks_.On<gboolean(WebKitWebView*, WebKitAuthenticationRequest*)>(
      view_, "authenticate",
      [this](auto*, WebKitAuthenticationRequest* request) { return AskToLogIn(request); });
  for (const char* press : {"button-press-event", "key-press-event"})
    callbacks_.On<gboolean(GtkWidget*, GdkEvent*)>(view_, press, [this](auto*, auto*) {
      ++presses_;
      return FALSE;
    });
  callbacks_.On<gboolean(WebKitWebView*, WebKitScriptDialog*)>(view_, "script-dialog",
                                                               [this](auto*, WebKitScriptDialog* dialog) {
                                                                 // A tool answers the engine's own dialog.
                                                                 if (world_.Base().Driven()) return false;
                                                                 Taken();
                                                                 TakeDialog(dialog);
                                                                 questions_.MakeRoom();
                                                                 return true;
                                                               });
  if (world_.Base().Driven())
    callbacks_.On<void(GtkWidget*)>(view_, "grab-focus",
                                    [this](auto*) { Tell([](PageOwner& owner) { owner.Wanted(); }); });
  for (const char* signal : {"button-release-event", "key-press-event", "scroll-event"})
    callbacks_.On<gboolean(GtkWidget*, GdkEvent*)>(view_, signal, [this](auto*, auto*) {
      Tell([](PageOwner& owner) { owner.UserActed(); });
      return FALSE;
    });
  callbacks_.On<gboolean(GtkWidget*, cairo_t*)>(view_, "draw",
                                                [this](auto*, cairo_t* cairo) { return Paint(cairo); });
  // The window around the page may go first.
  callbacks_.On<void(GtkWidget*)>(view_, "destroy", [this](auto*) { LetGoOfView(); });
}

void Page::LetGoOfView() {
  // It searches by the view.
  find_.reset();
  WebKitWebView* view = std::exchange(view_, nullptr);
  load_.Abandon();
  EndPagesScreen();
  hang_->Detach();
  closing_ = nullptr;
  callbacks_.Cancel(std::exchange(patience_, 0));
  questions_.Forget();
  held_.Forget();
  dialogs_.Dismiss();
  log_in_.Forget();
  process_.Begin();
  callbacks_.Off(view);
}

// The view leaves the screen at once, and ends a little later.
void Page::DropView() {
  if (!view_) return;
  const auto view = Share(view_);
  const bool shared = process_.Shared(), hung = hang_->Hung();
  LetGoOfView();
  if (hung && !shared) webkit_web_view_terminate_web_process(view.get());
  gtk_container_remove(GTK_CONTAINER(box_.get()), GTK_WIDGET(view.get()));
  if (asking_ == 0) world_.EndView(view.get(), shared);
}

GtkWidget* Page::TakeNewWindow(const Page& opener) {
  DropView();
  MakeView(&opener);
  opened_by_page_ = speaks_for_opener_ = true;
  process_.Tie();
  // Until it has a page of its own, its scripts are the opener's.
  sites_ = opener.sites_;
  return GTK_WIDGET(view_);
}

void Page::Renew() {
  if (Closed()) throw Failure("The page is closed");
  DropView();
  MakeView(nullptr);
  opened_by_page_ = speaks_for_opener_ = quit_ = false;
}

bool Page::OpenWanted(const std::string& uri) {
  if (!MayLeadTo(uri)) return false;
  Page* taker = nullptr;
  bool cancel = false;
  Tell([&](PageOwner& owner) { owner.WindowWanted(Asker(), taker, cancel); });
  if (cancel) return false;
  if (taker)
    taker->Load().Start({uri, {}, true});
  else
    world_.OpenPlainWindow().Show(uri);
  return true;
}

// A new page is loaded as the program's own wish, which the engine doesn't look at again.
bool Page::MayLeadTo(const std::string& uri) const {
  const std::string scheme = Address::Scheme(uri);
  return scheme == "http" || scheme == "https" || uri == "about:blank" ||
         (scheme == "file" && Address::Scheme(load_.DocumentAddress()) == "file");
}

void Page::OpenChosen(const std::string& uri, LinkPlace place) {
  if (!MayLeadTo(uri) || !MayAskForWindow()) return;
  if (place == LinkPlace::PlainWindow)
    world_.OpenPlainWindow().Show(uri);
  else
    Tell([&](PageOwner& owner) { owner.LinkChosen(uri, place == LinkPlace::TabInFront); });
}

void Page::ShowInFrame(const std::string& wanted, const std::string& name, const std::string& instead) {
  constexpr const char* script =
      "for (const frame of document.querySelectorAll('frame, iframe'))"
      "  if (frame.src === wanted || (name && frame.name === name)) frame.src = instead;";
  GVariantDict arguments;
  g_variant_dict_init(&arguments, nullptr);
  g_variant_dict_insert(&arguments, "wanted", "s", wanted.c_str());
  g_variant_dict_insert(&arguments, "name", "s", name.c_str());
  g_variant_dict_insert(&arguments, "instead", "s", instead.c_str());
  // With scripts off the program's own doesn't run either.
  const std::shared_ptr<WebKitSettings> usual = Share(webkit_web_view_get_settings(View()));
  webkit_web_view_set_settings(view_, world_.Base().SettingsForOwnScript().get());
  const auto restore = [usual](GObject* view, GAsyncResult*) {
    webkit_web_view_set_settings(WEBKIT_WEB_VIEW(view), usual.get());
  };
  webkit_web_view_call_async_javascript_function(View(), script, -1, g_variant_dict_end(&arguments),
                                                 "marlowick", nullptr, nullptr, &Callbacks::Ended,
                                                 callbacks_.Ending(restore));
}

FindBar& Page::Find() {
  if (find_) return *find_;
  const auto closed = [this] { gtk_widget_grab_focus(GTK_WIDGET(View())); };
  find_ = std::make_unique<FindBar>(View(), closed, Runner());
  gtk_box_pack_start(GTK_BOX(feet_.get()), find_->Widget(), FALSE, TRUE, 0);
  return *find_;
}

std::string Page::Title() const {
  if (!view_) return last_title_;
  const std::string title = Text::Left(EngineTitle(), MostTitle);
  return title.empty() ? Address::ShortName(Address()) : title;
}

// The place's name by our own rules, what follows it in its own letters by the engine's, unless they would
// trade places.
std::string Page::ShownAddress() const {
  const std::string address = WebAddress::WithoutUser(Address()), shown = HostName::Shown(address);
  const std::string readable = TakeText(webkit_uri_for_display(address.c_str()));
  const auto path_of = [](const std::string& text) { return text.find('/', text.find("://") + 3); };
  if (address.find("://") == address.npos || path_of(shown) == shown.npos ||
      path_of(readable) == readable.npos)
    return shown;
  if (WebAddress::MayTurnDirection(readable.substr(path_of(readable)))) return shown;
  return shown.substr(0, path_of(shown)) + readable.substr(path_of(readable));
}

Safety Page::Security() const {
  if (!view_ || !load_.AddressHasCome()) return Safety::Unknown;
  if (load_.ShowsOwnPage()) return Safety::OwnPage;
  const std::string scheme = Address::Scheme(Address());
  if (scheme == "file") return Safety::LocalFile;
  if (scheme != "http" && scheme != "https") return Safety::Unknown;
  GTlsCertificate* certificate = nullptr;
  GTlsCertificateFlags flags{};
  const bool encrypted = webkit_web_view_get_tls_info(view_, &certificate, &flags) && scheme == "https";
  if (!encrypted) return Safety::NotSecure;
  return flags == G_TLS_CERTIFICATE_NO_FLAGS ? Safety::Secure : Safety::Exception;
}

void Page::DocumentAnswered(const std::string& uri, bool main) {
  main ? sites_.MainAnswered() : sites_.FrameAnswered(SiteOf(uri));
}

bool Page::HasBars() const {
  GList* bars = gtk_container_get_children(GTK_CONTAINER(bars_.get()));
  const bool any = bars || dialogs_.Asking() || log_in_.Asking() || (find_ && find_->Shown());
  g_list_free(bars);
  return any;
}

bool Page::CloseTopBar() {
  if (find_ && find_->Shown()) {
    find_->Hide();
    return true;
  }
  if (dialogs_.Refuse() || log_in_.Refuse()) return true;
  GList* bars = gtk_container_get_children(GTK_CONTAINER(bars_.get()));
  GList* newest = g_list_last(bars);
  GtkWidget* bar = newest ? static_cast<GtkWidget*>(newest->data) : nullptr;
  g_list_free(bars);
  if (!bar && screen_.On()) {
    // Not within the handler of the window that goes.
    callbacks_.Later([this] { LeaveTopScreen(); });
    return true;
  }
  if (!bar) return false;
  if (GTK_IS_INFO_BAR(bar)) gtk_info_bar_response(GTK_INFO_BAR(bar), GTK_RESPONSE_CLOSE);
  return true;
}

GtkWindow* Page::Window() {
  GtkWidget* top = gtk_widget_get_toplevel(box_.get());
  return GTK_IS_WINDOW(top) ? GTK_WINDOW(top) : world_.MainWindow();
}

std::string Page::EngineAddress() const { return view_ ? TextOf(webkit_web_view_get_uri(view_)) : ""; }

std::string Page::EngineTitle() const { return view_ ? TextOf(webkit_web_view_get_title(view_)) : ""; }
bool Page::EngineLoads() const { return view_ && webkit_web_view_is_loading(view_); }
bool Page::WorksOffline() const { return world_.Base().Offline(); }
std::optional<std::string> Page::BadProxy() const { return world_.Settings().BadProxy(); }
bool Page::PromisedHttps(const std::string& host) const { return world_.Base().PromisedHttps(host); }

bool Page::AsksBeforePlain() const { return world_.Base().GuardsPlain(); }

void Page::LetPlainThrough(bool through) {
  if (std::exchange(plain_through_, through) != through) Guard();
}

void Page::Guard() {
  if (view_) world_.Base().Plain().Guard(view_, AsksBeforePlain() && !plain_through_);
}

bool Page::ComesTooEarly(const std::string& uri) const {
  return Address::Scheme(uri) == "http" && AsksBeforePlain() && !plain_through_ &&
         !world_.Base().Plain().Ready();
}

void Page::AwaitGuard(std::function<void()> known) {
  world_.Base().Plain().Await([this, held = weak_from_this(), known = std::move(known)] {
    if (const auto keep = held.lock()) RunHandler(known);
  });
}

void Page::LoadAddress(const std::string& uri) {
  View();
  Wish(uri);
  hang_->Leave([this, uri] { webkit_web_view_load_uri(View(), uri.c_str()); });
}

void Page::LoadHtml(const std::string& html, const std::string& address) {
  View();
  hang_->Leave([this, html, address] {
    webkit_web_view_load_alternate_html(View(), html.c_str(), address.c_str(), Engine::OwnOrigin);
  });
}

void Page::Reload() {
  View();
  hang_->Leave([this] { webkit_web_view_reload(View()); });
}

void Page::StopLoading() {
  webkit_web_view_stop_loading(View());
  hang_->Stop();
}

void Page::Trust(GTlsCertificate* certificate, const std::string& host) {
  world_.Base().Trust(certificate, host);
}

bool Page::Trusts(const std::string& host) const { return world_.Base().Trusts(host); }

std::shared_ptr<void> Page::ReadSource(const std::string& uri, bool shown,
                                       std::function<void(const std::string&)> done,
                                       std::function<void(const ErrorPage&)> failed) {
  WebKitWebResource* resource = shown ? webkit_web_view_get_main_resource(View()) : nullptr;
  return std::make_shared<SourceLoad>(world_.Base(), uri, resource, std::move(done), std::move(failed),
                                      Runner());
}

void Page::LoadWanted() {
  dialogs_.Dismiss();
  log_in_.Dismiss();
}

void Page::LoadBegan() {
  Tell([](PageOwner& owner) { owner.LoadBegan(); });
}

// What stood above the page belonged to the one before.
void Page::LoadCommitted() {
  blank_ = died_ = false;
  TakeProcess();
  const std::string& address = load_.DocumentAddress();
  const bool as_opener = std::exchange(speaks_for_opener_, false) && address == "about:blank";
  if (!as_opener) sites_.Committed(SiteOf(address));
  // No press for the page before is one for this.
  taken_press_ = presses_;
  questions_.Forget();
  held_.Forget();
  wished_.clear();
  may_download_ = false;
  dialogs_.Forget();
  log_in_.Forget();
  Tell([](PageOwner& owner) { owner.NameChanged(); });
}

void Page::LoadArrived() {
  // What the bar found was in another page.
  if (find_) find_->Renew();
}

void Page::LoadEnded() {
  Tell([](PageOwner& owner) { owner.LoadEnded(); });
}

void Page::Progressed(long progress, long maximum) {
  Tell([progress, maximum](PageOwner& owner) { owner.Progressed(progress, maximum); });
}

void Page::LoadStatusChanged(const std::string& text) {
  load_status_ = text;
  ShowStatus();
}

void Page::ProcessDied() {
  Tell([](PageOwner& owner) { owner.ProcessDied(); });
}

// What is under the mouse comes before the load.
void Page::ShowStatus() {
  const std::string& text = hovered_.empty() ? load_status_ : hovered_;
  if (text == shown_status_) return;
  shown_status_ = text;
  Tell([shown = text](PageOwner& owner) { owner.StatusChanged(shown); });
}

// What a press asks for comes at once, what a script asks for by itself when the user agrees; and one dialog
// for one page.
void Page::AskToPrint(WebKitPrintOperation* operation) {
  if (printing_) return;
  if (TakePress()) return ShowPrint(operation);
  questions_.Ask({.text = Asker() + " wants to print.",
                  .yes = "_Print…",
                  .no = "_Cancel",
                  .refusal = Questions::Refusal::MayBeStopped},
                 [this, held = std::shared_ptr<WebKitPrintOperation>(Share(operation))](bool yes) {
                   if (yes) ShowPrint(held.get());
                 });
}

// The server of the page on show, or of the one on its way, asks for itself; any other one for a part of it.
bool Page::AskToLogIn(WebKitAuthenticationRequest* request) {
  const std::string host = TextOf(webkit_authentication_request_get_host(request));
  const bool own = host == Site() || (load_.Busy() && host == Address::Host(EngineAddress()));
  const bool taken = log_in_.Ask(request, own ? std::string() : Site());
  questions_.MakeRoom();
  return taken;
}

size_t Page::OtherBars() const {
  size_t shown = 0;
  for (GtkWidget* place : {bars_.get(), scripts_.get()}) {
    GList* bars = gtk_container_get_children(GTK_CONTAINER(place));
    for (GList* bar = bars; bar; bar = bar->next)
      if (gtk_widget_get_visible(GTK_WIDGET(bar->data))) ++shown;
    g_list_free(bars);
  }
  return shown - questions_.Standing();
}

void Page::ShowPrint(WebKitPrintOperation* operation) {
  if (std::exchange(printing_, true)) return;
  PrintPage::Ask(*this, operation, [this] { printing_ = false; });
}

void Page::Print() {
  const Owned<WebKitPrintOperation> operation(webkit_print_operation_new(View()));
  ShowPrint(operation.get());
}

void Page::AskToDownload(Download& download) {
  const std::string uri = download.Uri();
  const bool pressed = wished_.erase(uri.substr(0, uri.find('#'))) > 0;
  const std::vector<Download*> shown = downloads_.Shown();
  const auto count = [&shown](const auto& counts) {
    return std::count_if(shown.begin(), shown.end(), counts);
  };
  const auto running = count([](Download* one) { return one->Running(); });
  const auto waiting = count([](Download* one) { return one->Running() && one->Held(); });
  if (may_download_ || download.Named() || (pressed && running < MostDownloadsAtOnce)) return;
  download.Hold();
  if (waiting == MostDownloadsWaiting) return download.Refuse("too many others wait for an answer");
  questions_.Ask({.text = Asker() + " wants to download files.", .yes = "_Download", .no = "_Don't Download"},
                 [this, held = download.weak_from_this()](bool yes) {
                   may_download_ = may_download_ || yes;
                   const auto download = held.lock();
                   if (download) yes ? download->Release() : download->Refuse("it wasn't allowed");
                 });
}

void Page::Taken() { hang_->Taken(); }

void Page::TakeTitle() {
  // It is empty while the next page comes.
  if (EngineTitle().empty()) return;
  Tell([](PageOwner& owner) { owner.NameChanged(); });
  load_.OnTitle();
}

void Page::TakeHover(WebKitHitTestResult* hit) {
  const bool link = webkit_hit_test_result_context_is_link(hit);
  hovered_.clear();
  if (link)
    hovered_ = HostName::Shown(WebAddress::WithoutUser(TextOf(webkit_hit_test_result_get_link_uri(hit))));
  ShowStatus();
}

// The engine draws nothing before there is a page, and a page without one is white.
bool Page::Paint(cairo_t* cairo) {
  if (!blank_) return false;
  cairo_set_source_rgb(cairo, 1, 1, 1);
  cairo_paint(cairo);
  return true;
}

// Whatever the user's choice is, a page in a loop doesn't fill the machine with windows.
bool Page::MayAskForWindow() {
  const gint64 now = g_get_monotonic_time();
  if (now - std::exchange(last_request_, now) > G_USEC_PER_SEC) requests_ = 0;
  return ++requests_ <= MostInARow;
}

GtkWidget* Page::Create(WebKitWebView* view, WebKitNavigationAction* action) {
  const std::string site = SiteName::Of(load_.DocumentAddress());
  const bool pressed = webkit_navigation_action_is_user_gesture(action);
  const std::string wanted = TextOf(webkit_uri_request_get_uri(webkit_navigation_action_get_request(action)));
  if (!pressed && !world_.MayOpenWindows(site)) {
    held_.Hold(wanted);
    return nullptr;
  }
  if (!MayAskForWindow()) return nullptr;
  // The question may take long, and the page that asks may be gone when it is answered.
  const auto opener = Share(view);
  Page* taker = nullptr;
  bool cancel = false;
  ++asking_;
  Tell([&](PageOwner& owner) { owner.WindowWanted(Asker(), taker, cancel); });
  --asking_;
  const bool gone = view_ != view;
  if (gone && asking_ == 0) world_.DestroyLater(view);
  if (cancel || gone || taker == this) return nullptr;
  if (!taker) taker = &world_.OpenPlainWindow().Shown();
  GtkWidget* window = taker->TakeNewWindow(*this);
  process_.Tie();
  if (pressed) taker->Wish(wanted);
  return window;
}
