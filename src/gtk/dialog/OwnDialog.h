#pragma once

#include <gtk/gtk.h>

#include <memory>

#include "gtk/base/Callbacks.h"
#include "platform/Events.h"
#include "platform/dialog/Dialog.h"

// Makes dialogs that go past the program's gate: they work while the program is ending too.
class OwnDialogMaker : public DialogMaker {
 public:
  explicit OwnDialogMaker(GtkWindow* parent) : parent_(parent) {}
  ~OwnDialogMaker() override;
  std::unique_ptr<DialogHost> MakeDialog(Dialog& dialog) override;

 private:
  Events gate_;
  GtkWindow* parent_;
};

// A dialog of the desktop's own side, which no room of the program owns: it keeps itself from its opening to
// its closing, and goes with the window it stands over.
class OwnDialog : private OwnDialogMaker, public Dialog {
 public:
  // `parent` may be none.
  OwnDialog(GtkWindow* parent, std::string name);

  // Shows the dialog, which lives until it is closed.
  static void Open(const std::shared_ptr<OwnDialog>& dialog);
  void Close();

 private:
  std::shared_ptr<OwnDialog> self_;
  Callbacks callbacks_;
};
