#pragma once

#include <string>
#include <vector>

#include "core/Slot.h"

class frmCleanup;
class frmCookies;
class frmFilter;
class frmMain;
class frmNewcookies;

// Which cookies there are, and which there were at the start: the list that the windows of this room share.
// A cookie is its source name and nothing else.
class CookieScanner {
 public:
  // Values of CookieTrapMode that the end of the program asks for.
  static constexpr int16_t RemoveNew = 1, ShowNew = 2, RemoveByWords = 3;

  explicit CookieScanner(frmMain& main);
  ~CookieScanner();

  // Replaces lstCookies by what the cache holds now, as far as it can be read.
  void GetCookies();
  // Carries out the chosen clean-up at the end of the program, and ends the process.
  void CleanUp();

  // The cookies that count as old. Whoever scans anew takes them somewhere else first.
  std::vector<std::string> lstCookies;

  Slot<frmCookies> manager;
  Slot<frmNewcookies> newcookies;
  Slot<frmFilter> filter;
  Slot<frmCleanup> cleanup;

 private:
  frmMain& main_;
};
