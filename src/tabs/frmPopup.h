#pragma once

#include <cstdint>

#include "platform/dialog/Controls.h"

class Program;

// The question where a page's new window is to go. Only its buttons close it.
class frmPopup : public Dialog {
 public:
  explicit frmPopup(Program& program);

  Controls::Image Picture1{*this, "Picture1"};
  Controls::Label Label1{*this, "Label1"};
  Controls::Label Label2{*this, "Label2"};
  Controls::CommandButton OKButton{*this, "OKButton"};
  Controls::CommandButton CancelButton{*this, "CancelButton"};
  Controls::CommandButton Command1{*this, "Command1"};

  void Form_Load() {}
  void Form_Unload(bool&) {}

 private:
  // What the button does: it gives the answer and unloads the question.
  std::function<void()> Gives(int16_t answer);

  Program& program_;
};
