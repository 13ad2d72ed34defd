#include "gtk/page/PageCommands.h"

#include <algorithm>
#include <cmath>

#include "gtk/page/BrowserWorld.h"
#include "gtk/page/Page.h"
#include "platform/Failure.h"

namespace PageCommands {

namespace {

// -1 back, 1 forward.
void Go(Page& page, int step) {
  WebKitBackForwardListItem* item =
      webkit_back_forward_list_get_nth_item(webkit_web_view_get_back_forward_list(page.View()), step);
  const std::string uri = item ? TextOf(webkit_back_forward_list_item_get_uri(item)) : std::string();
  page.AskToLeave(uri, [&page, step](bool agreed) {
    if (!agreed) return;
    page.Command();
    step < 0 ? webkit_web_view_go_back(page.View()) : webkit_web_view_go_forward(page.View());
  });
}

}  // namespace

void GoBack(Page& page) {
  if (!webkit_web_view_can_go_back(page.View())) throw Failure("There is no earlier page to go back to");
  Go(page, -1);
}

void GoForward(Page& page) {
  if (!webkit_web_view_can_go_forward(page.View())) throw Failure("There is no later page to go forward to");
  Go(page, 1);
}

void RefreshPastCache(Page& page) {
  page.Command();
  if (page.Load().ShowsOwnPage()) return page.Load().Again();
  webkit_web_view_reload_bypass_cache(page.View());
}

void Zoom(Page& page, int step) {
  WebKitWebView* view = page.PresentView();
  if (!view) return;
  const ElementSettings& settings = page.World().Settings();
  const int now = static_cast<int>(std::lround(webkit_web_view_get_zoom_level(view) * 100));
  const int wanted = step == 0
                         ? settings.zoom
                         : std::clamp(now + 10 * step, ElementSettings::LeastZoom, ElementSettings::MostZoom);
  webkit_web_view_set_zoom_level(view, wanted / 100.0);
}

void SwitchInspector(Page& page) {
  WebKitWebInspector* inspector = webkit_web_view_get_inspector(page.View());
  if (webkit_web_inspector_get_web_view(inspector)) return webkit_web_inspector_close(inspector);
  webkit_settings_set_enable_developer_extras(webkit_web_view_get_settings(page.View()), TRUE);
  webkit_web_inspector_show(inspector);
}

void SwitchCaret(Page& page) {
  WebKitSettings* settings = webkit_web_view_get_settings(page.View());
  const bool on = !webkit_settings_get_enable_caret_browsing(settings);
  webkit_settings_set_enable_caret_browsing(settings, on);
  page.Say(on ? "The arrow keys move a caret through the page. F7 ends that." : "");
}

}  // namespace PageCommands
