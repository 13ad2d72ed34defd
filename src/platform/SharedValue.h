#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

// A value that several read, and that tells whoever waits for it when it changes. So nobody has to look again
// and again.
template <class T>
class SharedValue {
 public:
  SharedValue() = default;
  SharedValue(const SharedValue&) = delete;

  // Assigning the value that is there tells nobody.
  SharedValue& operator=(T value) {
    if (value == value_) return *this;
    value_ = std::move(value);
    std::erase_if(watches_, [](const auto& watch) { return watch.expired(); });
    // What is told may end other watches, begin new ones, and assign again.
    const auto told = watches_;
    for (const std::weak_ptr<Notice>& watch : told)
      if (const std::shared_ptr<Notice> notice = watch.lock()) (*notice)();
    return *this;
  }

  // NOLINTNEXTLINE: reads like the value it holds.
  operator const T&() const { return value_; }
  const T& operator()() const { return value_; }

  // Calls after each change, within the assignment, for as long as the result is kept.
  using Watch = std::shared_ptr<void>;
  [[nodiscard]] Watch WhenChanged(std::function<void()> notice) {
    auto watch = std::make_shared<Notice>(std::move(notice));
    watches_.push_back(watch);
    return watch;
  }

 private:
  using Notice = std::function<void()>;
  T value_{};
  std::vector<std::weak_ptr<Notice>> watches_;
};
