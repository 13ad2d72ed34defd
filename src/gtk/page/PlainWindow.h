#pragma once

#include <gtk/gtk.h>

#include <functional>
#include <memory>
#include <string>

#include "gtk/page/Page.h"

// A window of the element's own outside the program: a page with its title, its address, and the way back and
// forth. It ends with its page, or when the user closes it.
class PlainWindow : private PageOwner {
 public:
  explicit PlainWindow(BrowserWorld& world);
  PlainWindow(const PlainWindow&) = delete;
  ~PlainWindow() override;

  Page& Shown() { return *page_; }
  // Loads an address and comes up.
  void Show(const std::string& uri);

 private:
  void LoadBegan() override { Update(); }
  void Progressed(long, long) override {}
  void StatusChanged(const std::string&) override {}
  void NameChanged() override { Update(); }
  void LoadEnded() override { Update(); }
  void ProcessDied() override {}
  void CloseWanted() override { End(); }
  void WindowWanted(Page*& taker, bool& cancel) override;
  bool HearsScripts() const override { return false; }
  void ReadyToShow() override;

  GtkWidget* AddButton(const char* icon, const char* name, std::function<void(WebKitWebView*)> pressed);
  void GoToTyped();
  void Update();
  void End();

  BrowserWorld& world_;
  GtkWidget *window_, *back_, *forward_, *address_, *bar_;
  std::shared_ptr<Page> page_;
  bool ended_ = false;
  Callbacks callbacks_;
};
