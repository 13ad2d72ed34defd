#pragma once

#include <string>

class Page;

// Writes what an address holds to a file that the user names.
namespace SaveLink {

// Asks for the file, then fetches into it, as a download of the page's.
void Ask(Page& page, const std::string& uri);

}  // namespace SaveLink
