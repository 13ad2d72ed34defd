#pragma once

#include <webkit2/webkit2.h>

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include "gtk/base/Callbacks.h"
#include "gtk/base/GObjects.h"
#include "gtk/page/DownloadBar.h"
#include "gtk/page/FullScreen.h"
#include "gtk/page/HeldWindows.h"
#include "gtk/page/LogIn.h"
#include "gtk/page/Questions.h"
#include "gtk/page/ReturnedKeys.h"
#include "gtk/page/ScriptDialogs.h"
#include "gtk/page/text/PageLoad.h"
#include "gtk/page/text/SiteProcess.h"
#include "gtk/page/text/Sites.h"
#include "platform/Safety.h"

class Browser;
class BrowserWorld;
class FindBar;
class HangWatch;
class Page;

// Where the user wants a link. Here: as the page has it.
enum class LinkPlace { Here, TabBehind, TabInFront, PlainWindow };

// Whoever shows a page: a tab of the program, or a plain window.
class PageOwner {
 public:
  virtual ~PageOwner() = default;
  virtual void LoadBegan() = 0;
  // Of 10000; -1 of 0 at the end.
  virtual void Progressed(long progress, long maximum) = 0;
  virtual void StatusChanged(const std::string& text) = 0;
  // Title or address.
  virtual void NameChanged() = 0;
  virtual void LoadEnded() = 0;
  // The user has pressed, typed or scrolled in the page.
  virtual void UserActed() {}
  // A tool that drives the program goes on in the page.
  virtual void Wanted() = 0;
  // The process behind the page has died; the page goes on with an own page that says so.
  virtual void ProcessDied() = 0;
  // A page that another page opened wants to be closed.
  virtual void CloseWanted() = 0;
  // The page wants a new window: as NewWindow2 of the browser element.
  virtual void WindowWanted(const std::string& asker, Page*& taker, bool& cancel) = 0;
  // The user has chosen a tab for a link: behind the page on show, or in front.
  virtual void LinkChosen(const std::string& address, bool in_front) = 0;
  // A key while the page fills the screen. True: it was used.
  virtual bool KeyPressed(const GdkEventKey& event) = 0;
  // The page is to be closed and asks the user about it.
  virtual void QuestionUp() = 0;
  // The new window that this page has taken may be shown now.
  virtual void ReadyToShow() = 0;
  // The program's element where the owner is one.
  virtual const Browser* Element() const { return nullptr; }
};

// One web page with all that belongs to it: the view, its load, and the bars above and below it. It lives on
// while one of its own handlers runs, even when its owner has closed it within; and a handler that fails ends
// in an error page, not in the end of the program.
class Page : public std::enable_shared_from_this<Page>, private LoadView, private LoadListener {
 public:
  static std::shared_ptr<Page> Open(BrowserWorld& world, PageOwner& owner);
  Page(const Page&) = delete;
  ~Page() override;

  // Asks whether it may be closed; as AskToClose of the browser element. Asked again meanwhile, it answers
  // the last who asked.
  void AskToClose(std::function<void(bool agreed)> answered);
  // The engine asks a page that is left only where the next one, of this address, comes into its process.
  bool LeavesUnasked(const std::string& uri) const;
  // Asks it in the engine's place. Answered with no as well where the user wants something else meanwhile.
  void AskToLeave(const std::string& uri, std::function<void(bool agreed)> answered);
  // The same for a link that the user has pressed; one within a frame may leave the page where it is.
  void AskToFollow(const std::string& uri, std::function<void(bool agreed)> answered);
  // The owner leaves: the widget goes, and nothing is told any more.
  void Close();
  bool Closed() const { return !view_ && !quit_; }

  BrowserWorld& World() { return world_; }
  // The bars and the view, in one widget.
  GtkWidget* Widget() { return place_.get(); }
  // Fails when the page is closed. A page that has closed itself gets a new view.
  WebKitWebView* View();
  // The same, but none where there is none now.
  WebKitWebView* PresentView() const { return view_; }
  PageLoad& Load() { return load_; }
  FindBar& Find();
  DownloadBar& Downloads() { return downloads_; }
  // Has the engine keep back what the user wants to be asked about, as far as that isn't let through now.
  void Guard();
  // Such a page is on its way while the engine isn't ready yet to keep it back, or can't be.
  bool ComesTooEarly(const std::string& uri) const;
  // Tells when that has been found out.
  void AwaitGuard(std::function<void()> known);
  // For handlers that belong to this page, and for those of what belongs to it.
  Callbacks& Calls() { return callbacks_; }
  Callbacks::Runner Runner();

  // As users know them: the address being loaded from its start on; what stands for a missing title.
  std::string Address() const { return view_ ? load_.Address() : last_address_; }
  std::string Title() const;
  // The address as people read it, without a user's name.
  std::string ShownAddress() const;
  // What vouches for the page of Address().
  Safety Security() const;

  // Makes this page the one that another page asked for: related to it, and empty.
  GtkWidget* TakeNewWindow(const Page& opener);
  // Empty as at first, with no page before it.
  void Renew();
  // The user has let a window through that the page wanted: it goes the way of one that a press asked for.
  // False where that way ends with no window.
  bool OpenWanted(const std::string& uri);
  // The user has chosen another place for one of the page's links. Goes nowhere where a page of this kind
  // couldn't lead to the address either.
  void OpenChosen(const std::string& uri, LinkPlace place);
  bool MayLeadTo(const std::string& uri) const;
  // Keeps a window back that nobody has pressed for, and tells the user.
  void HoldWindow(const std::string& uri) { held_.Hold(uri); }

  // Has the frame that wants `wanted`, or bears the name, show another address. Needs the page's scripts.
  void ShowInFrame(const std::string& wanted, const std::string& name, const std::string& instead);

  // The print dialog.
  void Print();
  // A further bar among the questions, until it goes. The page takes it over.
  void AddBar(GtkWidget* bar) { gtk_box_pack_start(GTK_BOX(bars_.get()), bar, FALSE, TRUE, 0); }
  Questions& Asks() { return questions_; }
  // The site of the page on show, as the engine knows it, whatever is being loaded; empty where it has none.
  const std::string& Site() const { return sites_.Site(); }
  // Nothing of a page has been shown yet.
  bool Blank() const { return blank_; }
  // A script waits for the user's answer.
  bool ScriptAsks() const { return dialogs_.Asking(); }
  // The user wants this address: what comes of it needs no question.
  void Wish(const std::string& uri) { wished_.insert(uri.substr(0, uri.find('#'))); }
  // A download begins on this page: whoever presses for one gets it, and what else a page wants to save is
  // asked about, once for all of it.
  void AskToDownload(Download& download);
  // The process behind the page has taken what the user wants of it.
  void Taken();
  // True once for each press of the user's on the page, or key: what the page may set going by that is
  // bounded.
  bool TakePress() { return std::exchange(taken_press_, presses_) != presses_; }
  // Who asks, to stand before "wants to": see Sites.
  std::string Asker() const { return sites_.Asker(); }
  // A document of the page's comes from a server: its own, or one of its frames'.
  void DocumentAnswered(const std::string& uri, bool main);

  // Something stands over the page that Escape closes first.
  bool HasBars() const;
  // Closes what stands over the page: the find bar, else the newest of the others, for which that is a no,
  // else the whole screen. False: there is none.
  bool CloseTopBar();
  // Onto the whole screen, or back.
  void SwitchFullScreen();
  void LeaveFullScreen();
  // In the status line, until there is something newer.
  void Say(const std::string& text) { LoadStatusChanged(text); }

  // The window that dialogs about this page belong to; may be none.
  GtkWindow* Window();

  // Nothing is told any more, and what the page does ends: for those who opened it, it is closed. Its address
  // and title stay.
  void Quit();
  // The user goes back, forward, or asks for the page again: what the engine does next is the user's wish.
  void Command() { commanded_at_ = g_get_monotonic_time(); }
  bool Commanded() const { return g_get_monotonic_time() - commanded_at_ < CommandHolds; }
  const SiteProcess& Process() const { return process_; }
  // Before a page of this address comes: goes where pages of its site are already. True as with Isolate.
  bool JoinSite(const std::string& uri) override;
  // Its process doesn't answer: ended where it is this page's alone, and left to the others where it isn't.
  void LeaveProcess();
  // The same, and the page says that it was ended.
  void EndHere();
  const Browser* Element() const { return owner_ ? owner_->Element() : nullptr; }

 private:
  static constexpr gint64 CommandHolds = G_USEC_PER_SEC;

  Page(BrowserWorld& world, PageOwner& owner);

  // Runs where there still is an owner.
  template <class Function>
  void Tell(Function function) {
    if (owner_) function(*owner_);
  }
  void RunHandler(const std::function<void()>& handler);

  bool Gone() const override { return Closed(); }
  std::string EngineAddress() const override;
  std::string EngineTitle() const override;
  bool EngineLoads() const override;
  bool WorksOffline() const override;
  std::optional<std::string> BadProxy() const override;
  bool PromisedHttps(const std::string& host) const override;
  bool AsksBeforePlain() const override;
  void LetPlainThrough(bool through) override;
  void LoadAddress(const std::string& uri) override;
  void LoadHtml(const std::string& html, const std::string& address) override;
  bool Isolate() override;
  void Reload() override;
  void StopLoading() override;
  void Trust(GTlsCertificate* certificate, const std::string& host) override;
  bool Trusts(const std::string& host) const override;
  std::shared_ptr<void> ReadSource(const std::string& uri, bool shown,
                                   std::function<void(const std::string&)> done,
                                   std::function<void(const ErrorPage&)> failed) override;

  void LoadWanted() override;
  void LoadBegan() override;
  void LoadCommitted() override;
  void LoadArrived() override;
  void LoadEnded() override;
  void Progressed(long progress, long maximum) override;
  void LoadStatusChanged(const std::string& text) override;
  void ProcessDied() override;

  // A bar above all, for as long as the page lives: a tool is at work.
  void SayDriven();
  void MakeView(const Page* kin);
  void AddView(const Page* kin);
  void ListenToLoad();
  void ListenToPage();
  // Goes on in a view of the process of another, or of a process of its own; the one before isn't ended where
  // others live in it.
  void MoveTo(const Page* kin, bool with_history = true);
  // A page has come: whose process this is.
  void TakeProcess();
  void LetGoOfView();
  void DropView();
  void ShowStatus();

  void ProcessEnded(WebKitWebProcessTerminationReason reason);
  void ShowPrint(WebKitPrintOperation* operation);
  void AskToPrint(WebKitPrintOperation* operation);
  bool AskToLogIn(WebKitAuthenticationRequest* request);
  // What stands above the page besides the questions.
  size_t OtherBars() const;
  void TakeTitle();
  void TakeHover(WebKitHitTestResult* hit);
  bool Paint(cairo_t* cairo);
  GtkWidget* Create(WebKitWebView* view, WebKitNavigationAction* action);
  bool MayAskForWindow();
  void ListenToFullScreen();
  void EnterFullScreen(const std::string& notice);
  void EndPagesScreen();
  // The page's own wish first, then the user's.
  void LeaveTopScreen();
  void TellScreenEnds();
  bool TakeScreenKey(const GdkEventKey& event);
  void AnswerClosing(bool agreed);
  void BePatient(unsigned milliseconds);
  void GoElsewhere();
  void HearOut();
  void TakeClose();
  void TakeDialog(WebKitScriptDialog* dialog);

  BrowserWorld& world_;
  PageOwner* owner_;
  // From the top: what the page wants, a script's question, the view, downloads and finding.
  Owned<GtkWidget> place_, box_, bars_, scripts_, feet_;
  FullScreen screen_;
  WebKitWebView* view_ = nullptr;
  Sites sites_;
  PageLoad load_;
  Questions questions_;
  ScriptDialogs dialogs_;
  LogIn log_in_;
  std::unique_ptr<HangWatch> hang_;
  ReturnedKeys keys_;
  DownloadBar downloads_;
  HeldWindows held_;
  std::unique_ptr<FindBar> find_;
  std::string load_status_, hovered_, shown_status_;
  unsigned presses_ = 0, taken_press_ = 0, presses_before_ = 0;
  std::set<std::string> wished_;  // addresses, until the page is left
  bool may_download_ = false;     // until the page is left
  bool printing_ = false;
  gint64 last_request_ = 0;              // for a window: when, in microseconds
  int requests_ = 0;                     // of those in a row
  int asking_ = 0;                       // questions about new windows that run now
  gint64 commanded_at_ = -CommandHolds;  // microseconds
  bool wants_screen_ = false;            // the page itself wants to fill it
  bool user_wants_screen_ = false;       // the user wants it to
  std::function<void(bool)> closing_;    // who waits to hear whether the page may be closed
  bool leaving_ = false;                 // it is asked about, and no more than left
  bool left_anyway_ = false;             // asked already, and the user wants another page all the same
  unsigned closings_ = 0;                // how often it was asked so far
  unsigned patience_ = 0;                // runs while the page may still answer that
  bool blank_ = true;                    // the view has shown nothing yet
  bool opened_by_page_ = false;
  bool speaks_for_opener_ = false;  // whose scripts are the new window's until a page comes into it
  bool plain_through_ = false;      // the load under way may come without encryption
  bool died_ = false;               // its process, and nothing has come since
  SiteProcess process_;
  bool quit_ = false;
  std::string last_address_, last_title_;  // of a page that has closed itself
  Callbacks callbacks_;
};
