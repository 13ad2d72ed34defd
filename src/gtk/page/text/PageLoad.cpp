#include "gtk/page/text/PageLoad.h"

#include <algorithm>
#include <cstdio>
#include <random>
#include <string_view>
#include <utility>

#include "gtk/page/text/HostName.h"
#include "platform/WebAddress.h"

namespace {

constexpr long FullProgress = 10000;
// A small page is complete before its title is known, by a few milliseconds.
constexpr unsigned TitleWait = 100;  // ms
constexpr const char* Blank = "about:blank";
constexpr std::string_view SourcePrefix = "view-source:";

// 128 bits of the system's chance.
std::string Secret() {
  std::random_device chance;
  char digits[33];
  std::snprintf(digits, sizeof digits, "%08x%08x%08x%08x", chance(), chance(), chance(), chance());
  return digits;
}

}  // namespace

PageLoad::PageLoad(LoadView& view, LoadListener& listener, Callbacks::Runner runner)
    : view_(view), listener_(listener), callbacks_(std::move(runner)) {}

void PageLoad::Reset() {
  Abandon();
  phase_ = Phase::Idle;
  announced_ = more_comes_ = own_coming_ = crash_page_ = false;
  own_address_.clear();
  fallback_.clear();
  wanted_.clear();
  committed_.clear();
}

void PageLoad::Abandon() {
  source_.reset();
  StopWaiting();
}

void PageLoad::Start(const Address::Target& target) { Begin(target, false); }

bool PageLoad::IsToBeAskedAbout(const std::string& uri) const {
  return !openly_ && Address::Scheme(uri) == "http" && view_.AsksBeforePlain();
}

void PageLoad::LeaveForAnother(bool openly) {
  source_.reset();
  openly_ = openly;
  view_.LetPlainThrough(openly);
  listener_.LoadWanted();
  kept_address_.clear();
  fallback_.clear();
  search_.clear();
  instead_.reset();
  own_coming_ = false;
  StopWaiting();
  wanted_.clear();
}

void PageLoad::Start(const std::string& uri, const std::function<void()>& load) {
  LeaveForAnother(false);
  phase_ = Phase::Waiting;
  wanted_ = uri;
  IsToBeAskedAbout(uri) ? ShowError(LoadErrors::Plain(uri)) : load();
}

void PageLoad::Begin(const Address::Target& target, bool openly) {
  LeaveForAnother(openly);
  fallback_ = target.fallback;
  if (target.valid) search_ = target.search;
  if (StaysOnPage(target.uri)) return view_.LoadAddress(target.uri);
  phase_ = Phase::Waiting;
  wanted_ = target.uri;
  if (!target.valid)
    ShowError(LoadErrors::NoAddress(target.uri, target.search));
  else if (Address::HasForeignPort(target.uri))
    ShowError(LoadErrors::Refused(target.uri));
  else if (IsToBeAskedAbout(target.uri))
    ShowError(LoadErrors::Plain(target.uri));
  else if (target.uri == Blank && view_.EngineAddress().empty() && own_address_.empty())
    StartBlank();
  else if (target.uri.starts_with(SourcePrefix))
    ShowSource(target.uri);
  else
    LoadWeb(target.uri);
}

void PageLoad::LoadWeb(const std::string& uri) {
  if (view_.JoinSite(uri)) more_comes_ = false;
  view_.LoadAddress(uri);
}

// Another place of the page that is there: no load, and so no report of one.
bool PageLoad::StaysOnPage(const std::string& uri) const {
  const std::string shown = view_.EngineAddress();
  const size_t mark = uri.find('#');
  return mark != uri.npos && uri != shown && own_address_.empty() && !Busy() &&
         uri.substr(0, mark) == shown.substr(0, shown.find('#'));
}

// An unused view is blank. A load that were still under way when the next one starts, as that of a new tab
// often would be, could not be told from it.
void PageLoad::StartBlank() {
  own_address_ = Blank;
  own_coming_ = true;
  blank_ = callbacks_.Later([this] { EndBlank(); });
}

void PageLoad::EndBlank() {
  blank_ = 0;
  OnStarted();
  // The program may have gone on to another page within.
  if (phase_ != Phase::Provisional || view_.Gone()) return;
  phase_ = Phase::Committed;
  End();
}

void PageLoad::ShowSource(const std::string& uri) {
  const std::string wanted = uri.substr(SourcePrefix.size());
  const bool shown = own_address_.empty() && wanted == view_.EngineAddress();
  if (!shown && IsToBeAskedAbout(wanted)) {
    ErrorPage error = LoadErrors::Plain(wanted);
    error.address = uri;
    for (ErrorPage::Action& action : error.actions) action.address.insert(0, SourcePrefix);
    return ShowError(error);
  }
  own_address_ = uri;
  own_coming_ = true;
  source_ = view_.ReadSource(
      wanted, shown, [this, uri](const std::string& html) { ShowOwn(uri, html); },
      [this](const ErrorPage& error) { ShowError(error); });
}

void PageLoad::Stop() {
  const bool had_source = source_ != nullptr;
  source_.reset();
  listener_.LoadWanted();
  view_.StopLoading();
  // What hadn't reached the page yet ends without a report.
  if (had_source || phase_ == Phase::Waiting || (Busy() && !view_.EngineLoads())) End();
}

void PageLoad::Again() {
  if (own_address_.empty()) {
    view_.Reload();
  } else {
    Start(Address::FromTyped(own_address_));
  }
}

bool PageLoad::Wants(const std::string& uri) const {
  return phase_ == Phase::Waiting && !wanted_.empty() && (uri == wanted_ || uri == view_.EngineAddress());
}

void PageLoad::Denied(const std::string& uri) {
  if (Wants(uri)) Stay();
}

void PageLoad::Stay() {
  // The engine goes on taking the address that was wanted for the page's.
  kept_address_ = committed_;
  if (phase_ == Phase::Waiting) End();
}

bool PageLoad::IsThere(const std::string& uri) const {
  return Address::Scheme(uri) == Address::Scheme(committed_) &&
         Address::Host(uri) == Address::Host(committed_);
}

std::string PageLoad::KnownAddress() const {
  if (!kept_address_.empty()) return kept_address_;
  const bool leaving = (phase_ == Phase::Waiting || phase_ == Phase::Provisional) && !own_coming_;
  return leaving ? std::string() : own_address_;
}

// What a page wishes for is its own affair until it has come: until then the page on show is the old one.
std::string PageLoad::Address() const {
  const std::string known = KnownAddress();
  if (!known.empty()) return known;
  const bool coming = phase_ == Phase::Waiting || phase_ == Phase::Provisional;
  if (!coming) return view_.EngineAddress();
  if (!wanted_.empty()) return wanted_;
  return own_address_.empty() ? committed_ : own_address_;
}

bool PageLoad::AddressHasCome() const {
  const bool coming = phase_ == Phase::Waiting || phase_ == Phase::Provisional;
  if (coming) return wanted_.empty() && !own_coming_;
  // One of the history that the user goes back to is the engine's from the wish on.
  return ShowsOwnPage() || IsThere(Address());
}

void PageLoad::ShowOwn(const std::string& address, const std::string& html) {
  if (view_.Gone()) return;
  source_.reset();
  StopWaiting();
  if (phase_ == Phase::Idle) phase_ = Phase::Waiting;
  own_address_ = address;
  own_coming_ = true;
  crash_page_ = false;
  refusal_ = {};
  actions_.clear();
  wanted_.clear();
  if (view_.Isolate()) more_comes_ = false;
  view_.LoadHtml(html, address);
}

void PageLoad::ShowError(const ErrorPage& error) {
  buttons_ = std::string(ButtonScheme) + ":" + Secret() + "/";
  ShowOwn(error.address, error.Html(buttons_));
  actions_ = error.actions;
}

// The load that failed hasn't told its end yet.
void PageLoad::ShowErrorAfter(const ErrorPage& error) {
  more_comes_ = true;
  ShowError(error);
}

void PageLoad::Break(const std::string& what) {
  if (view_.Gone()) return;
  const std::string address = Address();
  fallback_.clear();
  instead_.reset();
  // Whatever is still told of a load under way belongs to the page that has failed.
  phase_ = Phase::Waiting;
  ShowError(LoadErrors::Broken(address, what));
}

void PageLoad::Press(const std::string& button) {
  if (own_address_.empty() || phase_ != Phase::Idle) return;
  for (size_t n = 0; n < actions_.size(); ++n) {
    if (button != buttons_ + std::to_string(n)) continue;
    const ErrorPage::Action action = actions_[n];
    actions_.clear();
    if (action.kind == ErrorPage::Action::Kind::GoOn) return GoOn();
    return Begin({action.address, {}, true}, action.kind == ErrorPage::Action::Kind::Openly);
  }
}

void PageLoad::GoOn() {
  if (!refusal_.certificate) return;
  const Refusal refusal = std::exchange(refusal_, {});
  view_.Trust(refusal.certificate.get(), Address::Host(refusal.uri));
  Start({refusal.uri, {}, true});
}

void PageLoad::KeepPlainBack() {
  if (std::exchange(openly_, false) && !view_.Gone()) view_.LetPlainThrough(false);
}

void PageLoad::OnStarted() {
  // The page before is complete, its title or not.
  if (title_wait_) End();
  phase_ = Phase::Provisional;
  kept_address_.clear();
  listener_.LoadStatusChanged("Opening " + HostName::Shown(WebAddress::WithoutUser(Address())));
  if (!std::exchange(announced_, true)) listener_.LoadBegan();
}

// What was meant for the typed host isn't for another one.
void PageLoad::OnRedirected() {
  fallback_.clear();
  search_.clear();
  listener_.LoadStatusChanged("Opening " + HostName::Shown(WebAddress::WithoutUser(Address())));
}

void PageLoad::OnCommitted() {
  phase_ = Phase::Committed;
  KeepPlainBack();
  fallback_.clear();
  search_.clear();
  wanted_.clear();
  committed_ = own_coming_ ? std::string() : view_.EngineAddress();
  if (!own_coming_) {
    actions_.clear();
    own_address_.clear();
    crash_page_ = false;
    refusal_ = {};
  }
  listener_.LoadCommitted();
}

void PageLoad::OnFinished() {
  // The report of a load that was given up for the one that waits, or that an error page follows.
  const bool another = std::exchange(more_comes_, false) || phase_ == Phase::Waiting;
  if (another) return;
  listener_.LoadArrived();
  const bool untitled = !view_.Gone() && view_.EngineTitle().empty();
  if (phase_ == Phase::Committed && untitled && Address() != Blank)
    title_wait_ = callbacks_.After(TitleWait, [this] {
      title_wait_ = 0;
      End();
    });
  else
    End();
}

void PageLoad::StopWaiting() {
  callbacks_.Cancel(std::exchange(blank_, 0));
  callbacks_.Cancel(std::exchange(title_wait_, 0));
}

void PageLoad::OnTitle() {
  if (title_wait_) End();
}

void PageLoad::End() {
  // An own page that never came leaves the one that is shown.
  if (own_coming_ && phase_ != Phase::Committed) own_address_.clear();
  phase_ = Phase::Idle;
  KeepPlainBack();
  wanted_.clear();
  StopWaiting();
  announced_ = own_coming_ = false;
  listener_.LoadStatusChanged({});
  listener_.Progressed(-1, 0);
  listener_.LoadEnded();
}

void PageLoad::OnProgress(double share) {
  if (announced_) listener_.Progressed(std::max(1L, static_cast<long>(share * FullProgress)), FullProgress);
}

// A page may change its address without a load, within its place.
void PageLoad::OnAddress() {
  const std::string address = view_.EngineAddress();
  const bool coming = phase_ == Phase::Waiting || phase_ == Phase::Provisional;
  if (coming || committed_.empty() || !IsThere(address)) return;
  committed_ = address;
  kept_address_.clear();
}

bool PageLoad::FallBack(const std::string& uri, const LoadFault& fault) {
  if (fallback_.empty() || Address::Scheme(uri) != "https" || !LoadErrors::NothingSpeaks(fault) ||
      view_.PromisedHttps(Address::Host(uri)))
    return false;
  more_comes_ = true;
  const std::string plain = std::exchange(fallback_, {});
  IsToBeAskedAbout(plain) ? ShowError(LoadErrors::Plain(plain)) : view_.LoadAddress(plain);
  return true;
}

ErrorPage PageLoad::WithOpenWay(ErrorPage error, const std::string& uri) {
  if (!fallback_.empty() && Address::Scheme(uri) == "https" && !view_.PromisedHttps(Address::Host(uri)))
    error.actions.push_back({"Try without encryption", fallback_, ErrorPage::Action::Kind::Openly});
  return error;
}

void PageLoad::OnFailed(const std::string& uri, bool committed, const LoadFault& fault) {
  if (fault.kind == LoadFault::Kind::Interrupted) {
    if (const auto instead = std::exchange(instead_, std::nullopt))
      ShowErrorAfter(WithOpenWay(*instead, instead->address));
    return;
  }
  // A page of which a part has arrived stays as it is.
  if (committed) return;
  const auto bad_proxy = view_.BadProxy();
  if (view_.WorksOffline() && !Address::IsLocal(uri)) return ShowErrorAfter(LoadErrors::WorksOffline(uri));
  if (bad_proxy && !Address::IsLocal(uri)) return ShowErrorAfter(LoadErrors::NoProxy(uri, *bad_proxy));
  if (fault.kind == LoadFault::Kind::Plain) return ShowErrorAfter(LoadErrors::Plain(uri));
  if (FallBack(uri, fault)) return;
  if (fault.kind == LoadFault::Kind::NoSuchHost && !search_.empty()) {
    more_comes_ = true;
    fallback_.clear();
    wanted_ = std::exchange(search_, {});
    return view_.LoadAddress(wanted_);
  }
  const ErrorPage error = LoadErrors::Failed(uri, fault);
  ShowErrorAfter(LoadErrors::WasSpokenWith(fault) ? WithOpenWay(error, uri) : error);
}

void PageLoad::OnBadCertificate(const std::string& uri, GTlsCertificate* certificate,
                                GTlsCertificateFlags flags) {
  using enum LoadErrors::Standing;
  const std::string host = Address::Host(uri);
  const auto standing = view_.PromisedHttps(host) ? Promised : view_.Trusts(host) ? Accepted : Unknown;
  ShowErrorAfter(LoadErrors::BadCertificate(uri, flags, standing));
  refusal_ = {uri, Share(certificate)};
}

void PageLoad::OnDied(ProcessEnd end) {
  const std::string uri = Address();
  // A process that can't even show the page about its end isn't started again and again.
  const bool again = crash_page_;
  more_comes_ = false;
  if (again) return End();
  // Whoever ended it knows.
  if (end != ProcessEnd::ByUser) listener_.ProcessDied();
  if (view_.Gone()) return;
  ShowError(LoadErrors::Died(uri, end));
  crash_page_ = true;
}
