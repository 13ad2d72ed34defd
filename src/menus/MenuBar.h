#pragma once

#include <array>
#include <string>

#include "platform/scene/Scene.h"

class frmMain;

// The menu bar: seven labels on the strip `Picture9`. A click on one starts menu mode; from then on each
// label opens its menu when the mouse moves over it.
class MenuBar {
 public:
  explicit MenuBar(frmMain& main);

  // From left to right.
  Label mnuFile, Label1, Label2, labFavs, Label3, Label5, Label4;

  // Highlights one label; `labDummy` stands for none.
  void ResetMenus(Label& label);

 private:
  struct Menu {
    Label MenuBar::*Control;
    const char* Name;  // as OpenMenuName has it
    void (MenuBar::*MouseMove)(const Menu& menu);
    // The captions, joined by commas.
    std::string (MenuBar::*Items)();
  };
  static const std::array<Menu, 7> Menus;

  void Wire(const Menu& menu);
  void Label_MouseMove(const Menu& menu);
  void Label3_MouseMove(const Menu& menu);
  void labFavs_MouseMove(const Menu& menu);
  void TakeOver(const Menu& menu);
  void ShowBelow(const Label& label, const std::string& items);
  void ShowFavourites();
  void EndPopupMenu();

  std::string FileItems();
  std::string EditItems();
  std::string ViewItems();
  std::string LaunchItems();
  std::string TabItems();
  std::string HelpItems();

  frmMain& main_;
};
