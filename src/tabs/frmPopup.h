#pragma once

#include <cstdint>

#include "platform/Timer.h"
#include "platform/dialog/Controls.h"

class Program;

// The question where a page's new window is to go. Only its buttons close it.
class frmPopup : public Dialog {
 public:
  explicit frmPopup(Program& program);

  // Whoever typed on as the question came up answers nothing by it: only after this many milliseconds one of
  // the answers has the keyboard by itself.
  static constexpr int AnswersWait = 500;

  Controls::Image Picture1{*this, "Picture1"};
  Controls::Label Label1{*this, "Label1"};
  Controls::Label Site{*this, "Site"};
  Controls::Label Label2{*this, "Label2"};
  Controls::CommandButton OKButton{*this, "OKButton"};
  Controls::CommandButton CancelButton{*this, "CancelButton"};
  Controls::CommandButton Command1{*this, "Command1"};
  Timer Timer1;

  void Form_Load() {}
  void Form_Unload(bool&) {}

 private:
  // What the button does: it gives the answer and unloads the question.
  std::function<void()> Gives(int16_t answer);

  Program& program_;
};
