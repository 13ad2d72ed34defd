#pragma once

#include <string>

#include "platform/favourites/Bookmarks.h"

// What other programs wrote. It may be anything: nothing of it is carried out, and every limit is kept.

// The bookmarks in an HTML file as every browser writes it; of a folder, those in its files ".url" and
// ".desktop" with those of its sub-folders. Fails, with the path and the reason, where nothing can be read
// there, where a file has no bookmarks' list, or more than 64 MiB.
Bookmarks ReadBookmarks(const std::string& path);

// The address in a ".url" or ".desktop" file (of Type=Link) in whatever encoding and order; empty where there
// is none.
std::string AddressInShortcut(const std::string& path);
