#pragma once

#include <string>
#include <string_view>

// What both the program and the desktop's side know of addresses.
namespace WebAddress {

// True for what is fetched from a site: http: and https:.
bool IsOfSite(std::string_view address);

// The address without the user's name and password before its host, which belong neither on the screen nor
// into a file.
std::string WithoutUser(std::string_view address);

// True for what people type as "name:password@site": it begins like a scheme, and is none.
bool BeginsWithUser(std::string_view typed);

// Something in the text may be written from the right, and so stand elsewhere than where it is. A guess that
// never misses one.
bool MayTurnDirection(std::string_view text);

// A page's title with its address in brackets. Where the title is written from the right, or has characters
// that turn the direction, neither reaches into the other.
std::string Beside(std::string_view title, std::string_view address);

// Pasted or dropped text on one line: the lines of an address that was broken come together, words keep a
// blank between them.
std::string OneLine(std::string_view text);

}  // namespace WebAddress
