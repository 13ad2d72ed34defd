#include "platform/dialog/Controls.h"

#include <utility>

#include "platform/Desktop.h"
#include "platform/Failure.h"

namespace Controls {

Control::Control(Dialog& dialog, std::string name)
    : Name(std::move(name)),
      Visible(this, Aspect::Visible, true),
      Enabled(this, Aspect::Enabled, true),
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

Dialog::Dialog(Desktop& desktop, std::string name)
    : Name(std::move(name)), Visible(this, Aspect::Visible, false), desktop_(desktop) {}

Dialog::~Dialog() = default;

void Dialog::Join() {
  if (!host_) host_ = desktop_.MakeDialog(*this);
}

void Dialog::ShowModal() {
  Join();
  host_->ShowModal();
}

Controls::Control& Dialog::Part(const std::string& name) const {
  for (Controls::Control* part : parts_)
    if (part->Name == name) return *part;
  throw Failure("The dialog " + Name + " has no " + name);
}

void Dialog::Changed(Aspect) {
  Join();
  Visible ? host_->Show() : host_->Hide();
}
