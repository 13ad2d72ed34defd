#include "address/AddressBar.h"

#include "core/Program.h"
#include "core/frmMain.h"

AddressBar::AddressBar(frmMain& main)
    : Combo1(main.program.desktop.MakeComboBox(main.frame.CoolBar1, {4200, 100, 4785, 315})), main_(main) {}

void AddressBar::ClearList() {}
void AddressBar::AddItem(const std::string&) {}
void AddressBar::SetAddressText() {}
void AddressBar::SaveComplete() {}
