#pragma once

#include "platform/Scene.h"

class frmMain;

// The seven labels of the menu bar.
class MenuBar {
 public:
  explicit MenuBar(frmMain& main) : main_(main) {}

  // Highlights one label; `labDummy` stands for none.
  void ResetMenus(const Label& label);

 private:
  frmMain& main_;
};
