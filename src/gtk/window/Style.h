#pragma once

#include <gtk/gtk.h>

// A look of its own for one widget, over the theme's: style sheet text, for this widget and none below it.
void AddStyle(GtkWidget* widget, const char* css);
