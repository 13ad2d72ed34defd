#pragma once

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "platform/Events.h"

// The place of any number of windows of one kind, in the order in which they were made. A window lives until
// it is unloaded; its unload may refuse.
template <class T>
class Instances {
 public:
  using Maker = std::function<std::shared_ptr<T>()>;

  Instances(Events& gate, Maker make) : gate_(gate), make_(std::move(make)) {}

  // Makes a window and runs its load. A load that fails leaves none behind.
  T& Add() {
    const std::shared_ptr<T> window = make_();
    windows_.push_back(window);
    try {
      window->Form_Load();
    } catch (...) {
      std::erase(windows_, window);
      throw;
    }
    return *window;
  }

  const std::vector<std::shared_ptr<T>>& All() const { return windows_; }

  // A window that isn't here any more is passed over.
  void Unload(const T& gone) {
    const auto found = Find(gone);
    if (found == windows_.end()) return;
    const std::shared_ptr<T> window = *found;
    bool cancel = false;
    window->Form_Unload(cancel);
    if (cancel || Find(gone) == windows_.end()) return;
    window->Visible = false;
    std::erase(windows_, window);
    gate_.Bury(window);
  }

  // The newest first.
  void UnloadAll() {
    const std::vector<std::shared_ptr<T>> windows = windows_;
    for (auto window = windows.rbegin(); window != windows.rend(); ++window) Unload(**window);
  }

 private:
  auto Find(const T& window) {
    return std::find_if(windows_.begin(), windows_.end(),
                        [&window](const auto& held) { return held.get() == &window; });
  }

  Events& gate_;
  Maker make_;
  std::vector<std::shared_ptr<T>> windows_;
};
