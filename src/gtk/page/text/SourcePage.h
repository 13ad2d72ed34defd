#pragma once

#include <string>
#include <string_view>

// The source of a page as a page of its own: escaped, its lines numbered, tags, their values and comments
// lightly coloured. `address` is the one of the page whose source this is.
std::string SourcePage(std::string_view source, std::string_view address);

// The encoding that a page names in its own head, in the first kilobyte; empty where it names none.
std::string NamedEncoding(std::string_view source);
