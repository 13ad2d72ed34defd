#pragma once

class Page;

namespace PrintPage {

// The print dialog.
void Ask(Page& page);

}  // namespace PrintPage
