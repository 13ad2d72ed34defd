#pragma once

#include <gio/gdesktopappinfo.h>

#include <string>
#include <vector>

#include "gtk/base/GObjects.h"

// The programs that the desktop knows by name.
namespace Applications {

struct Application {
  std::string Name;
  std::string Command;  // one that Shell can start as it stands
  Owned<GIcon> Icon;    // may be none
};

// What the desktop's own menu shows, sorted by name.
std::vector<Application> Installed();

// The command of an entry without files to open: its field codes are filled in or dropped. Empty for what has
// no command, or runs in a terminal where there is none.
std::string CommandOf(GDesktopAppInfo* entry);

// The command of the desktop's tool that tells about the machine; empty where none is installed.
std::string SystemInformation();

}  // namespace Applications
