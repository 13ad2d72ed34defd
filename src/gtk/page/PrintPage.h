#pragma once

#include <webkit2/webkit2.h>

#include <functional>

class Page;

namespace PrintPage {

// The print dialog, which belongs to its page and lets the user go on with everything else. `ended` is called
// when it has gone, unless the page goes first.
void Ask(Page& page, WebKitPrintOperation* operation, std::function<void()> ended);

}  // namespace PrintPage
