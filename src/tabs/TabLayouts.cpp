#include "tabs/TabLayouts.h"

void TabLayouts::SaveTabLayout(const std::string&) {}
void TabLayouts::RestoreTabLayout(const std::string&) {}
