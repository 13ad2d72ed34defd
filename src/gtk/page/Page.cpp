#include "gtk/page/Page.h"

#include <exception>
#include <utility>

#include "gtk/page/BrowserWorld.h"
#include "gtk/page/FindBar.h"
#include "gtk/page/HangWatch.h"
#include "gtk/page/LoadFaults.h"
#include "gtk/page/PageMenu.h"
#include "gtk/page/PagePolicy.h"
#include "gtk/page/text/HostName.h"
#include "platform/Failure.h"
#include "platform/Text.h"
#include "platform/WebAddress.h"

namespace {

// Longer titles are cut: characters. Nobody reads them, and every one is handed about whole.
constexpr size_t MostTitle = 20000;

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
      keys_(Runner()),
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
  keys_.Attach(view_);
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
    callbacks_.On<gboolean(GtkWidget*, GdkEvent*)>(view_, press, [this](auto*, GdkEvent* event) {
      if (event->type != GDK_KEY_PRESS || !keys_.IsBack()) ++presses_;
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
  keys_.Detach();
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

void Page::Renew() {
  if (Closed()) throw Failure("The page is closed");
  DropView();
  MakeView(nullptr);
  opened_by_page_ = speaks_for_opener_ = quit_ = false;
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

// What is under the mouse comes before the load.
void Page::ShowStatus() {
  const std::string& text = hovered_.empty() ? load_status_ : hovered_;
  if (text == shown_status_) return;
  shown_status_ = text;
  Tell([shown = text](PageOwner& owner) { owner.StatusChanged(shown); });
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
