#pragma once

#include <cstdint>
#include <string>

class frmMain;

// The popup menus and what their rows do.
class MenuModule {
 public:
  explicit MenuModule(frmMain& main) : main_(main) {}

  // Builds and shows the popup menu at a point of the screen, in twips; a menu that is open stays as it is.
  // Items: the rows' captions joined by commas, "-" for a separator.
  void ShowMenu(int32_t Left, int32_t Top, const std::string& Items);

  // Carries out a row's caption, in lower case. Fails where an entry of the launch menu can't be started, and
  // where the address list can't be saved.
  void MenuCommand(const std::string& Command);

  void ShowLaunchDialog();
  void ShowOptions();
  void ShowAbout();
  void ShowCookies();

 private:
  void ShowTab(const std::string& Command);
  void Launch(const std::string& Command);

  frmMain& main_;
};
