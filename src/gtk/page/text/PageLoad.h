#pragma once

#include <gio/gio.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "gtk/base/Callbacks.h"
#include "gtk/base/GObjects.h"
#include "gtk/page/text/Address.h"
#include "gtk/page/text/ErrorPage.h"
#include "gtk/page/text/LoadErrors.h"

// What a load asks of the engine's view.
class LoadView {
 public:
  virtual ~LoadView() = default;
  // True while no view is there: the page is closed.
  virtual bool Gone() const = 0;
  // As the engine has it: the address being loaded from its start on; empty for an unused view.
  virtual std::string EngineAddress() const = 0;
  virtual std::string EngineTitle() const = 0;
  virtual bool EngineLoads() const = 0;
  virtual bool WorksOffline() const = 0;
  // The proxy that was named by hand where it is none; then no address of the network is asked.
  virtual std::optional<std::string> BadProxy() const = 0;
  // The host has promised to be there by https: only.
  virtual bool PromisedHttps(const std::string& host) const = 0;

  // The user wants to be asked before a page comes without encryption. The engine keeps those back that
  // weren't let through, by a fault of their own kind.
  virtual bool AsksBeforePlain() const = 0;
  // For the load that follows, until it has come.
  virtual void LetPlainThrough(bool through) = 0;

  virtual void LoadAddress(const std::string& uri) = 0;
  // A page of the element's own, which stands for an address. Its origin is no web page's.
  virtual void LoadHtml(const std::string& html, const std::string& address) = 0;
  // Before an address is loaded: goes where pages of its site are already. True as with Isolate.
  virtual bool JoinSite(const std::string&) { return false; }
  // Cuts the view off from the page that opened it, if any did. True where a new view has taken its place,
  // which tells nothing any more of what the old one did.
  virtual bool Isolate() = 0;
  virtual void Reload() = 0;
  virtual void StopLoading() = 0;
  // Takes a certificate for its host's own, for this session.
  virtual void Trust(GTlsCertificate* certificate, const std::string& host) = 0;
  // True for a host of which the user has taken a certificate so.
  virtual bool Trusts(const std::string& host) const = 0;

  // Reads the source of an address, from the page on show where `shown`. One of the two is called, later,
  // unless what is returned has been dropped.
  virtual std::shared_ptr<void> ReadSource(const std::string& uri, bool shown,
                                           std::function<void(const std::string& html)> done,
                                           std::function<void(const ErrorPage& error)> failed) = 0;
};

// Hears how a load goes. Each load that has begun ends once, however it ends; a wish that comes to nothing
// before it has begun ends as well.
class LoadListener {
 public:
  virtual ~LoadListener() = default;
  // The page on show is being left: its questions are void.
  virtual void LoadWanted() = 0;
  virtual void LoadBegan() = 0;
  // The new page takes the old one's place.
  virtual void LoadCommitted() = 0;
  // All of the page has come; its title may follow.
  virtual void LoadArrived() = 0;
  virtual void LoadEnded() = 0;
  // Of 10000; -1 of 0 at the end.
  virtual void Progressed(long progress, long maximum) = 0;
  virtual void LoadStatusChanged(const std::string& text) = 0;
  virtual void ProcessDied() = 0;
};

// The life of a page's load, from what the user typed to the last report, through fallbacks and error pages.
// Needs no display. Its listener may close the page within each of its calls, but not end this object.
class PageLoad {
 public:
  // The scheme of the buttons on own pages.
  static constexpr const char* ButtonScheme = "marlowick-press";

  PageLoad(LoadView& view, LoadListener& listener, Callbacks::Runner runner);

  // A new view takes the place of the one before, which is gone.
  void Reset();
  // The view goes.
  void Abandon();

  void Start(const Address::Target& target);
  // Starts what the engine knows by itself, such as a page of its history: `load` sets it going.
  void Start(const std::string& uri, const std::function<void()>& load);
  void Stop();
  // The page once more, or the address that couldn't be loaded.
  void Again();
  // A request was turned down or became something else before it started. What wasn't asked for by the user
  // leaves the user's wish alone.
  void Denied(const std::string& uri);
  // The user doesn't leave the page on show, whatever was asked for.
  void Stay();

  // From the wish for a page to the end of its load.
  bool Busy() const { return phase_ != Phase::Idle; }
  // As users know it: the address being loaded from its start on, the one that an own page stands for, or the
  // one that the user stayed on.
  std::string Address() const;
  // What the user has asked for and what hasn't come yet; empty for nothing.
  const std::string& Wanted() const { return wanted_; }
  // That is this address, as the engine writes it, and nothing has come of it yet.
  bool Wants(const std::string& uri) const;
  // Of the web's document that is on show, whatever is being loaded; empty where there is none.
  const std::string& DocumentAddress() const { return committed_; }
  // False while Address() is what is wished for, and another page is still on show.
  bool AddressHasCome() const;
  bool ShowsOwnPage() const { return !own_address_.empty(); }

  // Shows a page of the element's own in place of whatever was wanted.
  void ShowError(const ErrorPage& error);
  // The same, once the load under way has reported that its request was turned down.
  void ShowErrorInstead(const ErrorPage& error) { instead_ = error; }
  // A handler of the page's has failed: what is there can't be relied on any more.
  void Break(const std::string& what);
  // The user presses a button of the own page on show. An address that is none of its buttons', or one that
  // was pressed before, does nothing.
  void Press(const std::string& button);

  // What the engine tells.
  void OnStarted();
  void OnRedirected();
  void OnCommitted();
  void OnFinished();
  void OnProgress(double share);  // of 1
  void OnTitle();
  void OnAddress();
  void OnFailed(const std::string& uri, bool committed, const LoadFault& fault);
  void OnBadCertificate(const std::string& uri, GTlsCertificate* certificate, GTlsCertificateFlags flags);
  void OnDied(ProcessEnd end);

 private:
  enum class Phase { Idle, Waiting, Provisional, Committed };
  struct Refusal {
    std::string uri;
    Owned<GTlsCertificate> certificate;
  };

  void LeaveForAnother(bool openly);
  // `openly`: without encryption, too, whatever the user wants to be asked about.
  void Begin(const Address::Target& target, bool openly);
  void KeepPlainBack();
  bool IsToBeAskedAbout(const std::string& uri) const;
  void ShowOwn(const std::string& address, const std::string& html);
  void ShowErrorAfter(const ErrorPage& error);
  void GoOn();
  void StopWaiting();
  void LoadWeb(const std::string& uri);
  void StartBlank();
  void EndBlank();
  bool StaysOnPage(const std::string& uri) const;
  // At the place of the document on show.
  bool IsThere(const std::string& uri) const;
  void End();
  // A load by https: that has come to nothing: goes on by http: where nothing there speaks at all.
  bool FallBack(const std::string& uri, const LoadFault& fault);
  // Offers the way without encryption, which was to be gone were there nothing at all.
  ErrorPage WithOpenWay(ErrorPage error, const std::string& uri);
  void ShowSource(const std::string& uri);
  std::string KnownAddress() const;

  LoadView& view_;
  LoadListener& listener_;
  Phase phase_ = Phase::Idle;
  bool announced_ = false;   // the listener knows of this load
  bool more_comes_ = false;  // the failed load's last report isn't the end: another page follows
  bool own_coming_ = false;  // the load under way is an own page
  bool crash_page_ = false;  // the own page is about a dead process
  std::string own_address_;
  std::string kept_address_;
  std::string wanted_;     // what the user asked for, until it has come
  std::string committed_;  // of the document on show; none of an own page's
  // Of the own page on show: what its buttons' addresses begin with, a secret that no other page can know,
  // and what they do.
  std::string buttons_;
  std::vector<ErrorPage::Action> actions_;
  std::string fallback_;
  bool openly_ = false;
  std::string search_;  // to load instead where there is no such host
  std::optional<ErrorPage> instead_;
  Refusal refusal_;
  std::shared_ptr<void> source_;
  unsigned blank_ = 0;       // waits to report the blank page of an unused view
  unsigned title_wait_ = 0;  // runs while a page that has come may still tell its title
  Callbacks callbacks_;
};
