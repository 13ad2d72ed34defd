#pragma once

#include <gtk/gtk.h>

#include <string>

#include "platform/Desktop.h"

// The desktop's ready-made dialogs, modal over what is in front of the program's windows over `main`; null:
// over none. Events are served while one stands.
namespace Dialogs {

// Closing a question without a button is a No, and so is Enter: No harms nothing.
Answer MsgBox(GtkWindow* main, const std::string& text, Buttons buttons, const std::string& title);

// `filter`: pairs of a name and patterns, all parted by "|", patterns by ";". Case doesn't matter in
// patterns, "*.*" is any name, and "*.exe" any program. The result is the chosen path; a cancel fails.
std::string ShowOpen(GtkWindow* main, const std::string& title, const std::string& filter);
std::string ShowFolder(GtkWindow* main, const std::string& title);
// A name without an extension gets the one of the filter that is chosen. Doesn't ask about a file that
// exists.
std::string ShowSave(GtkWindow* main, const std::string& title, const std::string& filter);

}  // namespace Dialogs
