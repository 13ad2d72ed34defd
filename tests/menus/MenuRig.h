#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "core/Program.h"
#include "core/frmMain.h"
#include "fakes/FakeDesktop.h"
#include "menus/frmMenu.h"

// A started program, and the user's hand on its menus: everything goes through the windows' own mouse
// functions.
struct MenuRig {
  MenuRig() {
    program.Start();
    desktop.log.clear();
  }

  frmMain& main() { return program.main(); }
  MenuBar& bar() { return main().menubar; }
  frmMenu& menu() { return program.popup_menu(); }
  MenuState& state() { return program.menu; }
  FakeBrowser& Page(int index) { return static_cast<FakeBrowser&>(main().tabs.WebBrowser1(index)); }

  void Over(Control& control, Twips x = 30, Twips y = 30) {
    desktop.Gate.Run(
        [&] { WindowOf(control).MouseMoved(0, 0, control.RootLeft() + x, control.RootTop() + y); });
  }
  void Click(Control& control) {
    Window& window = WindowOf(control);
    const Twips x = control.RootLeft() + 30, y = control.RootTop() + 30;
    desktop.Gate.Run([&] { window.MousePressed(1, 0, x, y); });
    desktop.Gate.Run([&] { window.MouseReleased(1, 0, x, y); });
  }
  void Open(Label& label) {
    Click(label);
    Over(label);
  }
  // What the desktop does at a press anywhere outside the menu.
  void PressOutside() {
    desktop.Gate.Run([this] { menu().Deactivate(); });
  }
  void ClickRow(int index) { Click(menu().mnuText(index)); }
  void Command(const std::string& command) {
    desktop.Gate.Run([&] { main().menus.MenuCommand(command); });
  }

  // No button of the toolbar looks as if the mouse were over it.
  bool ToolbarRests() { return main().toolbar.picButton(3).Picture() == main().skin.picStopBut.Picture(); }
  bool IsOpen() { return program.popup_menu.Loaded() && menu().Visible; }
  std::string Rows() {
    std::string rows;
    for (int i = 0; i <= menu().mnuText.UBound(); ++i) rows += (i ? "," : "") + menu().mnuText(i).Caption();
    return rows;
  }
  std::string Highlighted() {
    for (Label* label : Labels())
      if (label->Opaque) return label->Caption;
    return "";
  }
  std::vector<Label*> Labels() {
    return {&bar().mnuFile, &bar().Label1, &bar().Label2, &bar().labFavs,
            &bar().Label3,  &bar().Label5, &bar().Label4};
  }
  // What was asked of the outside since the last time.
  std::vector<std::string> Asked() { return std::exchange(desktop.log, {}); }

  const ProgramFolder folder;
  FakeDesktop desktop{folder.path};
  Program program{desktop};
};
