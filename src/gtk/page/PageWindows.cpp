// Windows that a page wants, and places that the user chooses for its links.

#include <utility>

#include "gtk/page/BrowserWorld.h"
#include "gtk/page/Page.h"
#include "gtk/page/PlainWindow.h"
#include "gtk/page/text/SiteName.h"

namespace {

// Windows that one page may ask for with less than a second between them.
constexpr int MostInARow = 20;

}  // namespace

GtkWidget* Page::TakeNewWindow(const Page& opener) {
  DropView();
  MakeView(&opener);
  opened_by_page_ = speaks_for_opener_ = true;
  process_.Tie();
  // Until it has a page of its own, its scripts are the opener's.
  sites_ = opener.sites_;
  return GTK_WIDGET(view_);
}

bool Page::OpenWanted(const std::string& uri) {
  if (!MayLeadTo(uri)) return false;
  Page* taker = nullptr;
  bool cancel = false;
  Tell([&](PageOwner& owner) { owner.WindowWanted(Asker(), taker, cancel); });
  if (cancel) return false;
  if (taker)
    taker->Load().Start({uri, {}, true});
  else
    world_.OpenPlainWindow().Show(uri);
  return true;
}

// A new page is loaded as the program's own wish, which the engine doesn't look at again.
bool Page::MayLeadTo(const std::string& uri) const {
  const std::string scheme = Address::Scheme(uri);
  return scheme == "http" || scheme == "https" || uri == "about:blank" ||
         (scheme == "file" && Address::Scheme(load_.DocumentAddress()) == "file");
}

void Page::OpenChosen(const std::string& uri, LinkPlace place) {
  if (!MayLeadTo(uri) || !MayAskForWindow()) return;
  if (place == LinkPlace::PlainWindow)
    world_.OpenPlainWindow().Show(uri);
  else
    Tell([&](PageOwner& owner) { owner.LinkChosen(uri, place == LinkPlace::TabInFront); });
}

// Whatever the user's choice is, a page in a loop doesn't fill the machine with windows.
bool Page::MayAskForWindow() {
  const gint64 now = g_get_monotonic_time();
  if (now - std::exchange(last_request_, now) > G_USEC_PER_SEC) requests_ = 0;
  return ++requests_ <= MostInARow;
}

GtkWidget* Page::Create(WebKitWebView* view, WebKitNavigationAction* action) {
  const std::string site = SiteName::Of(load_.DocumentAddress());
  const bool pressed = webkit_navigation_action_is_user_gesture(action);
  const std::string wanted = TextOf(webkit_uri_request_get_uri(webkit_navigation_action_get_request(action)));
  if (!pressed && !world_.MayOpenWindows(site)) {
    held_.Hold(wanted);
    return nullptr;
  }
  if (!MayAskForWindow()) return nullptr;
  // The question may take long, and the page that asks may be gone when it is answered.
  const auto opener = Share(view);
  Page* taker = nullptr;
  bool cancel = false;
  ++asking_;
  Tell([&](PageOwner& owner) { owner.WindowWanted(Asker(), taker, cancel); });
  --asking_;
  const bool gone = view_ != view;
  if (gone && asking_ == 0) world_.DestroyLater(view);
  if (cancel || gone || taker == this) return nullptr;
  if (!taker) taker = &world_.OpenPlainWindow().Shown();
  GtkWidget* window = taker->TakeNewWindow(*this);
  process_.Tie();
  if (pressed) taker->Wish(wanted);
  return window;
}
