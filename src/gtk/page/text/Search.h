#pragma once

#include <string>
#include <string_view>

#include "gtk/page/text/Address.h"

// What people type to look for something.
namespace Search {

// What stands for the words in an address that searches.
constexpr std::string_view Words = "%s";

struct Engines {
  std::string address;   // searches for the words; empty: nothing does
  std::string keywords;  // further ones: a keyword, its address, and so on, with blanks between
};

// An address as Address::FromTyped makes it. What begins with a question mark or a keyword, and words that
// are no address, becomes the address of a search. A name that may be a host's or a word, and what can be
// neither, comes with the search that may take its place.
Address::Target FromTyped(std::string_view typed, const Engines& engines);

// Whether these can be used; in `wrong` the first part that can't.
bool Fit(const Engines& engines, std::string& wrong);

}  // namespace Search
