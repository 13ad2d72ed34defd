#pragma once

#include <gtk/gtk.h>

#include "platform/scene/Window.h"

// The one entry on the task bar: the main window's frame is what the window manager lists, the relay is the
// window of the program's that stands for it. Shared by the hosts of both; each leaves when it ends.
struct TaskBarEntry {
  GtkWidget* frame = nullptr;
  Window* relay = nullptr;
};
