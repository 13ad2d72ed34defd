#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// Text is UTF-8. Lengths and cuts count characters; a byte that is part of no valid character counts as one.
namespace Text {

size_t Length(std::string_view text);

// The first `count` characters; all of them where there are fewer.
std::string Left(std::string_view text, size_t count);
// What follows the first `count` characters.
std::string Behind(std::string_view text, size_t count);

// Character by character, so the length never changes.
std::string UpperCase(std::string_view text);
std::string LowerCase(std::string_view text);
bool SameWithoutCase(std::string_view a, std::string_view b);

// Orders names as the user's language does, without regard to case: of two keys the lesser one's name comes
// first.
std::string CollationKey(std::string_view name);

std::string Replace(std::string_view text, std::string_view what, std::string_view by);

// What a window's title bar bears: a page may give itself a title without end.
std::string ForTitleBar(std::string_view text);

// The text with each invalid byte replaced by U+FFFD: what a toolkit can draw.
std::string Valid(std::string_view text);

}  // namespace Text
