#include "tabs/frmPopup.h"

#include "core/Program.h"
#include "core/frmMain.h"

frmPopup::frmPopup(Program& program) : Dialog(program.desktop, "frmPopup"), program_(program) {
  OKButton.Click = Gives(PopupHandling::InNewTab);
  CancelButton.Click = Gives(PopupHandling::InNewBrowser);
  Command1.Click = Gives(PopupHandling::DoNotOpen);
}

std::function<void()> frmPopup::Gives(int16_t answer) {
  return [this, answer] {
    PopupHandling& popups = program_.main().popups;
    popups.PopupAnswer = answer;
    popups.popup.Unload();
  };
}
