#pragma once

#include <webkit2/webkit2.h>

#include <memory>
#include <optional>
#include <string>

#include "gtk/base/GObjects.h"
#include "gtk/page/text/Address.h"
#include "gtk/page/text/ErrorPage.h"

class Page;
class SourceLoad;

// The life of a page's load, from what the user typed to the last report, through fallbacks and error pages.
class PageLoad {
 public:
  // Where the button of a certificate's error page leads that goes on regardless.
  static constexpr const char* ProceedAddress = "marlowick:proceed";

  explicit PageLoad(Page& page);
  ~PageLoad();

  void Attach(WebKitWebView* view);
  void Detach(WebKitWebView* view);

  void Start(const Address::Target& target);
  void Stop();
  // The page once more, or the address that couldn't be loaded.
  void Again();
  // The page has got its title.
  void Titled();
  // A request was turned down or became something else before it started.
  void Denied();

  // From the wish for a page to the end of its load.
  bool Busy() const { return phase_ != Phase::Idle; }
  // The address of the own page that is shown or coming, or the one that the user stayed on; empty where the
  // engine knows the address.
  std::string KnownAddress() const;
  bool ShowsOwnPage() const { return !own_address_.empty(); }

  // Shows a page of the element's own for an address.
  void ShowOwn(const std::string& address, const std::string& html);
  void ShowError(const ErrorPage& error);
  // The same, once the load under way has reported that its request was turned down.
  void ShowErrorInstead(const ErrorPage& error) { instead_ = error; }
  // The user accepts the certificate that was refused; false where none was.
  bool Proceed();

 private:
  enum class Phase { Idle, Waiting, Provisional, Committed };
  struct Refusal {
    std::string uri;
    Owned<GTlsCertificate> certificate;
  };

  void Begin(const std::string& status);
  void Started();
  void Committed();
  void Finished();
  void StopWaiting();
  void StartBlank();
  bool StaysOnPage(const std::string& uri) const;
  void End();
  bool FallBack(const char* uri);
  void ReportProgress();
  void ShowSource(const std::string& uri);

  static void OnChanged(WebKitWebView*, WebKitLoadEvent event, gpointer self);
  static gboolean OnFailed(WebKitWebView*, WebKitLoadEvent event, const char* uri, GError* error,
                           gpointer self);
  static gboolean OnBadCertificate(WebKitWebView*, const char* uri, GTlsCertificate* certificate,
                                   GTlsCertificateFlags flags, gpointer self);
  static void OnDied(WebKitWebView*, WebKitWebProcessTerminationReason reason, gpointer self);
  static gboolean OnBlank(gpointer self);
  static gboolean OnTitleWait(gpointer self);
  static void OnProgress(GObject*, GParamSpec*, gpointer self);

  Page& page_;
  Phase phase_ = Phase::Idle;
  bool announced_ = false;   // the owner knows of this load
  bool more_comes_ = false;  // the failed load's last report isn't the end: another page follows
  bool own_coming_ = false;  // the load under way is an own page
  bool crash_page_ = false;  // the own page is about a dead process
  std::string own_address_;
  std::string kept_address_;
  std::string fallback_;
  std::optional<ErrorPage> instead_;
  Refusal refusal_;
  std::unique_ptr<SourceLoad> source_;
  unsigned blank_ = 0;       // waits to report the blank page of an unused view
  unsigned title_wait_ = 0;  // runs while a page that has come may still tell its title
};
