#include "gtk/page/PageLoad.h"

#include <algorithm>
#include <utility>

#include "gtk/engine/BrowserWorld.h"
#include "gtk/page/LoadErrors.h"
#include "gtk/page/Page.h"
#include "gtk/page/SourceLoad.h"

namespace {

constexpr long FullProgress = 10000;
// A small page is complete before its title is known, by a few milliseconds.
constexpr unsigned TitleWait = 100;  // ms
constexpr const char* SourcePrefix = "view-source:";

}  // namespace

PageLoad::PageLoad(Page& page) : page_(page) {}

PageLoad::~PageLoad() { StopWaiting(); }

void PageLoad::Attach(WebKitWebView* view) {
  phase_ = Phase::Idle;
  announced_ = more_comes_ = own_coming_ = crash_page_ = false;
  own_address_.clear();
  fallback_.clear();
  g_signal_connect(view, "load-changed", G_CALLBACK(OnChanged), this);
  g_signal_connect(view, "load-failed", G_CALLBACK(OnFailed), this);
  g_signal_connect(view, "load-failed-with-tls-errors", G_CALLBACK(OnBadCertificate), this);
  g_signal_connect(view, "web-process-terminated", G_CALLBACK(OnDied), this);
  g_signal_connect(view, "notify::estimated-load-progress", G_CALLBACK(OnProgress), this);
}

void PageLoad::Detach(WebKitWebView* view) {
  source_.reset();
  StopWaiting();
  g_signal_handlers_disconnect_by_data(view, this);
}

void PageLoad::Start(const Address::Target& target) {
  source_.reset();
  page_.Dialogs().Dismiss();
  kept_address_.clear();
  fallback_ = target.fallback;
  instead_.reset();
  own_coming_ = false;
  StopWaiting();
  if (StaysOnPage(target.uri)) return webkit_web_view_load_uri(page_.View(), target.uri.c_str());
  phase_ = Phase::Waiting;
  if (!target.valid) {
    ShowError(LoadErrors::NoAddress(target.uri));
  } else if (Address::HasForeignPort(target.uri)) {
    ShowError(LoadErrors::Refused(target.uri));
  } else if (target.uri == "about:blank" && !webkit_web_view_get_uri(page_.View()) && own_address_.empty()) {
    StartBlank();
  } else if (target.uri.starts_with(SourcePrefix)) {
    ShowSource(target.uri);
  } else {
    webkit_web_view_load_uri(page_.View(), target.uri.c_str());
  }
}

// Another place of the page that is there: no load, and so no report of one.
bool PageLoad::StaysOnPage(const std::string& uri) const {
  const std::string shown = TextOf(webkit_web_view_get_uri(page_.View()));
  const size_t mark = uri.find('#');
  return mark != uri.npos && uri != shown && own_address_.empty() && !Busy() &&
         uri.substr(0, mark) == shown.substr(0, shown.find('#'));
}

// An unused view is blank. A load that were still under way when the next one starts, as that of a new tab
// often would be, could not be told from it.
void PageLoad::StartBlank() {
  own_address_ = "about:blank";
  own_coming_ = true;
  blank_ = g_idle_add_full(G_PRIORITY_DEFAULT, OnBlank, this, nullptr);
}

gboolean PageLoad::OnBlank(gpointer data) {
  auto* self = static_cast<PageLoad*>(data);
  const auto keep = self->page_.shared_from_this();
  self->blank_ = 0;
  self->Started();
  // The program may have gone on to another page within.
  if (self->phase_ != Phase::Provisional || self->page_.Closed()) return G_SOURCE_REMOVE;
  self->phase_ = Phase::Committed;
  self->End();
  return G_SOURCE_REMOVE;
}

void PageLoad::ShowSource(const std::string& uri) {
  const std::string wanted = uri.substr(std::string_view(SourcePrefix).size());
  const bool shown = own_address_.empty() && wanted == TextOf(webkit_web_view_get_uri(page_.View()));
  own_address_ = uri;
  own_coming_ = true;
  source_ = SourceLoad::Begin(
      page_, wanted, shown, [this, uri](const std::string& html) { ShowOwn(uri, html); },
      [this](const ErrorPage& error) { ShowError(error); });
}

void PageLoad::Stop() {
  const bool had_source = source_ != nullptr;
  source_.reset();
  page_.Dialogs().Dismiss();
  webkit_web_view_stop_loading(page_.View());
  // What hadn't reached the page yet ends without a report.
  if (had_source || phase_ == Phase::Waiting || (Busy() && !webkit_web_view_is_loading(page_.View()))) End();
}

void PageLoad::Again() {
  if (!own_address_.empty())
    Start(Address::FromTyped(own_address_));
  else
    webkit_web_view_reload(page_.View());
}

void PageLoad::Denied() {
  if (phase_ != Phase::Waiting) return;
  // The engine goes on taking the address that was wanted for the page's.
  if (WebKitWebResource* page = webkit_web_view_get_main_resource(page_.View()))
    kept_address_ = TextOf(webkit_web_resource_get_uri(page));
  End();
}

std::string PageLoad::KnownAddress() const {
  if (!kept_address_.empty()) return kept_address_;
  const bool leaving = (phase_ == Phase::Waiting || phase_ == Phase::Provisional) && !own_coming_;
  return leaving ? std::string() : own_address_;
}

void PageLoad::ShowOwn(const std::string& address, const std::string& html) {
  if (page_.Closed()) return;
  source_.reset();
  if (phase_ == Phase::Idle) phase_ = Phase::Waiting;
  own_address_ = address;
  own_coming_ = true;
  crash_page_ = false;
  refusal_ = {};
  webkit_web_view_load_alternate_html(page_.View(), html.c_str(), address.c_str(), nullptr);
}

void PageLoad::ShowError(const ErrorPage& error) { ShowOwn(error.address, error.Html()); }

bool PageLoad::Proceed() {
  if (own_address_.empty() || !refusal_.certificate) return false;
  const std::string uri = refusal_.uri;
  webkit_web_context_allow_tls_certificate_for_host(page_.World().Context(), refusal_.certificate.get(),
                                                    Address::Host(uri).c_str());
  Start({uri, {}, true});
  return true;
}

void PageLoad::Started() {
  // The page before is complete, its title or not.
  if (title_wait_) End();
  phase_ = Phase::Provisional;
  kept_address_.clear();
  page_.SetLoadStatus("Opening " + page_.Address());
  if (std::exchange(announced_, true)) return;
  page_.Tell([](PageOwner& owner) { owner.LoadBegan(); });
}

void PageLoad::Committed() {
  phase_ = Phase::Committed;
  fallback_.clear();
  page_.ClearBars();
  page_.Dialogs().Forget();
  if (!own_coming_) {
    own_address_.clear();
    crash_page_ = false;
    refusal_ = {};
  }
  page_.Tell([](PageOwner& owner) { owner.NameChanged(); });
}

void PageLoad::Finished() {
  // The report of a load that was given up for the one that waits, or that an error page follows.
  const bool another = std::exchange(more_comes_, false) || phase_ == Phase::Waiting;
  if (another) return;
  page_.SearchAgain();
  const bool untitled = !page_.Closed() && TextOf(webkit_web_view_get_title(page_.View())).empty();
  if (phase_ == Phase::Committed && untitled && page_.Address() != "about:blank")
    title_wait_ = g_timeout_add(TitleWait, OnTitleWait, this);
  else
    End();
}

void PageLoad::StopWaiting() {
  if (blank_) g_source_remove(std::exchange(blank_, 0));
  if (title_wait_) g_source_remove(std::exchange(title_wait_, 0));
}

void PageLoad::Titled() {
  if (title_wait_) End();
}

gboolean PageLoad::OnTitleWait(gpointer data) {
  auto* self = static_cast<PageLoad*>(data);
  const auto keep = self->page_.shared_from_this();
  self->title_wait_ = 0;
  self->End();
  return G_SOURCE_REMOVE;
}

void PageLoad::End() {
  // An own page that never came leaves the one that is shown.
  if (own_coming_ && phase_ != Phase::Committed) own_address_.clear();
  phase_ = Phase::Idle;
  StopWaiting();
  announced_ = own_coming_ = false;
  page_.SetLoadStatus({});
  page_.Tell([](PageOwner& owner) { owner.Progressed(-1, 0); });
  page_.Tell([](PageOwner& owner) { owner.LoadEnded(); });
}

void PageLoad::OnChanged(WebKitWebView*, WebKitLoadEvent event, gpointer data) {
  auto* self = static_cast<PageLoad*>(data);
  const auto keep = self->page_.shared_from_this();
  switch (event) {
    case WEBKIT_LOAD_STARTED:
      return self->Started();
    case WEBKIT_LOAD_REDIRECTED:
      return self->page_.SetLoadStatus("Opening " + self->page_.Address());
    case WEBKIT_LOAD_COMMITTED:
      return self->Committed();
    case WEBKIT_LOAD_FINISHED:
      return self->Finished();
  }
}

bool PageLoad::FallBack(const char* uri) {
  if (fallback_.empty() || Address::Scheme(uri) != "https") return false;
  const std::string address = std::exchange(fallback_, {});
  more_comes_ = true;
  webkit_web_view_load_uri(page_.View(), address.c_str());
  return true;
}

gboolean PageLoad::OnFailed(WebKitWebView*, WebKitLoadEvent event, const char* uri, GError* error,
                            gpointer data) {
  auto* self = static_cast<PageLoad*>(data);
  const auto keep = self->page_.shared_from_this();
  if (LoadErrors::IsInterruption(error)) {
    if (self->instead_) self->more_comes_ = true;
    if (self->instead_) self->ShowError(*std::exchange(self->instead_, std::nullopt));
    return TRUE;
  }
  // A page of which a part has arrived stays as it is.
  if (event == WEBKIT_LOAD_COMMITTED) return TRUE;
  if (self->page_.World().Offline() && !Address::IsLocal(uri)) {
    self->more_comes_ = true;
    self->ShowError(LoadErrors::WorksOffline(uri));
    return TRUE;
  }
  if (LoadErrors::IsWithoutSecurity(error) && self->FallBack(uri)) return TRUE;
  self->more_comes_ = true;
  self->ShowError(LoadErrors::Failed(uri, error));
  return TRUE;
}

gboolean PageLoad::OnBadCertificate(WebKitWebView*, const char* uri, GTlsCertificate* certificate,
                                    GTlsCertificateFlags flags, gpointer data) {
  auto* self = static_cast<PageLoad*>(data);
  const auto keep = self->page_.shared_from_this();
  self->more_comes_ = true;
  self->ShowError(LoadErrors::BadCertificate(uri, flags, ProceedAddress));
  self->refusal_ = {uri, Share(certificate)};
  return TRUE;
}

void PageLoad::OnDied(WebKitWebView*, WebKitWebProcessTerminationReason reason, gpointer data) {
  auto* self = static_cast<PageLoad*>(data);
  const auto keep = self->page_.shared_from_this();
  const std::string uri = self->page_.Address();
  // A process that can't even show the page about its end isn't started again and again.
  const bool again = self->crash_page_;
  self->more_comes_ = false;
  if (again) return self->End();
  self->page_.Tell([](PageOwner& owner) { owner.ProcessDied(); });
  if (self->page_.Closed()) return;
  self->ShowError(LoadErrors::Died(uri, reason));
  self->crash_page_ = true;
}

void PageLoad::OnProgress(GObject*, GParamSpec*, gpointer data) {
  auto* self = static_cast<PageLoad*>(data);
  const auto keep = self->page_.shared_from_this();
  if (self->announced_) self->ReportProgress();
}

void PageLoad::ReportProgress() {
  const double share = webkit_web_view_get_estimated_load_progress(page_.View());
  const auto progress = std::max(1L, static_cast<long>(share * FullProgress));
  page_.Tell([progress](PageOwner& owner) { owner.Progressed(progress, FullProgress); });
}
