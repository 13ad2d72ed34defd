#pragma once

#include <webkit2/webkit2.h>

class Page;

// The page's own menu, on the right button: what browsers have there, for the link, the picture, the
// selection or the page that was pressed.
namespace PageMenu {

void Attach(Page& page, WebKitWebView* view);

}  // namespace PageMenu
