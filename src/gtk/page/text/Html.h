#pragma once

#include <string>
#include <string_view>

// Text on its way into a generated page.
namespace Html {

// Safe between tags and within a quoted attribute. Bytes that are no UTF-8 become U+FFFD.
std::string Escape(std::string_view text);

}  // namespace Html
