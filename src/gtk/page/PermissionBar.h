#pragma once

#include <webkit2/webkit2.h>

#include <string>

class Page;

// The question above a page whether it may have what it asks for.
namespace PermissionBar {

// False where the question is none for the user. Without an answer the request is turned down.
bool Ask(Page& page, const std::string& address, WebKitPermissionRequest* request);

}  // namespace PermissionBar
