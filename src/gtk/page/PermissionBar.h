#pragma once

#include <webkit2/webkit2.h>

class Page;

// The question above a page whether it may have what it asks for.
namespace PermissionBar {

// False where the question is none for the user. Without an answer the request is turned down.
bool Ask(Page& page, WebKitPermissionRequest* request);

}  // namespace PermissionBar
