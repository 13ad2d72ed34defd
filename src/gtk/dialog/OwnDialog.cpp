#include "gtk/dialog/OwnDialog.h"

#include <utility>

#include "gtk/dialog/DialogBinder.h"

OwnDialogMaker::~OwnDialogMaker() = default;

std::unique_ptr<DialogHost> OwnDialogMaker::MakeDialog(Dialog& dialog) {
  return std::make_unique<DialogBinder>(dialog, gate_, [this] { return parent_; });
}

OwnDialog::OwnDialog(GtkWindow* parent, std::string name)
    : OwnDialogMaker(parent),
      Dialog(static_cast<OwnDialogMaker&>(*this), std::move(name)),
      callbacks_([](const std::function<void()>& handler) { handler(); }) {
  QueryUnload = [this] { Close(); };
  if (parent) callbacks_.On<void(GtkWidget*)>(parent, "destroy", [this](GtkWidget*) { Close(); });
}

void OwnDialog::Open(const std::shared_ptr<OwnDialog>& dialog) {
  dialog->self_ = dialog;
  dialog->Show();
}

// The handler that closes it may be one of its own.
void OwnDialog::Close() {
  Visible = false;
  callbacks_.Later([self = std::move(self_)] {});
}
