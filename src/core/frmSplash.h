#pragma once

#include <string>

#include "platform/scene/Window.h"

class Program;

// The first window: what the program is doing until the main window stands.
class frmSplash : public Window {
 public:
  explicit frmSplash(Program& program);

  Surface Image1;  // the picture
  Label Label1;    // status
  Label Label2;    // version
  Label Label3;    // what this is

  void Form_Load();
  void Form_Unload(bool& cancel);

  // Shows a status text now.
  void Status(const std::string& text);

 private:
  void Form_Resize();

  Program& program_;
};
