#pragma once

#include <string>

// The program's folder: $MARLOWICK_HOME if set, else the folder of the executable if `browser.ini` lies
// there, else $XDG_DATA_HOME/marlowick. Where it isn't there yet, or is empty, it is installed from the
// delivered files; a folder with anything in it is taken as it is. Fails where that can't be done or the
// folder can't be written.
std::string FindProgramFolder();
