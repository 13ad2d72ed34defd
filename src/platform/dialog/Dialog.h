#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/dialog/Control.h"

class Dialog;

// What a dialog asks of the desktop.
class DialogHost {
 public:
  virtual ~DialogHost() = default;
  virtual void Show() = 0;  // over its owner, which goes on working
  virtual void Hide() = 0;
  // Shows, keeps the user from the program's other windows, and returns once the dialog is hidden. Events are
  // served meanwhile. A further call for a dialog that stands already waits for the same end.
  virtual void ShowModal() = 0;
  virtual void TakeFocus() = 0;
  virtual void Caption() = 0;
  virtual void Resize() = 0;
  virtual void Pointer() = 0;
  virtual void Refresh() = 0;
  virtual void SetFocus(Controls::Control& control) = 0;
  virtual void Changed(Controls::Control& control, Controls::Aspect aspect) = 0;
};

class DialogMaker {
 public:
  virtual ~DialogMaker() = default;
  // Joins a dialog to its look. Fails where a part has no widget of its kind.
  virtual std::unique_ptr<DialogHost> MakeDialog(Dialog& dialog) = 0;
};

enum class MousePointer { Default = 0, Hourglass = 11 };

// A dialog's behaviour. Its look has the same name, and a widget for each of the parts.
class Dialog {
 public:
  enum class Aspect { Visible, Caption, Size, Pointer };
  template <class T>
  using Property = ObservedValue<T, Dialog, Aspect>;

  Dialog(DialogMaker& maker, std::string name);
  Dialog(const Dialog&) = delete;
  virtual ~Dialog();

  const std::string Name;
  Property<bool> Visible;
  Property<std::string> Caption;  // empty: the look's
  // Outer size in twips: what is inside, and a frame of a fixed size around it, whatever frame the desktop
  // really gives. Known from the first showing on; a size set before that replaces the look's.
  Property<Controls::Twips> Width, Height;
  // The hourglass stands from now on, even if the program is busy until it is taken away.
  Property<MousePointer> Pointer;

  // The user or the desktop wants the dialog closed. Where none is set, nothing but the dialog's own parts
  // closes it.
  std::function<void()> QueryUnload;
  std::function<void()> Resize;      // at the first showing, and whenever Width or Height has changed
  std::function<void()> Deactivate;  // another window is in front
  std::function<void()> LostFocus;   // right behind Deactivate

  void Show() { Visible = true; }
  void ShowModal();
  // Brings the dialog to the front with the keyboard. While another program is, it waits until the user
  // comes back to this one.
  void SetFocus();
  // Puts on the screen at once what has changed, for a handler that goes on working.
  void Refresh();
  // Joins the dialog to its look without showing it. Fails where a part has no widget of its kind.
  void Join();

  // What the desktop tells.
  void Resized(Controls::Twips width, Controls::Twips height);
  void Deactivated();

  const std::vector<Controls::Control*>& Parts() const { return parts_; }
  // Fails where there is none.
  Controls::Control& Part(const std::string& name) const;

  void Changed(Aspect aspect);

 private:
  friend class Controls::Control;

  DialogMaker& maker_;
  std::vector<Controls::Control*> parts_;
  bool told_ = false;                 // the size comes from the desktop
  std::unique_ptr<DialogHost> host_;  // from the first joining on
};
