#pragma once

// Whether other programs' addresses come to this one.
namespace DefaultBrowser {

enum class State {
  NotInstalled,  // the desktop doesn't know the program
  Other,
  Ours,
};

State Now();
// From now on they do. Fails where the desktop doesn't take it.
void BecomeIt();

}  // namespace DefaultBrowser
