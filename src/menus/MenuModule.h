#pragma once

#include <string>

class frmMain;

// What the rows of the menus do.
class MenuModule {
 public:
  explicit MenuModule(frmMain& main) : main_(main) {}

  // Carries out a row's caption, in lower case.
  void MenuCommand(const std::string& Command);

 private:
  frmMain& main_;
};
