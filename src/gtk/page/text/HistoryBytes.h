#pragma once

#include <string>

#include "platform/KeptPage.h"

// The bytes in which the engine writes down a page's history with the places in it.
namespace HistoryBytes {

// What of it may be kept, and can be given back to the engine: nothing that was sent with a form, no own
// pages, and on disk no address with a user's name or password. Bytes that aren't what this engine writes, or
// are too many, make an empty text; so does a history that tells no more than the page's address. Takes any
// bytes.
std::string Clean(const std::string& bytes, const std::string& address, KeptPage::Where where);

}  // namespace HistoryBytes
