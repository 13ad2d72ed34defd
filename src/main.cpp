#include <gtk/gtk.h>

#include <cstdio>
#include <string>

#include "core/Program.h"
#include "core/frmSplash.h"
#include "gtk/base/CommandLine.h"
#include "gtk/window/GtkDesktop.h"

int main(int argc, char** argv) {
  const CommandLine line = CommandLine::Read({argv + 1, argv + argc});
  if (line.answer) {
    std::fputs(line.answer->text.c_str(), line.answer->status == 0 ? stdout : stderr);
    return line.answer->status;
  }
  // The program places its own windows on the screen, which only X11 allows.
  gdk_set_allowed_backends("x11");
  if (!gtk_init_check(nullptr, nullptr)) {
    const char* display = g_getenv("DISPLAY");
    std::fprintf(stderr, "marlowick: no display can be opened; DISPLAY is %s\n",
                 display ? ('"' + std::string(display) + '"').c_str() : "not set");
    return 1;
  }
  GtkDesktop desktop(line.address);
  Program program(desktop);
  return desktop.Run([&program] {
#ifndef NDEBUG
    program.JoinDialogs();
#endif
    program.Start();
  });
}
