#include "tabs/frmPopup.h"

#include "core/Program.h"
#include "core/frmMain.h"

frmPopup::frmPopup(Program& program)
    : Dialog(program.desktop, "frmPopup"), Timer1(program.desktop, AnswersWait, false), program_(program) {
  OKButton.Click = Gives(PopupHandling::InNewTab);
  CancelButton.Click = Gives(PopupHandling::InNewBrowser);
  Command1.Click = Gives(PopupHandling::DoNotOpen);
  for (Controls::CommandButton* answer : {&OKButton, &CancelButton, &Command1})
    answer->GotFocus = [this] { Timer1.Enabled = false; };
  // It is on the screen.
  Resize = [this] {
    Timer1.Enabled = true;
    Resize = nullptr;
  };
  Timer1.Tick = [this] {
    Timer1.Enabled = false;
    OKButton.SetFocus();
  };
}

std::function<void()> frmPopup::Gives(int16_t answer) {
  return [this, answer] {
    PopupHandling& popups = program_.main().popups;
    popups.PopupAnswer = answer;
    popups.popup.Unload();
  };
}
