#pragma once

#include <functional>
#include <string>

#include "gtk/base/Callbacks.h"

// The desktop's own programs for files.
namespace FileManager {

using Failed = std::function<void(const std::string& reason)>;

// Opens a file by the program that is there for it. `failed` is told at once, in a sentence.
void Open(const std::string& path, const Failed& failed);
// Shows a file in its folder, chosen, where the file manager on the session's bus can do that; else the
// folder. Comes to its end later, and only while `callbacks` lives.
void Show(const std::string& path, Callbacks& callbacks, Failed failed);

}  // namespace FileManager
