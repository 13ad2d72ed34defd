#include "tabs/frmPopup.h"

#include "core/Program.h"
#include "core/frmMain.h"

frmPopup::frmPopup(Program& program) : Dialog(program.desktop, "frmPopup"), popups_(program.main().popups) {
  OKButton.Click = Gives(PopupHandling::InNewTab);
  CancelButton.Click = Gives(PopupHandling::InNewBrowser);
  Command1.Click = Gives(PopupHandling::DoNotOpen);
}

std::function<void()> frmPopup::Gives(int16_t answer) {
  return [this, answer] {
    popups_.PopupAnswer = answer;
    popups_.popup.Unload();
  };
}
