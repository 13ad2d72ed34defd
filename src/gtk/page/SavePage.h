#pragma once

#include <string>

class Page;

// Writes a page to a file.
namespace SavePage {

// Asks for the file and its kind: the complete page in one file, or its HTML alone.
void Ask(Page& page);

}  // namespace SavePage
