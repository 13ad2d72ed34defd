#pragma once

#include <functional>
#include <string>
#include <utility>

#include "platform/Property.h"

class Dialog;

// The parts of dialogs: plain values and events, each under the name that its widget has in the dialog's
// look. Texts and places that never change belong to the look; a part's own are nothing until the program
// sets them. The desktop tells of the user's doings by setting the values and raising the events, and so
// does a test.
namespace Controls {

// What about a part has changed; each part says which of them it has.
enum class Aspect {
  Visible,
  Enabled,
  Place,
  Caption,
  Value,      // of a box, an option, a number, a bar; a text box's text; the page of tab pages
  Rows,       // of a list or a tree, with what is selected
  Selection,  // of a list or a tree alone
  Editing,    // a name of a tree is up for editing
  Colour,
  Picture
};

// 1/20 point, 15 to the pixel. A place that isn't set is the look's.
using Twips = double;
constexpr Twips AsInLook = -1e9;

class Control {
 public:
  template <class T>
  using Property = ObservedValue<T, Control, Aspect>;

  Control(Dialog& dialog, std::string name);
  Control(const Control&) = delete;
  virtual ~Control() = default;

  const std::string Name;
  Property<bool> Visible, Enabled;
  // Within the part that holds this one, or within the dialog. Only what lies free in its look has a place.
  Property<Twips> Left, Top, Width, Height;

  // Gives the part the keyboard.
  void SetFocus();
  virtual void Changed(Aspect aspect);

 protected:
  Dialog& dialog_;
};

// A part with a text. In the text of what can be pressed "_" stands before the mnemonic's letter.
class Captioned : public Control {
 public:
  Captioned(Dialog& dialog, std::string name)
      : Control(dialog, std::move(name)), Caption(this, Aspect::Caption, "") {}

  Property<std::string> Caption;
};

}  // namespace Controls
