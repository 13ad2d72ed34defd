// Which process a page lives in: pages of one site share one, those of different sites never do.

#include <utility>

#include "gtk/page/BrowserWorld.h"
#include "gtk/page/HangWatch.h"
#include "gtk/page/Page.h"
#include "gtk/page/text/SiteName.h"

namespace {

// The process of the element's own pages.
constexpr const char* OwnPages = "own";

}  // namespace

bool Page::JoinSite(const std::string& uri) {
  const std::string site = SiteName::Of(uri);
  if (!view_ || site.empty() || opened_by_page_ || process_.Tied() || process_.IsFor(site)) return false;
  // What the user may want back, text that was typed or a page to look at until the next one comes, stays in
  // its view; the engine then gives the next page of another site another process.
  const bool unused = blank_ || load_.ShowsOwnPage();
  const bool on_start = EngineAddress() == world_.Home() && Address::Scheme(world_.Home()) == "file" &&
                        !webkit_web_view_can_go_back(view_);
  if (!unused && !on_start) return false;
  const Page* kin = world_.InProcessOf(site, *this);
  const bool moves = kin || (blank_ && process_.Shared());
  if (moves) MoveTo(kin);
  if (blank_) process_.Came(site);
  return moves;
}

// A page that another one opened stays in its reach as long as it is in the same view.
bool Page::Isolate() {
  if (!view_) return false;
  const bool opened = std::exchange(opened_by_page_, false), died = std::exchange(died_, false);
  if (process_.IsFor(OwnPages) || !(opened || died || blank_)) return false;
  const Page* kin = world_.InProcessOf(OwnPages, *this);
  const bool moves = opened || kin || process_.Shared();
  if (moves) MoveTo(kin, !opened);
  process_.Came(OwnPages);
  return moves;
}

void Page::MoveTo(const Page* kin, bool with_history) {
  WebKitWebViewSessionState* history = with_history ? webkit_web_view_get_session_state(view_) : nullptr;
  const double zoom = webkit_web_view_get_zoom_level(view_);
  const bool focused = gtk_widget_has_focus(GTK_WIDGET(view_));
  DropView();
  AddView(kin);
  blank_ = true;
  webkit_web_view_set_zoom_level(view_, zoom);
  if (focused) gtk_widget_grab_focus(GTK_WIDGET(view_));
  if (!history) return;
  webkit_web_view_restore_session_state(view_, history);
  webkit_web_view_session_state_unref(history);
}

void Page::TakeProcess() {
  if (!load_.ShowsOwnPage()) process_.Came(SiteName::Of(EngineAddress()));
}

void Page::LeaveProcess() {
  if (process_.Shared()) return MoveTo(nullptr);
  webkit_web_view_terminate_web_process(view_);
}

void Page::EndHere() {
  if (!process_.Shared()) return webkit_web_view_terminate_web_process(view_);
  // The page that says so gets a process of its own.
  died_ = true;
  load_.OnDied(ProcessEnd::ByUser);
}

void Page::ProcessEnded(WebKitWebProcessTerminationReason reason) {
  // Nobody waits for an answer any more.
  questions_.Forget();
  dialogs_.Dismiss();
  log_in_.Dismiss();
  EndPagesScreen();
  died_ = true;
  process_.Begin();
  AnswerClosing(true);
  if (hang_->MakesWay()) return;
  load_.OnDied(reason == WEBKIT_WEB_PROCESS_EXCEEDED_MEMORY_LIMIT ? ProcessEnd::OutOfMemory
               : reason == WEBKIT_WEB_PROCESS_TERMINATED_BY_API   ? ProcessEnd::ByUser
                                                                  : ProcessEnd::Failed);
}
