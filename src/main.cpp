#include <gtkmm/main.h>

#include <cstdio>
#include <string>

#include "core/Program.h"
#include "core/frmSplash.h"
#include "gtk/window/GtkDesktop.h"

int main(int argc, char** argv) {
  // The program places its own windows on the screen, which only X11 allows.
  gdk_set_allowed_backends("x11");
  if (!gtk_init_check(nullptr, nullptr)) {
    const char* display = g_getenv("DISPLAY");
    std::fprintf(stderr, "marlowick: no display can be opened; DISPLAY is %s\n",
                 display ? ('"' + std::string(display) + '"').c_str() : "not set");
    return 1;
  }
  Gtk::Main::init_gtkmm_internals();
  GtkDesktop desktop(argc, argv);
  Program program(desktop);
  return desktop.Run([&program] {
#ifndef NDEBUG
    program.JoinDialogs();
#endif
    program.Start();
  });
}
