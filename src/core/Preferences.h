#pragma once

#include <cstdint>
#include <string>
#include <vector>

class Program;

// The user's settings, as `browser.ini` has them, and the word filters beside it.
class Preferences {
 public:
  std::string SkinFolder;       // "default", or "skins\" and a folder's name
  int16_t HistoryInTab = 0;     // 1: history opens in a new tab
  int16_t SearchInTab = 0;      // 1: the search page opens in a new tab
  std::string SearchPage;       // address
  std::string DefaultPage;      // "home", "about:blank", or an address
  int16_t PopupPolicy = 0;      // 0 none, 1 a new window, 2 a new tab, 3 ask
  int16_t PaintMode = 0;        // 1: a grip drag lays out the edges only
  int16_t NewTabMode = 0;       // 1: the toolbar's new tab starts on the address of the current one
  int16_t AutoCompleteOff = 0;  // 1: no completion
  int16_t CookieTrapMode = 0;   // 0 keep all, 1 remove new ones, 2 show a list, 3 remove by word filters
  std::vector<std::string> lstFilter;  // the lines of `filter.dat`, sorted without regard to case

  // Reads everything anew, the skin included. Fails for a missing `filter.dat`, a number out of range, and an
  // "[AutoComplete]" that is absent or no number.
  void LoadIni(Program& program);
  // New word filters, in any order. Doesn't write the file.
  void SetFilters(std::vector<std::string> words);
};
