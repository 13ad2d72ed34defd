#pragma once

#include "gtk/start/Entry.h"

// A start that finds its folder taken by a process that doesn't answer.
namespace StillRunning {

// Tells so, with the folder and the process, and goes on trying meanwhile. NoAnswer: the user gave up.
Entry::Way Wait(Entry& entry);

}  // namespace StillRunning
