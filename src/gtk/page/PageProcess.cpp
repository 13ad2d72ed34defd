// Which process a page lives in: pages of one site share one, those of different sites never do.

#include <utility>

#include "gtk/page/BrowserWorld.h"
#include "gtk/page/Page.h"
#include "gtk/page/text/SiteName.h"

namespace {

// The process of the element's own pages.
constexpr const char* OwnPages = "own";

}  // namespace

bool Page::JoinSite(const std::string& uri) {
  const std::string site = SiteName::Of(uri);
  if (!view_ || site.empty() || opened_by_page_ || process_site_ == site) return false;
  // What the user may want back, text that was typed or a page to look at until the next one comes, stays in
  // its view; the engine then gives the next page of another site another process.
  const bool unused = blank_ || load_.ShowsOwnPage();
  const bool on_start = EngineAddress() == world_.Home() && Address::Scheme(world_.Home()) == "file" &&
                        !webkit_web_view_can_go_back(view_);
  if (!unused && !on_start) return false;
  WebKitWebView* kin = world_.ViewOf(site, *this);
  if (kin) MoveTo(kin);
  if (kin || blank_) process_site_ = site;
  return kin;
}

// A page that another one opened stays in its reach as long as it is in the same view.
bool Page::Isolate() {
  if (!view_) return false;
  const bool opened = std::exchange(opened_by_page_, false), died = std::exchange(died_, false);
  if (process_site_ == OwnPages || !(opened || died || blank_)) return false;
  WebKitWebView* kin = world_.ViewOf(OwnPages, *this);
  // A process that is nobody else's yet.
  const bool own_already = !opened && !kin && (died || !shared_);
  if (!own_already) MoveTo(kin, !opened);
  process_site_ = OwnPages;
  return !own_already;
}

void Page::MoveTo(WebKitWebView* kin, bool with_history) {
  WebKitWebViewSessionState* history = with_history ? webkit_web_view_get_session_state(view_) : nullptr;
  const double zoom = webkit_web_view_get_zoom_level(view_);
  const bool focused = gtk_widget_has_focus(GTK_WIDGET(view_));
  DropView();
  AddView(kin);
  blank_ = true;
  shared_ = kin;
  webkit_web_view_set_zoom_level(view_, zoom);
  if (focused) gtk_widget_grab_focus(GTK_WIDGET(view_));
  if (!history) return;
  webkit_web_view_restore_session_state(view_, history);
  webkit_web_view_session_state_unref(history);
}

// A page that has opened others, or was opened by one, may stay in its process with any site.
void Page::TakeProcess() {
  if (load_.ShowsOwnPage()) return;
  process_site_ = opened_by_page_ || has_opened_ ? std::string() : SiteName::Of(EngineAddress());
}
