#pragma once

#include <webkit2/webkit2.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "gtk/base/GObjects.h"
#include "gtk/engine/ElementSettings.h"
#include "platform/Events.h"

class Page;
class PlainWindow;

// What all pages of a program share: the engine with its cookies and cache, the settings, and whether the
// program works offline.
class BrowserWorld {
 public:
  // `folder` is the program's; the engine's own data lies in "engine" below it. Everything that enters the
  // program goes through `gate`. `main_window` is the parent of dialogs and may give none.
  BrowserWorld(std::string folder, Events& gate, std::function<GtkWindow*()> main_window);
  BrowserWorld(const BrowserWorld&) = delete;
  ~BrowserWorld();

  Events& Gate() { return gate_; }
  GtkWindow* MainWindow() const { return main_window_(); }
  WebKitWebContext* Context() { return context_.get(); }
  // A view of a page without an opener, floating.
  GtkWidget* MakeView();
  WebKitSettings* ViewSettings() { return view_settings_.get(); }
  // The folder of the engine's own data.
  const std::string& EngineFolder() const { return engine_; }
  // True for the address of a file of the program's history.
  bool IsHistory(const std::string& uri) const;

  const ElementSettings& Settings() const { return settings_; }
  // Takes new settings into use and keeps them. Fails where they can't be written; they are in use then.
  void Change(const ElementSettings& settings);
  // The home page's address.
  std::string Home() const;

  bool Offline() const { return offline_; }
  void SetOffline(bool offline);

  // The dialog for the settings.
  void ShowInternetOptions();

  // A window outside the program, on no page yet and not on the screen yet. It ends by itself.
  PlainWindow& OpenPlainWindow();
  void Forget(PlainWindow& window);

  void Add(Page& page) { pages_.push_back(&page); }
  void Remove(Page& page) { std::erase(pages_, &page); }
  const std::vector<Page*>& Pages() const { return pages_; }

  // Ends all pages. Nothing of this world is used after it.
  void Shutdown();

 private:
  GtkWidget* NewView();
  void ApplyProxy();
  static void OnDownload(WebKitWebContext* context, WebKitDownload* download, gpointer self);

  std::string folder_, engine_;
  Events& gate_;
  std::function<GtkWindow*()> main_window_;
  ElementSettings settings_;
  Owned<WebKitWebContext> context_;
  Owned<WebKitSettings> view_settings_;
  Owned<GtkWidget> first_view_;  // made ahead, until the first page takes it
  std::vector<Page*> pages_;
  std::vector<std::unique_ptr<PlainWindow>> windows_;
  bool offline_ = false;
};
