#pragma once

#include "platform/Window.h"

class Program;

// A popup menu, built anew each time it opens.
class frmMenu : public Window {
 public:
  explicit frmMenu(Program& program);

  void Form_Load();
  void Form_Unload(bool& cancel);

 private:
  Program& program_;
};
