// A page on the whole screen, by its own wish or the user's.

#include "gtk/page/Page.h"
#include "platform/Text.h"

void Page::ListenToFullScreen() {
  callbacks_.On<gboolean(WebKitWebView*)>(view_, "enter-fullscreen", [this](auto*) -> gboolean {
    wants_screen_ = true;
    EnterFullScreen(Asker() + " fills the whole screen. Press Escape to go back.");
    return TRUE;
  });
  callbacks_.On<gboolean(WebKitWebView*)>(view_, "leave-fullscreen", [this](auto*) -> gboolean {
    wants_screen_ = false;
    LeaveFullScreen();
    return TRUE;
  });
}

void Page::SwitchFullScreen() {
  if (screen_.On()) return LeaveFullScreen();
  EnterFullScreen("Press F11 or Escape to go back.");
}

void Page::EnterFullScreen(const std::string& notice) {
  screen_.Key = [this](const GdkEventKey& event) { return TakeScreenKey(event); };
  screen_.Closed = [this] { LeaveFullScreen(); };
  screen_.Enter(Text::ForTitleBar(Title()), notice);
  if (view_) gtk_widget_grab_focus(GTK_WIDGET(view_));
}

void Page::LeaveFullScreen() {
  if (!screen_.On()) return;
  screen_.Leave();
  if (!view_) return;
  gtk_widget_grab_focus(GTK_WIDGET(view_));
  if (!wants_screen_) return;
  wants_screen_ = false;
  webkit_web_view_evaluate_javascript(view_, "document.exitFullscreen()", -1, "marlowick", nullptr, nullptr,
                                      nullptr, nullptr);
}

bool Page::TakeScreenKey(const GdkEventKey& event) {
  // The engine ends what the page wanted of it, and tells the page, when it gets the key itself.
  if (event.keyval == GDK_KEY_Escape && wants_screen_ && !HasBars()) return false;
  if (event.keyval == GDK_KEY_Escape && CloseTopBar()) return true;
  if (event.keyval == GDK_KEY_F11) {
    // Not within the handler of the window that goes.
    callbacks_.Later([this] { LeaveFullScreen(); });
    return true;
  }
  bool used = false;
  Tell([&](PageOwner& owner) { used = owner.KeyPressed(event); });
  return used;
}
