#pragma once

#include <webkit2/webkit2.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "gtk/base/Callbacks.h"
#include "gtk/engine/Engine.h"
#include "gtk/page/text/Address.h"
#include "platform/Events.h"

class Automation;
class Browser;
class DownloadLog;
class Page;
class PlainWindow;

// All pages of a program, in its tabs and in plain windows, above the one engine that they share.
class BrowserWorld : private DownloadListener {
 public:
  // The program's answer to a plain window that wants a further one; as NewWindow2 of the browser element.
  using WindowPolicy = std::function<void(const std::string& asker, Browser*& taker, bool& cancel)>;
  using LinkChoice = std::function<void(const std::string& address, bool in_front)>;

  // `folder` is the program's, `ground` the engine's. Everything that enters the
  // program goes through `gate`. `main_window` is the parent of dialogs and may give none.
  BrowserWorld(std::string folder, EngineGround ground, Events& gate, std::function<GtkWindow*()> main_window,
               WindowPolicy window_policy, LinkChoice link_choice);
  BrowserWorld(const BrowserWorld&) = delete;
  ~BrowserWorld() override;

  Engine& Base() { return *engine_; }
  Events& Gate() { return gate_; }
  GtkWindow* MainWindow() const { return main_window_(); }
  // For what goes on after its page: saving, printing, the end of a view. Failures are the program's.
  Callbacks& Lasting() { return callbacks_; }

  const ElementSettings& Settings() const { return engine_->Settings(); }
  // Takes new settings into use and keeps them. Fails where they can't be written; they are in use then.
  void Change(const ElementSettings& settings);
  // What people type as an address, or as a search by the settings.
  Address::Target FromTyped(std::string_view typed) const;
  // The home page's address.
  std::string Home() const;
  // True for the address of a file of the program's history.
  bool IsHistory(const std::string& uri) const;
  // The address of an own page that stands in a frame, and what it is to say. Fails where it can't be
  // written.
  std::string FrameError() const;
  std::string WriteFrameError(const std::string& html) const;

  // How many downloads run.
  int Fetching() const;
  // The list of downloads.
  DownloadLog& Log() { return *log_; }
  void ShowDownloads();
  // The dialog for the settings.
  void ShowInternetOptions();

  // A window outside the program, on no page yet and not on the screen yet. It ends by itself.
  PlainWindow& OpenPlainWindow();
  void Forget(PlainWindow& window);

  void Add(Page& page);
  // What the page's downloads bar shows and still runs goes on below another page.
  void Remove(Page& page);
  const std::vector<Page*>& Pages() const { return pages_; }
  // A page whose process holds pages of this site alone, and answers; none where there is none beside `page`.
  const Page* InProcessOf(const std::string& site, const Page& page) const;
  // Hands a page's request for a window to the program's handler of it. What that names as the taker may be
  // gone again: the user was free to act while the question was up.
  void AskProgram(const WindowPolicy& handler, const std::string& asker, Page*& taker, bool& cancel);
  // The user wants a tab of the program's for a link of a plain window.
  void ChooseLink(const std::string& address, bool in_front);
  // Whether pages of this site may open windows without a press, and that they may from now on. The latter
  // fails as Change does.
  bool MayOpenWindows(const std::string& site) const;
  void AllowWindows(const std::string& site);
  const WindowPolicy& PlainWindowPolicy() const { return window_policy_; }

  // The view ends when none of its own handlers can be running any more: the engine doesn't bear it earlier.
  void DestroyLater(WebKitWebView* view);

  // The same for a view that the user has closed. Where its process doesn't answer soon, that is ended,
  // unless other pages are `shared` in it.
  void EndView(WebKitWebView* view, bool shared);

  // Asks all pages whether they may be closed, and runs `agreed` where all may.
  void AskPages(std::function<void()> agreed);
  // Ends all pages, those of the program and those outside it.
  void ClosePages();
  // Ends all pages. Nothing of this world is used after it.
  void Shutdown();

 private:
  void AskNext(std::vector<Page*> asked, unsigned round, std::function<void()> agreed);
  void Begun(Download& download, WebKitWebView* view) override;
  void Changed(Download&) override {}
  void Forgotten(Download&) override {}

  std::string folder_;
  Events& gate_;
  std::function<GtkWindow*()> main_window_;
  WindowPolicy window_policy_;
  LinkChoice link_choice_;
  std::unique_ptr<Engine> engine_;
  std::unique_ptr<DownloadLog> log_;
  std::vector<Page*> pages_;
  std::vector<std::unique_ptr<PlainWindow>> windows_;
  std::vector<std::shared_ptr<WebKitWebView>> ending_;  // closed, and asked to let go
  std::unique_ptr<Automation> automation_;              // where the program is driven
  unsigned round_ = 0;                                  // of questions whether pages may be closed
  Callbacks callbacks_;
};
