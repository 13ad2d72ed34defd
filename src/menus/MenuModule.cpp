#include "menus/MenuModule.h"

void MenuModule::MenuCommand(const std::string&) {}
