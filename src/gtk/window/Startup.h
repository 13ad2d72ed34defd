#pragma once

#include <gtk/gtk.h>

#include <string>

// The desktop's start-up notification.
namespace Startup {

// Brings a window before all others, as of the moment that the notification names, or else of now, and ends
// the notification. No window is none.
void ComeToFront(GtkWindow* window, const std::string& startup_id);

}  // namespace Startup
