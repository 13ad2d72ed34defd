#pragma once

#include <functional>
#include <string>

#include "platform/dialog/Control.h"
#include "platform/scene/Colour.h"

namespace Controls {

class Label : public Captioned {
 public:
  using Captioned::Captioned;
};

// A named border around other parts.
class Frame : public Captioned {
 public:
  using Captioned::Captioned;
};

// One line of text.
class TextBox : public Control {
 public:
  TextBox(Dialog& dialog, std::string name)
      : Control(dialog, std::move(name)),
        Text(this, Aspect::Value, ""),
        BackColor(this, Aspect::Colour, WindowBackgroundColour) {}

  Property<std::string> Text;
  Property<Colour> BackColor;

  std::function<void()> Change;    // the text is another one, by the user or by the program
  std::function<void()> Activate;  // Enter; the dialog's default button is pressed only where none is set

  void Changed(Aspect aspect) override;
};

// A whole number, typed or stepped. The look gives the steps.
class NumberBox : public Control {
 public:
  NumberBox(Dialog& dialog, std::string name, int least, int most)
      : Control(dialog, std::move(name)), Least(least), Most(most), Value(this, Aspect::Value, least) {}

  const int Least, Most;
  Property<int> Value;
  std::function<void()> Change;

  // Fails for a number outside the range.
  void Check(Aspect aspect, int value) const;
  void Changed(Aspect aspect) override;
};

// How far some work has come.
class ProgressBar : public Captioned {
 public:
  ProgressBar(Dialog& dialog, std::string name)
      : Captioned(dialog, std::move(name)), Value(this, Aspect::Value, 0) {}

  Property<double> Value;  // 0 to 1
};

}  // namespace Controls
