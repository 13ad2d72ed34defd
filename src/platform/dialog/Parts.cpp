// What the simple parts do when they change.

#include "platform/Failure.h"
#include "platform/dialog/Buttons.h"
#include "platform/dialog/TabPages.h"
#include "platform/dialog/Texts.h"

namespace Controls {

void CheckBox::Press() {
  Value = Value ? 0 : 1;
  if (Click) Click();
}

OptionButton::OptionButton(Dialog& dialog, std::string name, Group& group)
    : Captioned(dialog, std::move(name)), Value(this, Aspect::Value, false), group_(group) {
  group.members_.push_back(this);
}

void OptionButton::Changed(Aspect aspect) {
  const bool chosen = aspect == Aspect::Value && Value;
  if (chosen)
    for (OptionButton* other : group_.Members())
      if (other != this) other->Value = false;
  Control::Changed(aspect);
  if (chosen && Click) Click();
}

void TextBox::Changed(Aspect aspect) {
  Control::Changed(aspect);
  if (aspect == Aspect::Value && Change) Change();
}

void NumberBox::Check(Aspect, int value) const {
  if (value < Least || value > Most)
    throw Failure("The number " + std::to_string(value) + " is outside " + std::to_string(Least) + " to " +
                  std::to_string(Most) + " of " + Name);
}

void NumberBox::Changed(Aspect aspect) {
  Control::Changed(aspect);
  if (aspect == Aspect::Value && Change) Change();
}

void TabPages::Changed(Aspect aspect) {
  Control::Changed(aspect);
  if (aspect == Aspect::Value && Click) Click();
}

}  // namespace Controls
