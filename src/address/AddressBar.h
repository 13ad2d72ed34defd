#pragma once

#include <memory>
#include <string>

#include "platform/ComboBox.h"

class frmMain;

// The address field: shows where the tab on show is, sends it where the user types, and completes what is
// typed from the addresses that were typed before.
class AddressBar {
 public:
  explicit AddressBar(frmMain& main);

  std::unique_ptr<ComboBox> Combo1;

  void ClearList();
  // At its sorted place.
  void AddItem(const std::string& item);

  // Shows the address of the tab on show, in the field and in the tab's tool tip. Fails where that tab has
  // lost its browser element.
  void SetAddressText();
  // Writes the whole list to `autocomplete.dat`. Fails where that can't be done.
  void SaveComplete();

 private:
  frmMain& main_;
};
