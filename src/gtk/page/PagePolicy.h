#pragma once

#include <webkit2/webkit2.h>

class Page;

// What becomes of a page's requests: followed, opened elsewhere, downloaded, given to another program, or
// asked about.
namespace PagePolicy {

void Attach(Page& page, WebKitWebView* view);

}  // namespace PagePolicy
