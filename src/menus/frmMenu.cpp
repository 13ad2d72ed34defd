#include "menus/frmMenu.h"

#include "core/Program.h"

frmMenu::frmMenu(Program& program)
    : Window(program.desktop, Kind::Popup, {0, 0, 4140, 510}, ""), program_(program) {}

void frmMenu::Form_Load() { program_.menu.MenuLoaded = 1; }

void frmMenu::Form_Unload(bool&) {
  program_.menu.OpenMenuName.clear();
  program_.menu.MenuLoaded = 0;
}
