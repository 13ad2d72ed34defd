#pragma once

#include <functional>
#include <string>

class Page;

namespace PrintPage {

// The print dialog.
void Ask(Page& page);

// Prints to a PDF file without a question. `done` hears an empty text, or what failed.
void ToFile(Page& page, const std::string& path, std::function<void(const std::string& failure)> done);

}  // namespace PrintPage
