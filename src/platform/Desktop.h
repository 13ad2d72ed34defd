#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/Events.h"
#include "platform/Registry.h"
#include "platform/Timer.h"
#include "platform/dialog/Dialog.h"
#include "platform/favourites/Bookmarks.h"
#include "platform/scene/Window.h"

class Browser;
class ComboBox;
class CookieCache;

// Date and time of day by the system's clock and zone.
struct Moment {
  int Year = 0, Month = 0, Day = 0, Hour = 0, Minute = 0, Second = 0;
};

struct ScreenRect {
  Twips Left = 0, Top = 0, Right = 0, Bottom = 0;
};

struct InstalledApplication {
  std::string Name;
  std::string Command;  // one that Shell can start as it stands
};

enum class Buttons { Ok, YesNo };
enum class Answer { Ok, Yes, No };

// What the program asks of the outside. Implemented by gtk/window, and by the fakes of the tests.
class Desktop : public Clock, public WindowSystem, public DialogMaker {
 public:
  // Every event of the outside goes through this gate.
  Events Gate;
  // The system wants the process to end, as at a log-out, and nobody is there to answer a question.
  std::function<void()> SessionEnding;

  // Another start of the program, with the same folder, hands its address over, as it would be on the command
  // line; without one the program is only to come to the front, which the desktop sees to. False: the program
  // goes down and takes nothing any more.
  std::function<bool(const std::string& address)> HandedOver;

  // A window of the browser element's own wants a further one; as NewWindow2 of an element.
  std::function<void(const std::string& asker, Browser*& taker, bool& cancel)> NewWindow2;
  // The user has chosen a tab for a link of such a window; as LinkChosen of an element.
  std::function<void(const std::string& address, bool in_front)> LinkChosen;

  // The program's folder, installed from the delivered files where it wasn't there. Fails where that can't be
  // done.
  virtual std::string ProgramFolder() = 0;
  // The command line behind the program's name, its arguments joined by blanks.
  virtual std::string CommandLine() = 0;

  // True: a tool drives this run in place of a user, and nobody is there to answer a question.
  virtual bool Driven() const = 0;

  // One pass of the event pump: handles what is waiting, and doesn't wait for more. Keys and presses come
  // behind it.
  virtual void DoEvents() = 0;
  // Ends the process. Nothing of the program runs after it.
  [[noreturn]] virtual void End(int status) = 0;

  virtual Moment Now() = 0;
  // The date in the system's short form.
  virtual std::string ShortDate(const Moment& moment) = 0;

  virtual std::unique_ptr<Browser> MakeBrowser(Control& parent) = 0;
  // Ends the pages of all browser elements, and the plain windows that they opened. For the program's end:
  // operations of the elements fail from then on.
  virtual void ClosePages() = 0;
  // Asks all of them whether they may be closed, as AskToClose of an element; runs `agreed` where all may.
  virtual void AskPages(std::function<void()> agreed) = 0;
  virtual CookieCache& Cookies() = 0;
  virtual std::unique_ptr<ComboBox> MakeComboBox(Control& parent, const Place& place) = 0;

  // The part of the screen that panels leave free, on the monitor where the window is. Twips.
  virtual ScreenRect WorkArea(const Window& window) = 0;

  // Ends the open popup windows, as a press elsewhere does. False: there was none.
  virtual bool EndPopups() = 0;

  // A modal box over the program's windows, with its text and title as they stand.
  virtual Answer MsgBox(const std::string& text, Buttons buttons, const std::string& title) = 0;

  // The desktop's file dialogs. `filter` is pairs of a name and patterns, all parted by "|", patterns by ";".
  // The result is the chosen path; a cancel fails.
  virtual std::string ShowOpen(const std::string& title, const std::string& filter) = 0;
  virtual std::string ShowSave(const std::string& title, const std::string& filter) = 0;
  virtual std::string ShowFolder(const std::string& title) = 0;

  // Puts a file or folder into the trash. False: there is none for it. Fails where there is one and it can't.
  virtual bool MoveToTrash(const std::string& path) = 0;
  // What other programs wrote: a file of bookmarks or a folder of shortcuts, and the address in one shortcut,
  // empty where there is none. The first fails where nothing can be read.
  virtual Bookmarks ReadBookmarks(const std::string& path) = 0;
  virtual std::string AddressInShortcut(const std::string& path) = 0;

  // The desktop's list of installed applications; a cancel fails.
  virtual InstalledApplication ChooseApplication(const std::string& title) = 0;

  // Starts a program and doesn't wait: the one whose path the line is as it stands, or else a command with
  // arguments. Fails where it can't be started.
  virtual void Shell(const std::string& command) = 0;

  // What is known about the machine.
  virtual const Registry& SystemRegistry() = 0;
  // The program, the engine and the toolkit with their versions, on one line.
  virtual std::string Versions() = 0;

  // How many files are being fetched.
  virtual int Fetching() = 0;
  // The list of downloads, in a dialog that isn't modal.
  virtual void ShowDownloads() = 0;

  // The browser element's own settings, in a dialog that isn't modal.
  virtual void ShowInternetOptions() = 0;
};
