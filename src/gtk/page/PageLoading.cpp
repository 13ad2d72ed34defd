// What a page's load asks of the engine's view, and what it tells.

#include <utility>

#include "gtk/page/BrowserWorld.h"
#include "gtk/page/FindBar.h"
#include "gtk/page/HangWatch.h"
#include "gtk/page/Page.h"
#include "gtk/page/SourceLoad.h"

namespace {

// As the engine reads the address; without a host there is none.
std::string SiteOf(const std::string& uri) {
  const std::unique_ptr<WebKitSecurityOrigin, decltype(&webkit_security_origin_unref)> origin(
      webkit_security_origin_new_for_uri(uri.c_str()), webkit_security_origin_unref);
  return origin ? TextOf(webkit_security_origin_get_host(origin.get())) : std::string();
}

}  // namespace

void Page::DocumentAnswered(const std::string& uri, bool main) {
  main ? sites_.MainAnswered() : sites_.FrameAnswered(SiteOf(uri));
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
  AskToLeave(uri, [this, uri](bool agreed) {
    if (agreed) hang_->Leave([this, uri] { webkit_web_view_load_uri(View(), uri.c_str()); });
  });
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
  GoElsewhere();
  dialogs_.Dismiss();
  log_in_.Dismiss();
}

void Page::LoadBegan() {
  Tell([](PageOwner& owner) { owner.LoadBegan(); });
}

// What stood above the page belonged to the one before.
void Page::LoadCommitted() {
  blank_ = died_ = left_anyway_ = false;
  TakeProcess();
  const std::string& address = load_.DocumentAddress();
  const bool as_opener = std::exchange(speaks_for_opener_, false) && address == "about:blank";
  if (!as_opener) sites_.Committed(SiteOf(address));
  // No press for the page before is one for this.
  taken_press_ = presses_before_ = presses_;
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
  left_anyway_ = false;
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
