#pragma once

#include <functional>
#include <string>

#include "gtk/start/SandboxCheck.h"

// Whether the pages of this start are kept in a sandbox.
namespace SandboxChoice {

// What MARLOWICK_SANDBOX says: "off" goes on without one, "on" never does; anything else asks where there
// can't be one.
bool IsOff();

enum class Way { Sandbox, NoSandbox, End };

// `asks` shows a question and returns whether the answer was yes; a no is the program's end. Fails where the
// variable wants a sandbox that can't be. No check: none is to be.
Way Choose(SandboxCheck* check, const std::function<bool(const std::string& question)>& asks);

}  // namespace SandboxChoice
