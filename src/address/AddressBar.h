#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "address/SortedList.h"
#include "platform/ComboBox.h"
#include "platform/Timer.h"

class frmMain;

// The address field: shows where the tab on show is, sends it where the user types, and completes what is
// typed from the addresses that were typed before.
class AddressBar {
 public:
  explicit AddressBar(frmMain& main);

  std::unique_ptr<ComboBox> Combo1;

  // True from the first change that the user makes to the field until it is confirmed, given up or left: the
  // field is the typist's meanwhile.
  bool Typing() const { return typing_; }

  // Takes the keyboard, with all of the text selected: what is typed next replaces it, whatever address the
  // page has told by then.
  void TakeKeyboard();
  // The same for a new tab, which has nothing to do with what was typed for another.
  void AskForAddress();
  // The same for a search: what is typed next is looked for.
  void TakeSearch();
  // The user gives the field back: it shows what was kept aside.
  void EndTyping();

  void ClearList();
  // At its sorted place, as it stands.
  void AddItem(const std::string& item);

  // Shows the address of the tab on show, in the field and in the tab's tool tip. Fails where that tab has
  // lost its browser element; where it has lost its button only, the field shows the address all the same.
  void SetAddressText();
  // Writes the whole list to `autocomplete.dat`. Fails where that can't be done, and the old file stays.
  void SaveComplete();

 private:
  void Combo1_KeyPress(int16_t KeyAscii);
  void Combo1_KeyUp(int16_t KeyCode);
  // Sends the tab on show to the field's text.
  void Combo1_Click();
  // Shows an item with what stands behind its prefix and the typed characters selected.
  void CompleteWith(const std::string& Item, size_t P, size_t N);
  bool Lists(const std::string& address) const;
  // Sets the text, and the mark of the tab on show; what was selected whole stays so.
  void Show(const std::string& text);
  // Of the tab on show.
  void ShowMark();
  // What stands in the field is no page's address.
  void ShowNoMark();

  frmMain& main_;
  SortedList list_;
  bool typing_ = false;
  bool fresh_ = false;                // the field has been taken whole, and nothing has been typed yet
  std::optional<std::string> aside_;  // what was to be shown meanwhile
  Timer saving_;                      // counts from the first addition that isn't on the disk
};
