#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "platform/Timer.h"
#include "platform/scene/ControlArray.h"
#include "platform/scene/Scene.h"

class frmMain;

// The eight buttons left of the address bar, and the commands behind them, which the menus use too.
class Toolbar {
 public:
  explicit Toolbar(frmMain& main);

  ControlArray<Surface> picButton;
  Timer TimerMenus;  // sweeps highlights away when the mouse has left the window

  // Which button is under the mouse: 0 to 7; -1 none; -2 the left tab arrow, -3 the right one.
  void ResetButtons(int16_t Index);
  // Shows "Back" and "Forward" paler while the page on show has nowhere to go that way.
  void UpdateWays();
  // Shows a button pressed and the others at rest.
  void ButtonDown(int16_t Index);
  // Carries out a toolbar word; an unknown one does nothing. Ends silently at a failure.
  void ClickBar(std::string_view Command);

 private:
  std::unique_ptr<Surface> MakeButton(Surface& strip, int16_t Index);
  void Show(int i, const Picture& picture);
  Picture Pale(const Picture& picture);
  void picButton_MouseMove(int16_t Index, const Mouse& mouse);
  void Strip_MouseMove();
  void TimerMenus_Timer();

  frmMain& main_;
  std::array<Picture, 2> way_pictures_;  // of "Back" and "Forward", as they are without paling
  std::array<bool, 2> ways_ = {true, true};
  std::map<Picture, Picture> pale_;  // made so far, by what they were made from
};
