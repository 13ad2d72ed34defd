#include "platform/dialog/Dialog.h"

#include <utility>

#include "platform/Failure.h"

namespace Controls {

Control::Control(Dialog& dialog, std::string name)
    : Name(std::move(name)),
      Visible(this, Aspect::Visible, true),
      Enabled(this, Aspect::Enabled, true),
      Left(this, Aspect::Place, AsInLook),
      Top(this, Aspect::Place, AsInLook),
      Width(this, Aspect::Place, AsInLook),
      Height(this, Aspect::Place, AsInLook),
      dialog_(dialog) {
  dialog.parts_.push_back(this);
}

void Control::SetFocus() {
  if (dialog_.host_) dialog_.host_->SetFocus(*this);
}

void Control::Changed(Aspect aspect) {
  if (dialog_.host_) dialog_.host_->Changed(*this, aspect);
}

}  // namespace Controls

Dialog::Dialog(DialogMaker& maker, std::string name)
    : Name(std::move(name)),
      Visible(this, Aspect::Visible, false),
      Caption(this, Aspect::Caption, ""),
      Width(this, Aspect::Size, Controls::AsInLook),
      Height(this, Aspect::Size, Controls::AsInLook),
      Pointer(this, Aspect::Pointer, MousePointer::Default),
      maker_(maker) {}

Dialog::~Dialog() = default;

void Dialog::Join() {
  if (!host_) host_ = maker_.MakeDialog(*this);
}

void Dialog::ShowModal() {
  Join();
  host_->ShowModal();
}

void Dialog::SetFocus() {
  if (host_) host_->TakeFocus();
}

void Dialog::Refresh() {
  if (host_) host_->Refresh();
}

void Dialog::Resized(Controls::Twips width, Controls::Twips height) {
  if (width == Width && height == Height) return;
  told_ = true;
  Width = width;
  Height = height;
  told_ = false;
  if (Resize) Resize();
}

void Dialog::Deactivated() {
  if (Deactivate) Deactivate();
  if (LostFocus) LostFocus();
}

Controls::Control& Dialog::Part(const std::string& name) const {
  for (Controls::Control* part : parts_)
    if (part->Name == name) return *part;
  throw Failure("The dialog " + Name + " has no " + name);
}

void Dialog::Changed(Aspect aspect) {
  if (aspect == Aspect::Visible) {
    Join();
    Visible ? host_->Show() : host_->Hide();
  } else if (aspect == Aspect::Size) {
    if (told_) return;
    if (host_) host_->Resize();
    // A size that the program sets is a change of the size like any other.
    if (Resize && Visible) Resize();
  } else if (host_) {
    aspect == Aspect::Caption ? host_->Caption() : host_->Pointer();
  }
}
