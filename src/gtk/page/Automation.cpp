#include "gtk/page/Automation.h"

#include <cstdlib>
#include <string>
#include <utility>

#include "gtk/page/BrowserWorld.h"
#include "gtk/page/Page.h"
#include "gtk/page/PlainWindow.h"

namespace {

// What tools ask for as the browser's name, and are told.
void TellName(WebKitAutomationSession* session) {
  WebKitApplicationInfo* info = webkit_application_info_new();
  const std::string version = MARLOWICK_VERSION;
  char* rest = nullptr;
  const auto major = static_cast<guint64>(std::strtoul(version.c_str(), &rest, 10));
  const auto minor = *rest == '.' ? static_cast<guint64>(std::strtoul(rest + 1, nullptr, 10)) : 0;
  webkit_application_info_set_name(info, "Marlowick");
  webkit_application_info_set_version(info, major, minor, 0);
  webkit_automation_session_set_application_info(session, info);
  webkit_application_info_unref(info);
}

}  // namespace

Automation::Automation(BrowserWorld& world)
    : world_(world),
      callbacks_([&world](const std::function<void()>& handler) { world.Gate().Run(handler); }) {
  callbacks_.On<void(WebKitWebContext*, WebKitAutomationSession*)>(
      world.Base().Context(), "automation-started", [this](auto*, auto* session) { Begin(session); });
}

void Automation::Begin(WebKitAutomationSession* session) {
  TellName(session);
  first_taken_ = false;
  for (const bool window : {true, false})
    callbacks_.On<WebKitWebView*(WebKitAutomationSession*)>(
        session, window ? "create-web-view::window" : "create-web-view::tab",
        [this, window](auto*) { return MakeView(window); });
}

WebKitWebView* Automation::MakeView(bool window) {
  if (!std::exchange(first_taken_, true) && !world_.Pages().empty()) return world_.Pages().front()->View();
  if (window) {
    PlainWindow& plain = world_.OpenPlainWindow();
    plain.Show("about:blank");
    return plain.Shown().View();
  }
  Page* taker = nullptr;
  bool cancel = false;
  world_.AskProgram(world_.PlainWindowPolicy(), {}, taker, cancel);
  return taker ? taker->View() : nullptr;
}
