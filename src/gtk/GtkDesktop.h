#pragma once

#include <functional>
#include <memory>
#include <string>

#include "gtk/base/Callbacks.h"
#include "gtk/engine/Engine.h"
#include "gtk/engine/EngineCookies.h"
#include "gtk/start/Leftovers.h"
#include "gtk/start/Request.h"
#include "gtk/window/PopupGroup.h"
#include "gtk/window/SessionEnd.h"
#include "gtk/window/TaskBarEntry.h"
#include "gtk/window/Waiting.h"
#include "platform/Desktop.h"

class BrowserWorld;
class Entry;
class ProgramFiles;

// The desktop that the program really runs on: X11 (Wayland through XWayland), GTK 3 and WebKitGTK.
class GtkDesktop : public Desktop {
 public:
  // `entry` has the program's folder, and outlives this.
  explicit GtkDesktop(Entry& entry);
  ~GtkDesktop() override;

  // Starts the program and runs the event pump until the process ends.
  int Run(const std::function<void()>& start);

  Drawing& Draws() override { return *drawing_; }
  std::string ProgramFolder() override;
  std::string CommandLine() override;
  bool Driven() const override;
  void DoEvents() override;
  [[noreturn]] void End(int status) override;
  Moment Now() override;
  std::string ShortDate(const Moment& moment) override;
  std::unique_ptr<WindowHost> MakeHost(Window& window) override;
  std::unique_ptr<Browser> MakeBrowser(Control& parent) override;
  void ClosePages() override;
  void AskPages(std::function<void()> agreed) override;
  CookieCache& Cookies() override;
  std::unique_ptr<ComboBox> MakeComboBox(Control& parent, const Place& place) override;
  std::unique_ptr<DialogHost> MakeDialog(Dialog& dialog) override;
  ScreenRect WorkArea(const Window& window) override;
  Answer MsgBox(const std::string& text, Buttons buttons, const std::string& title) override;
  std::string ShowOpen(const std::string& title, const std::string& filter) override;
  std::string ShowSave(const std::string& title, const std::string& filter) override;
  std::string ShowFolder(const std::string& title) override;
  bool MoveToTrash(const std::string& path) override;
  Bookmarks ReadBookmarks(const std::string& path) override;
  std::string AddressInShortcut(const std::string& path) override;
  bool EndPopups() override { return popups_.EndAll(); }
  InstalledApplication ChooseApplication(const std::string& title) override;
  void Shell(const std::string& command) override;
  const Registry& SystemRegistry() override;
  std::string Versions() override;
  int Fetching() override;
  void ShowDownloads() override;
  void ShowInternetOptions() override;
  int Start(int milliseconds, std::function<void()> tick) override;
  void Stop(int number) override;

 private:
  static void OnEvent(GdkEvent* event, gpointer self) noexcept;
  BrowserWorld& World();
  // The main window's frame, none before there is one.
  GtkWindow* MainFrame();
  [[noreturn]] void Die(const Failure& failure);
  // Takes off the screen what would lie over a message or keep the mouse from it.
  void ClearTheWay();
  void EndSession();
  // Decides whether there is a sandbox, by the user's answer where there can't be one; may end the process.
  void ChooseSandbox();
  EngineGround Ground();
  void TellOf(const std::vector<Leftovers::Damaged>& damaged);
  // What another start hands over.
  Reception Receive(const Request& request);

  Entry& start_;
  bool sandboxed_ = true;
  Registry registry_;
  std::unique_ptr<Drawing> drawing_;
  std::unique_ptr<ProgramFiles> files_;
  std::unique_ptr<BrowserWorld> world_;
  std::unique_ptr<EngineCookies> cookies_;
  PopupGroup popups_{Gate};
  std::shared_ptr<TaskBarEntry> entry_ = std::make_shared<TaskBarEntry>();
  Waiting waiting_;
  bool session_ended_ = false;
  SessionEnd session_;
  Callbacks callbacks_;
};
