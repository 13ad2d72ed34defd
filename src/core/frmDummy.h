#pragma once

#include "platform/Timer.h"
#include "platform/scene/Window.h"

class Program;

// The program's entry on the task bar. It carries the title of the page on show and relays to the main window
// what the user does to the entry. It never stands on the screen itself.
class frmDummy : public Window {
 public:
  explicit frmDummy(Program& program);

  Timer Timer1;

  void Form_Load();
  void Form_Unload(bool& cancel);

 private:
  void Form_Resize();
  void Timer1_Timer();
  bool MayLoseDownloads();

  Program& program_;
};
