#include "platform/scene/Window.h"

#include <algorithm>
#include <utility>

namespace {

constexpr int MiddleButton = 4;

}  // namespace

Window::Window(WindowSystem& system, Kind kind, const Place& place, const std::string& caption)
    : Surface(nullptr, place),
      Caption(this, Aspect::Text, caption),
      WindowState(this, Aspect::State, Normal),
      FillsScreen(this, Aspect::Place, false),
      system_(system),
      kind_(kind) {
  Visible = false;
  host_ = system.MakeHost(*this);
}

Window::~Window() { host_.reset(); }

void Window::Move(Twips left, Twips top) {
  Left = left;
  Top = top;
}

void Window::SetFocus() {
  if (host_) host_->Focus();
}

void Window::Refresh() {
  if (host_) host_->Repaint();
}

DisplayList Window::Describe() {
  DisplayList list;
  const PixelRect everything{0, 0, PixelBounds().Width, PixelBounds().Height};
  DescribeAll(list, 0, 0, everything);
  return list;
}

void Window::Changed(Aspect aspect) {
  if (!host_) return;
  host_->Invalidate();
  switch (aspect) {
    case Aspect::Place:
      if (!quiet_) host_->Move();
      break;
    case Aspect::Size:
      if (!quiet_) host_->Resize();
      if (Resize) Resize();
      break;
    case Aspect::Text:
      host_->Caption();
      break;
    case Aspect::State:
      if (!quiet_) host_->State();
      if (Resize) Resize();
      break;
    case Aspect::Look:
      if (Visible != shown_) {
        shown_ = Visible;
        shown_ ? host_->Show() : host_->Hide();
      }
      break;
  }
}

void Window::Forget(const Control& control) {
  for (const Control* at = captured_; at; at = at->Parent())
    if (at == &control) captured_ = nullptr;
}

Control& Window::At(Twips x, Twips y) {
  Control* found = this;
  for (bool deeper = true; deeper;) {
    deeper = false;
    const auto& children = found->Children();
    for (auto child = children.rbegin(); child != children.rend(); ++child) {
      const Control& c = **child;
      if (!c.Visible || !c.TakesMouse() || x < c.Left || y < c.Top || x >= c.Left + c.Width ||
          y >= c.Top + c.Height)
        continue;
      x -= c.Left;
      y -= c.Top;
      found = *child;
      deeper = true;
      break;
    }
  }
  return *found;
}

void Window::MousePressed(int button, int shift, Twips x, Twips y, bool second_press) {
  // A second button goes where the first one is held.
  if (!captured_) button_ = button;
  Control& control = captured_ ? *captured_ : At(x, y);
  captured_ = &control;
  doubled_ = second_press && control.DblClick;
  if (doubled_)
    control.DblClick();
  else if (control.MouseDown)
    control.MouseDown({button, shift, x - control.RootLeft(), y - control.RootTop()});
}

void Window::MouseMoved(int buttons, int shift, Twips x, Twips y) {
  // Where another window took the mouse away, the release went there.
  if (buttons == 0) captured_ = nullptr;
  // A double click may have moved the window from under the mouse: it begins no drag.
  if (captured_ && doubled_) return;
  Control& control = captured_ ? *captured_ : At(x, y);
  if (control.MouseMove) control.MouseMove({buttons, shift, x - control.RootLeft(), y - control.RootTop()});
}

void Window::MouseReleased(int button, int shift, Twips x, Twips y) {
  // The release of a further button doesn't end what the first one holds.
  if (!captured_ || button != button_) return;
  Control* control = std::exchange(captured_, nullptr);
  const bool inside = &At(x, y) == control;
  // The handlers may take the control off the window, so that it must not be touched again.
  const auto release = control->MouseUp;
  const bool middle = button == MiddleButton && control->MiddleClick;
  const auto click = doubled_ || !inside ? nullptr : middle ? control->MiddleClick : control->Click;
  if (release) release({button, shift, x - control->RootLeft(), y - control->RootTop()});
  if (click) click();
}

void Window::Wheeled(int notches, Twips x, Twips y) {
  for (Control* control = &At(x, y); control; control = control->Parent())
    if (const auto wheel = control->MouseWheel) return wheel(notches);
}

void Window::Dropped(const DataObject& data, Twips x, Twips y) {
  const auto drop = At(x, y).OLEDragDrop;
  if (drop) drop(data);
}

void Window::Placed(Twips left, Twips top) {
  quiet_ = true;
  Move(left, top);
  quiet_ = false;
}

void Window::Sized(Twips width, Twips height) {
  // Both at once: one layout for one change of the desktop's.
  if (width == Width && height == Height) return;
  const auto resize = std::exchange(Resize, nullptr);
  quiet_ = true;
  Width = width;
  Height = height;
  quiet_ = false;
  Resize = resize;
  if (Resize) Resize();
}
