#pragma once

class frmMain;

// Which cookies were there at the start, and what becomes of the others. Not built yet: both calls stand at
// their places in the start and the end, and do nothing; every cookie is kept.
class CookieScanner {
 public:
  explicit CookieScanner(frmMain& main) : main_(main) {}

  // Takes the baseline.
  void GetCookies();
  // Carries out the chosen clean-up at the end of the program.
  void CleanUp();

 private:
  frmMain& main_;
};
