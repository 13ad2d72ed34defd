#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "platform/Failure.h"

// The gate through which every event of the outside enters the program: mouse, timer, page, window manager.
//
// It keeps what was unloaded alive until the last handler that may still be running in it has returned, and
// it is the one place where a failure that nobody caught ends up.
class Events {
 public:
  // Receives the failure that no handler caught. The program can't go on after it.
  std::function<void(const Failure&)> Unhandled;

  // Runs one event's handler.
  void Run(const std::function<void()>& handler);

  // Lets nothing in any more: the program is at its end.
  void Close() { closed_ = true; }

  // Keeps a thing that has left the program until no handler is running any more.
  void Bury(std::shared_ptr<void> thing);

 private:
  bool closed_ = false;
  int depth_ = 0;
  std::vector<std::shared_ptr<void>> buried_;
};
