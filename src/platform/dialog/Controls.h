#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/Property.h"

class Desktop;
class Dialog;

// The parts of dialogs: plain values and events, each under the name that its widget has in the dialog's
// look. Texts that never change belong to the look; a part's own text is empty until the program sets one.
namespace Controls {

enum class Aspect { Visible, Enabled, Caption };

class Control {
 public:
  template <class T>
  using Property = ObservedValue<T, Control, Aspect>;

  Control(Dialog& dialog, std::string name);
  Control(const Control&) = delete;
  virtual ~Control() = default;

  const std::string Name;
  Property<bool> Visible, Enabled;

  // Gives the part the keyboard.
  void SetFocus();
  void Changed(Aspect aspect);

 private:
  Dialog& dialog_;
};

// A part with a text. In a button's text "_" stands before the mnemonic's letter.
class Captioned : public Control {
 public:
  Captioned(Dialog& dialog, std::string name)
      : Control(dialog, std::move(name)), Caption(this, Aspect::Caption, "") {}

  Property<std::string> Caption;
};

class Label : public Captioned {
 public:
  using Captioned::Captioned;
};

class CommandButton : public Captioned {
 public:
  using Captioned::Captioned;

  std::function<void()> Click;
};

// A fixed picture.
class Image : public Control {
 public:
  using Control::Control;
};

}  // namespace Controls

// What a dialog asks of the desktop.
class DialogHost {
 public:
  virtual ~DialogHost() = default;
  virtual void Show() = 0;  // over its owner, which goes on working
  virtual void Hide() = 0;
  // Shows, keeps the user from the program's other windows, and returns once the dialog is hidden. Events are
  // served meanwhile. A further call for a dialog that stands already waits for the same end.
  virtual void ShowModal() = 0;
  virtual void SetFocus(Controls::Control& control) = 0;
  virtual void Changed(Controls::Control& control, Controls::Aspect aspect) = 0;
};

// A dialog's behaviour. Its look has the same name, and a widget for each of the parts.
class Dialog {
 public:
  enum class Aspect { Visible };

  Dialog(Desktop& desktop, std::string name);
  Dialog(const Dialog&) = delete;
  virtual ~Dialog();

  const std::string Name;
  ObservedValue<bool, Dialog, Aspect> Visible;

  // The user or the desktop wants the dialog closed. Where none is set, nothing but the dialog's own parts
  // closes it.
  std::function<void()> QueryUnload;

  void Show() { Visible = true; }
  void ShowModal();
  // Joins the dialog to its look without showing it. Fails where a part or a widget has no counterpart.
  void Join();

  const std::vector<Controls::Control*>& Parts() const { return parts_; }
  // Fails where there is none.
  Controls::Control& Part(const std::string& name) const;

  void Changed(Aspect aspect);

 private:
  friend class Controls::Control;

  Desktop& desktop_;
  std::vector<Controls::Control*> parts_;
  std::unique_ptr<DialogHost> host_;  // from the first joining on
};
