#pragma once

#include <functional>
#include <string>

#include "platform/KeptPage.h"
#include "platform/Safety.h"
#include "platform/scene/Scene.h"

// The browser element: one page. A control of the scene whose place a real page fills.
//
// A read of Busy, LocationName or LocationURL fails when the process behind the page has died during a load
// that hasn't ended; any operation may then fail.
class Browser : public Control {
 public:
  // Commands and options of ExecWB.
  static constexpr long SaveAs = 4, Cut = 11, Copy = 12, Paste = 13, SelectAll = 17;
  static constexpr long DoDefault = 0, DontPromptUser = 2;

  using Control::Control;

  // Takes what people type: a full address, an absolute local path, a bare host with or without port and
  // path; empty is "about:blank". What can't be loaded ends in an error page whose LocationURL is that
  // address.
  virtual void Navigate(const std::string& address) = 0;
  virtual void GoHome() = 0;
  virtual void GoBack() = 0;     // fails where there is no earlier page
  virtual void GoForward() = 0;  // fails where there is no later page
  virtual bool CanGoBack() const = 0;
  virtual bool CanGoForward() const = 0;
  virtual void Stop() = 0;
  virtual void Refresh() = 0;
  virtual void RefreshPastCache() = 0;  // as Refresh, and nothing comes from the cache

  virtual bool Busy() const = 0;
  virtual std::string LocationName() const = 0;  // the page's title
  // Of the page that is really on show, or of the one that the user has asked for; never with a user's name
  // or password. Empty before the first page.
  virtual std::string LocationURL() const = 0;

  // LocationURL as people read it: an international name of a site is in its own script where it can't be
  // mistaken for another one.
  virtual std::string ShownURL() const = 0;
  // What vouches for the page of LocationURL.
  virtual Safety PageSafety() const = 0;
  // True: pages run without a sandbox, on the user's own wish.
  virtual bool OutsideSandbox() const = 0;

  // True: no request of any element leaves this machine; local files go on working.
  virtual bool Offline() const = 0;
  virtual void SetOffline(bool offline) = 0;

  // Fails for a command it doesn't know. SaveAs asks for a file; the others act on the page and its focused
  // field.
  virtual void ExecWB(long command, long option) = 0;

  // The page as it can be made again, also one whose process has died. Fails where nothing may be kept of it.
  virtual KeptPage Keep(KeptPage::Where where) const = 0;
  // Becomes a page that was kept, which shows its title and address at once and is loaded by Wake. Takes any
  // bytes for its history; what can't be made of them is left out.
  virtual void Restore(const KeptPage& page) = 0;
  // The user looks at it: loads what was restored and isn't loaded yet.
  virtual void Wake() = 0;

  // Asks the user something in a bar above the page, which stays whatever page comes, and holds nothing up.
  // "_" before a mnemonic's letter. The answer comes once, a "no" at the latest with the element's end.
  virtual void Offer(const std::string& text, const std::string& yes, const std::string& no,
                     std::function<void(bool yes)> answered) = 0;

  // Gives the page the keyboard.
  virtual void SetFocus() = 0;

  // What users of any browser expect, in dialogs and windows of the element's own.
  virtual void OpenWindow() = 0;  // a plain window outside the program on the current page
  virtual void ShowFind() = 0;
  // Goes on to the next or the previous match of what was looked for last; asks for it where there is none.
  virtual void FindAgain(bool forward) = 0;
  virtual void ShowPrint() = 0;
  virtual void ShowProperties() = 0;
  virtual void ShowInspector() = 0;
  // Turns the caret on or off that the arrow keys move through a page's text; in all elements.
  virtual void SwitchCaret() = 0;
  // Closes what stands over the page: the find bar, else the newest of the other bars, which takes it for a
  // no. False: there is none.
  virtual bool CloseTopBar() = 0;

  // The page's size: 1 larger, -1 smaller, 0 as it was made.
  virtual void Zoom(int step) = 0;

  // The page alone on the whole of its monitor, or back; back.
  virtual void SwitchFullScreen() = 0;
  virtual void LeaveFullScreen() = 0;

  // Asks the page whether it may be closed, and tells, once: at once where nothing is to be asked, and never
  // where the page has gone before. A page that doesn't answer is not waited for.
  virtual void AskToClose(std::function<void(bool agreed)> answered) = 0;

  // Events. Index and array are the program's business: it wires each element when it is made.
  std::function<void()> DocumentComplete, DownloadBegin, OnQuit, TitleChange;
  std::function<void()> Chosen;  // a tool that drives the program goes on in this page
  std::function<void()> Used;    // the user has pressed, typed or scrolled in the page
  std::function<void(long progress, long maximum)> ProgressChange;  // 0 hides; -1 of 0 at the end of a load
  std::function<void(const std::string& text)> StatusTextChange;
  // A page wants a new window. `taker` may name the element that is to take it, `cancel` forbids it; with
  // neither the element opens a plain window of its own. `asker` names the site that wants it.
  std::function<void(const std::string& asker, Browser*& taker, bool& cancel)> NewWindow2;
  // A page that is to be closed has a question: it wants to be seen.
  std::function<void()> QuestionUp;
  // The user has chosen a tab of its own for a link: behind the page on show, or in front.
  std::function<void(const std::string& address, bool in_front)> LinkChosen;

 protected:
  void Describe(DrawItem& item) override { item.Foreign = true; }
};
