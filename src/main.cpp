#include <gtk/gtk.h>

#include <cstdio>
#include <string>

#include "core/Program.h"
#include "core/frmSplash.h"
#include "gtk/GtkDesktop.h"
#include "gtk/base/CommandLine.h"
#include "gtk/base/TemporaryHome.h"
#include "gtk/start/Entry.h"
#include "gtk/window/StillRunning.h"
#include "platform/Failure.h"

namespace {

// How long another process may take to answer before the user hears of it.
constexpr std::chrono::seconds Patience{5};

}  // namespace

int main(int argc, char** argv) {
  const CommandLine line = CommandLine::Read({argv + 1, argv + argc});
  if (line.answer) {
    std::fputs(line.answer->text.c_str(), line.answer->status == 0 ? stdout : stderr);
    return line.answer->status;
  }
  try {
    // Never on a user's own folder.
    if (line.automation) g_setenv("MARLOWICK_HOME", TemporaryHome::Make().c_str(), TRUE);
  } catch (const Failure& failure) {
    std::fprintf(stderr, "marlowick: %s\n", failure.what());
    return 1;
  }
  Entry entry(line);
  Entry::Way way = entry.Knock(Patience);
  if (way == Entry::Way::Done) return 0;
  // The program places its own windows on the screen, which only X11 allows.
  gdk_set_allowed_backends("x11");
  if (!gtk_init_check(nullptr, nullptr)) {
    const char* display = g_getenv("DISPLAY");
    std::fprintf(stderr, "marlowick: no display can be opened; DISPLAY is %s\n",
                 display ? ('"' + std::string(display) + '"').c_str() : "not set");
    return 1;
  }
  if (way == Entry::Way::NoAnswer) way = StillRunning::Wait(entry);
  if (way != Entry::Way::Run) return way == Entry::Way::Done ? 0 : 1;
  GtkDesktop desktop(entry);
  Program program(desktop);
  return desktop.Run([&program] {
#ifndef NDEBUG
    program.JoinDialogs();
#endif
    program.Start();
  });
}
