#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/Events.h"
#include "platform/Failure.h"

// Controls under one name with a 16-bit index. Element 0 is there from the start and can't be unloaded; the
// others come and go, and indices may have holes.
template <class T>
class ControlArray {
 public:
  // Makes and wires the element of an index; it starts out like element 0 by design.
  using Maker = std::function<std::unique_ptr<T>(int16_t index)>;

  ControlArray(Events& events, std::string name, Maker make)
      : events_(events), name_(std::move(name)), make_(std::move(make)) {
    elements_.push_back(make_(0));
  }
  ControlArray(const ControlArray&) = delete;

  // Fails where the element is missing.
  T& operator()(int index) {
    if (!Has(index)) throw Failure(Named(index) + " does not exist");
    return *elements_[static_cast<size_t>(index)];
  }

  bool Has(int index) const {
    return index >= 0 && index <= UBound() && elements_[static_cast<size_t>(index)];
  }
  int UBound() const { return static_cast<int>(elements_.size()) - 1; }

  // A loaded element of a visible kind is hidden at first. Fails where it exists, or past 32767.
  void Load(int index) {
    if (Has(index)) throw Failure(Named(index) + " is already loaded");
    if (index < 0 || index > INT16_MAX) throw Failure(Named(index) + ": the index is out of range");
    std::unique_ptr<T> element = make_(static_cast<int16_t>(index));
    if constexpr (requires { element->Visible = false; }) element->Visible = false;
    if (index > UBound()) elements_.resize(static_cast<size_t>(index) + 1);
    elements_[static_cast<size_t>(index)] = std::move(element);
  }

  // The element leaves the array and the screen at once; a handler of its own that is running may end in
  // peace. Fails for element 0 and where the element is missing.
  void Unload(int index) {
    if (index == 0) throw Failure(Named(0) + " can't be unloaded");
    T& element = (*this)(index);
    if constexpr (requires { element.Detach(); }) element.Detach();
    if constexpr (requires { element.Enabled = false; }) element.Enabled = false;
    events_.Bury(std::move(elements_[static_cast<size_t>(index)]));
    while (!elements_.back()) elements_.pop_back();
  }

 private:
  std::string Named(int index) const { return name_ + "(" + std::to_string(index) + ")"; }

  Events& events_;
  std::string name_;
  Maker make_;
  std::vector<std::shared_ptr<T>> elements_;  // null: a hole; the last one is never null
};
