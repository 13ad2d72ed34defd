#pragma once

#include <gtk/gtk.h>

#include <string>

// A box that tells something and waits for nobody.
namespace Notice {

void Show(GtkWindow* parent, const std::string& what, const std::string& why);

}  // namespace Notice
