#pragma once

#include <array>
#include <string>
#include <string_view>

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

  // By the keyboard. Opens the menu of this name, as a click on its label and a move over it do.
  void Open(std::string_view name);
  // Opens the next menu behind the open one that can be opened, or before it; round the ends.
  void OpenNext(int step);
  // Where a key has opened the menu: opens the next one whose label begins with this letter. False: there is
  // none, or the mouse has opened the menu.
  bool OpenByLetter(std::string_view letter);

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
  size_t OpenIndex() const;
  bool OpenAt(size_t index);
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
  bool by_key_ = false;  // a key has opened the menu
};
