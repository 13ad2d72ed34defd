#pragma once

#include <gtk/gtk.h>

#include <string>

#include "platform/Desktop.h"
#include "platform/Events.h"

// The installed applications by name and icon, modal over a window. Events are served while it stands. A
// cancel fails.
namespace ApplicationChooser {

InstalledApplication Choose(GtkWindow* owner, const std::string& title, Events& gate);

}  // namespace ApplicationChooser
