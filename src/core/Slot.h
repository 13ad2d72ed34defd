#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "platform/Events.h"

// The place of a single window. The first touch makes the window and runs its load; unloading runs its own
// unload, which may refuse.
template <class T>
class Slot {
 public:
  using Maker = std::function<std::shared_ptr<T>()>;

  Slot(Events& gate, Maker make) : gate_(gate), make_(std::move(make)) {}

  T& operator()() {
    if (!window_) {
      // In the slot before its load runs: what the load calls finds the window here.
      window_ = make_();
      const std::shared_ptr<T> loading = window_;
      loading->Form_Load();
      return *loading;
    }
    return *window_;
  }

  bool Loaded() const { return window_ != nullptr; }

  void Unload() {
    if (!window_) return;
    const std::shared_ptr<T> window = window_;
    bool cancel = false;
    window->Form_Unload(cancel);
    if (cancel || window_ != window) return;
    window->Visible = false;
    window_.reset();
    gate_.Bury(window);
  }

 private:
  Events& gate_;
  Maker make_;
  std::shared_ptr<T> window_;
};
