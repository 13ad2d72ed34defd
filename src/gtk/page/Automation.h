#pragma once

#include <webkit2/webkit2.h>

#include "gtk/base/Callbacks.h"

class BrowserWorld;

// Lets a tool drive the program's pages, by the engine's own protocol: tells it whom it drives, and makes the
// tabs and windows that it wants.
class Automation {
 public:
  // For a world whose engine is driven.
  explicit Automation(BrowserWorld& world);
  Automation(const Automation&) = delete;

 private:
  void Begin(WebKitAutomationSession* session);
  // None where it can't be made.
  WebKitWebView* MakeView(bool window);

  BrowserWorld& world_;
  bool first_taken_ = false;  // the session has the page that the program began with
  Callbacks callbacks_;
};
