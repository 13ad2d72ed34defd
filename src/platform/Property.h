#pragma once

#include <utility>

// A value that tells its owner when it changes. Owner::Changed(Aspect) runs after the new value is in
// place; assigning the value that is there does nothing. Owner::Check(Aspect, value), where the
// owner has one for this type, may refuse a value by throwing before it is taken.
template <class T, class Owner, class Aspect>
class ObservedValue {
 public:
  ObservedValue(Owner* owner, Aspect aspect, T value)
      : owner_(owner), aspect_(aspect), value_(std::move(value)) {}
  ObservedValue(const ObservedValue&) = delete;

  ObservedValue& operator=(T value) {
    if (value == value_) return *this;
    if constexpr (requires { owner_->Check(aspect_, value); }) owner_->Check(aspect_, value);
    value_ = std::move(value);
    owner_->Changed(aspect_);
    return *this;
  }
  ObservedValue& operator=(const ObservedValue& other) {
    if (this != &other) *this = other.value_;
    return *this;
  }

  // NOLINTNEXTLINE: reads like the value it holds.
  operator const T&() const { return value_; }
  const T& operator()() const { return value_; }
  const T* operator->() const { return &value_; }

 private:
  Owner* owner_;
  Aspect aspect_;
  T value_;
};
