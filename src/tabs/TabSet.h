#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/Browser.h"
#include "platform/Timer.h"
#include "platform/scene/ControlArray.h"
#include "platform/scene/Scene.h"

class frmMain;

// The tabs: an index into three parallel arrays. Element 0 is permanent; the others come and go, leaving
// holes.
class TabSet {
 public:
  explicit TabSet(frmMain& main);

  ControlArray<Browser> WebBrowser1;
  ControlArray<Surface> picTab;
  ControlArray<Timer> Timer1;  // polls its browser while a load is watched

  int16_t CurrentTab = 0;  // the tab on show

  // A new tab at the end, shown at once, on an address; "home" in any case is the browser's home page. Fails
  // as the steps fail.
  void AddTab(const std::string& address);
  // A new tab at the end for an address that the user chose: in front, or behind the one on show, which
  // stays. A page that closed itself is in nobody's way.
  void AddChosenTab(const std::string& address, bool in_front);
  // A new tab at the end, behind the one on show, for a page that was kept; loaded when it is looked at.
  void AddKeptTab(const KeptPage& page);
  // Shows another tab, as a click on it does.
  void ShowTab(int16_t index);
  // Removes the tab on show, but never tab 0. Ends at the first failure, without a word.
  void DelTab();
  // Removes a tab, but never tab 0, once its page has nothing against it.
  void CloseTab(int16_t index);
  void RemoveAllTabs();
  // Gives the keyboard to the page on show, as far as there is one. What is typed in the address field is
  // given up.
  void FocusPage();
  // Shows the tab `CurrentTab`.
  void UpdateBrowsers();
  // Nothing is to be done when the layout changes.
  void CheckTabLeft() {}

  // Refills the scratch list with the indices of the live tabs, ascending: the list position is a tab's
  // ordinal.
  const std::vector<int16_t>& ListLiveTabs();

 private:
  // Loads a tab's three parts, and says its index. Its button stands nowhere yet.
  int16_t LoadTab();
  // The same, behind the one on show, with its button at the end.
  int16_t LoadTabBehind();
  void RemoveTab(int16_t index);
  void PackTabs();

  frmMain& main_;
  std::vector<int16_t> lstMenu;
};
