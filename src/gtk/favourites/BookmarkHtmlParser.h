#pragma once

#include <string>

#include "platform/favourites/Bookmarks.h"

// The bookmarks in the text of an HTML file, UTF-8. `found` says whether there was a list at all. Fails where
// the parser gives up.
Bookmarks ParseBookmarkHtml(const std::string& html, bool& found);
