#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "fakes/FakeCookieCache.h"
#include "fakes/User.h"
#include "platform/Browser.h"
#include "platform/ComboBox.h"
#include "platform/Desktop.h"
#include "platform/dialog/Controls.h"
#include "platform/scene/Drawing.h"
#include "platform/scene/Window.h"

// What FakeDesktop::End throws: nothing of the program runs after it.
struct ProcessEnded {
  int status;
};

// A page that does what the test says, and writes down what it was asked.
class FakeBrowser : public Browser {
 public:
  FakeBrowser(Control& parent, std::vector<std::string>& log, const Control*& keyboard)
      : Browser(&parent, {}), log_(log), keyboard_(keyboard) {}

  void Navigate(const std::string& address) override;
  void GoHome() override { Do("GoHome"); }
  void GoBack() override { Do("GoBack"); }
  void GoForward() override { Do("GoForward"); }
  bool CanGoBack() const override { return back; }
  bool CanGoForward() const override { return forward; }
  void Stop() override { Do("Stop"); }
  void Refresh() override { Do("Refresh"); }
  void RefreshPastCache() override { Do("RefreshPastCache"); }
  bool Busy() const override;
  std::string LocationName() const override;
  std::string LocationURL() const override;
  std::string ShownURL() const override { return LocationURL(); }
  Safety PageSafety() const override { return safety; }
  bool OutsideSandbox() const override { return outside_sandbox; }
  bool Offline() const override { return offline; }
  void SetOffline(bool value) override {
    Do(value ? "Offline" : "Online");
    offline = value;
  }
  void ExecWB(long command, long option) override;
  KeptPage Keep(KeptPage::Where where) const override;
  void Restore(const KeptPage& page) override;
  void Wake() override;
  void Offer(const std::string& text, const std::string& yes, const std::string& no,
             std::function<void(bool yes)> answered) override {
    Do("Offer " + text + "|" + yes + "|" + no);
    offer = std::move(answered);
  }
  void SetFocus() override { keyboard_ = this; }
  void OpenWindow() override { Do("OpenWindow"); }
  void ShowFind() override { Do("ShowFind"); }
  void ShowPrint() override { Do("ShowPrint"); }
  void FindAgain(bool forward) override { Do(forward ? "FindNext" : "FindPrevious"); }
  void ShowProperties() override { Do("ShowProperties"); }
  void ShowInspector() override { Do("ShowInspector"); }
  void SwitchCaret() override { Do("SwitchCaret"); }
  bool CloseTopBar() override { return std::exchange(bar, false); }
  void Zoom(int step) override { Do("Zoom " + std::to_string(step)); }

  void SwitchFullScreen() override { full_screen = !full_screen; }
  void LeaveFullScreen() override { full_screen = false; }
  void AskToClose(std::function<void(bool agreed)> answered) override { answered(agrees); }

  std::string title, url, history;
  std::function<void(bool yes)> offer;  // how the user answers
  bool secret = false;                  // nothing of it may be kept on disk
  bool asleep = false;                  // restored, and not looked at yet
  bool agrees = true;                   // to be closed
  bool full_screen = false;
  Safety safety = Safety::Unknown;
  bool busy = false, offline = false, outside_sandbox = false;
  bool back = true, forward = true;  // there is such a page
  bool bar = false;                  // one stands over the page
  bool dead = false;                 // every read fails
  bool fails = false;                // every operation fails

 private:
  void Do(const std::string& what);

  std::vector<std::string>& log_;
  const Control*& keyboard_;
};

// A field without a widget. Type() is the user at the keyboard.
class FakeComboBox : public ComboBox {
 public:
  FakeComboBox(Control& parent, const Place& place, const Control*& keyboard)
      : ComboBox(&parent, place), keyboard_(keyboard) {}

  std::string Text() const override { return text; }
  void SetText(const std::string& value) override;
  long SelStart() const override { return start; }
  long SelLength() const override { return length; }
  void Select(long from, long count) override;
  void SetFocus() override { keyboard_ = this; }
  void SetMark(Safety of_page, bool no_sandbox) override { mark = {of_page, no_sandbox}; }

  // Replaces the selection by one key's text and raises the key's events.
  void Type(const std::string& key, int key_code = 65);
  void PressEnter();
  // Picks an item of the drop-down.
  void Choose(size_t index);

  void ListChanged() override {
    if (list_changed) list_changed();
  }

  std::string text;
  long start = 0, length = 0;
  std::pair<Safety, bool> mark;
  std::function<void()> list_changed;

 private:
  const Control*& keyboard_;
};

// The outside as a test wants it: a clock that moves by hand, dialogs that answer from a list, pages that do
// as told.
class FakeDesktop : public Desktop {
 public:
  // `folder` becomes the program's folder.
  explicit FakeDesktop(std::string folder);
  ~FakeDesktop() override;

  // Moves the clock; timers tick in order.
  void Advance(int milliseconds);

  Drawing& Draws() override { return *drawing; }
  std::string ProgramFolder() override { return folder; }
  std::string CommandLine() override { return command_line; }
  bool Driven() const override { return driven; }
  void DoEvents() override;
  [[noreturn]] void End(int status) override;
  Moment Now() override { return now; }
  std::string ShortDate(const Moment& moment) override;
  std::unique_ptr<WindowHost> MakeHost(Window& window) override;
  std::unique_ptr<Browser> MakeBrowser(Control& parent) override;
  void ClosePages() override { log.push_back("ClosePages"); }
  void AskPages(std::function<void()> agreed) override {
    if (pages_agree) agreed();
  }
  FakeCookieCache& Cookies() override { return cookies; }
  std::unique_ptr<ComboBox> MakeComboBox(Control& parent, const Place& place) override;
  std::unique_ptr<DialogHost> MakeDialog(Dialog& dialog) override;
  bool EndPopups() override;
  ScreenRect WorkArea(const Window&) override { return work_area; }
  Answer MsgBox(const std::string& text, Buttons buttons, const std::string& title) override;
  std::string ShowOpen(const std::string& title, const std::string& filter) override;
  std::string ShowSave(const std::string& title, const std::string& filter) override;
  std::string ShowFolder(const std::string& title) override;
  bool MoveToTrash(const std::string& path) override;
  Bookmarks ReadBookmarks(const std::string& path) override;
  std::string AddressInShortcut(const std::string& path) override;
  InstalledApplication ChooseApplication(const std::string& title) override;
  void Shell(const std::string& command) override;
  const Registry& SystemRegistry() override { return registry; }
  std::string Versions() override { return "Marlowick 0.6a, an engine and a toolkit"; }
  int Fetching() override { return fetching; }
  void ShowDownloads() override { log.push_back("ShowDownloads"); }
  void ShowInternetOptions() override { log.push_back("ShowInternetOptions"); }
  int Start(int milliseconds, std::function<void()> tick) override;
  void Stop(int number) override;

  std::string folder, command_line;
  bool driven = false;
  Moment now = {2026, 11, 22, 20, 15, 7};
  ScreenRect work_area = {0, 0, 15360, 11520};    // 1024 x 768 pixels
  int fetching = 0;                               // files
  std::deque<Answer> answers;                     // of message boxes
  std::deque<std::string> files;                  // of file dialogs; empty text or none: cancel
  std::deque<InstalledApplication> applications;  // that the user chooses; none: cancel
  Registry registry;
  std::string no_program;                         // the command that Shell can't start
  std::deque<std::function<void(Dialog&)>> acts;  // of the user's, in modal dialogs
  bool pages_agree = true;                        // to be closed
  bool trash = true;                              // whether there is one
  std::function<void()> during_events;            // runs in each pass of the event pump
  std::vector<std::string> log;                   // what was asked, in order
  FakeCookieCache cookies;
  std::unique_ptr<Drawing> drawing;
  std::vector<Window*> popups;        // the popup windows that there are, shown or not
  const Control* keyboard = nullptr;  // the page or the field that has it
  int focused = 0;                    // how often a window took the focus
  int repaints = 0;                   // how often a window was told to compare its picture

 private:
  struct Count {
    int interval;
    long due;
    std::function<void()> tick;
  };
  std::map<int, Count> counts_;
  int last_number_ = 0;
  long time_ = 0;
};

// The window that a control stands on.
inline Window& WindowOf(Control& control) { return dynamic_cast<Window&>(*control.Root()); }

// A folder that is gone with the test.
class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  void Write(const std::string& name, const std::string& content) const;
  std::string Read(const std::string& name) const;
  std::string path;
};

// A program folder with what a start needs.
class ProgramFolder : public TemporaryFolder {
 public:
  ProgramFolder();
};
