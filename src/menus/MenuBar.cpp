#include "menus/MenuBar.h"

void MenuBar::ResetMenus(const Label&) {}
