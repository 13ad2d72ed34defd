// A page on the whole screen, by its own wish or the user's.

#include <utility>

#include "gtk/page/Page.h"
#include "platform/Text.h"

// The engine itself looks at the state of the window that the view is in, so both signals are left to it: a
// view that came here fills a window that does, and one that is back doesn't, which ends the page's wish.
void Page::ListenToFullScreen() {
  callbacks_.On<gboolean(WebKitWebView*)>(view_, "enter-fullscreen", [this](auto*) -> gboolean {
    wants_screen_ = true;
    EnterFullScreen(Asker() + " fills the whole screen. Press Escape to go back.");
    return FALSE;
  });
  callbacks_.On<gboolean(WebKitWebView*)>(view_, "leave-fullscreen", [this](auto*) -> gboolean {
    EndPagesScreen();
    return FALSE;
  });
}

// What the user wants stays.
void Page::EndPagesScreen() {
  if (std::exchange(wants_screen_, false) && !user_wants_screen_) LeaveFullScreen();
}

void Page::SwitchFullScreen() {
  if (screen_.On()) return LeaveFullScreen();
  user_wants_screen_ = true;
  EnterFullScreen("Press F11 or Escape to go back.");
}

void Page::EnterFullScreen(const std::string& notice) {
  screen_.Key = [this](const GdkEventKey& event) { return TakeScreenKey(event); };
  screen_.Closed = [this] { LeaveFullScreen(); };
  screen_.Enter(Text::ForTitleBar(Title()), notice);
  if (view_) gtk_widget_grab_focus(GTK_WIDGET(view_));
}

// Whether the page's process answers or not, the user is back; the page is told.
void Page::LeaveFullScreen() {
  user_wants_screen_ = false;
  const bool page_wants = std::exchange(wants_screen_, false);
  if (!screen_.On()) return;
  screen_.Leave();
  if (view_) gtk_widget_grab_focus(GTK_WIDGET(view_));
  if (page_wants) TellScreenEnds();
}

void Page::LeaveTopScreen() {
  if (!user_wants_screen_ || !wants_screen_) return LeaveFullScreen();
  wants_screen_ = false;
  TellScreenEnds();
}

void Page::TellScreenEnds() {
  if (view_)
    webkit_web_view_evaluate_javascript(view_, "document.exitFullscreen()", -1, "marlowick", nullptr, nullptr,
                                        nullptr, nullptr);
}

bool Page::TakeScreenKey(const GdkEventKey& event) {
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
