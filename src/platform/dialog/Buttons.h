#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/dialog/Control.h"

namespace Controls {

class CommandButton : public Captioned {
 public:
  using Captioned::Captioned;

  std::function<void()> Click;
  std::function<void()> GotFocus;
};

class CheckBox : public Captioned {
 public:
  CheckBox(Dialog& dialog, std::string name)
      : Captioned(dialog, std::move(name)), Value(this, Aspect::Value, 0) {}

  Property<int> Value;          // 0 or 1
  std::function<void()> Click;  // the user has changed the value

  // What the user's press does.
  void Press();
};

class OptionButton;

// Options of which one at most is on.
class Group {
 public:
  Group() = default;
  Group(const Group&) = delete;

  const std::vector<OptionButton*>& Members() const { return members_; }

 private:
  friend class OptionButton;
  std::vector<OptionButton*> members_;
};

// Setting the value clears the others of the group first, and counts as a click, the program's setting too.
// An option that is on already isn't clicked again.
class OptionButton : public Captioned {
 public:
  OptionButton(Dialog& dialog, std::string name, Group& group);

  Property<bool> Value;
  std::function<void()> Click;

  Group& Others() const { return group_; }
  void Changed(Aspect aspect) override;

 private:
  Group& group_;
};

// A text that leads somewhere.
class Link : public Captioned {
 public:
  using Captioned::Captioned;

  std::function<void()> Click;
};

}  // namespace Controls
