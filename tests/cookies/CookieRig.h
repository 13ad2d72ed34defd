#pragma once

#include <functional>
#include <string>
#include <vector>

#include "cookies/CookieScanner.h"
#include "cookies/frmCleanup.h"
#include "cookies/frmCookies.h"
#include "cookies/frmFilter.h"
#include "cookies/frmNewcookies.h"
#include "core/Program.h"
#include "core/frmDummy.h"
#include "core/frmMain.h"
#include "fakes/FakeDesktop.h"

using Names = std::vector<std::string>;

inline Names Rows(const Controls::ListBox& list) {
  Names rows;
  for (int i = 0; i < list.ListCount(); ++i) rows.push_back(list.List(i));
  return rows;
}

inline Names Numbered(int count, const std::string& begin = "Cookie:c") {
  Names names;
  for (int i = 0; i < count; ++i) names.push_back(begin + std::to_string(i) + "@site.test/");
  return names;
}

// A program that started with some cookies there.
struct CookieRig {
  explicit CookieRig(const Names& at_start = {}) {
    desktop.cookies.Set(at_start);
    program.Start();
    desktop.log.clear();
  }

  CookieScanner& cookies() { return program.main().cookies; }
  void Do(const std::function<void()>& event) { desktop.Gate.Run(event); }
  void Press(Controls::CommandButton& button) {
    Do([&button] { button.Click(); });
  }
  // Closes the program in a mode, and gives the process's status.
  int CloseIn(int16_t mode) {
    program.preferences.CookieTrapMode = mode;
    try {
      Do([this] { program.dummy.Unload(); });
    } catch (const ProcessEnded& end) {
      return end.status;
    }
    return -1;
  }

  const ProgramFolder folder;
  FakeDesktop desktop{folder.path};
  Program program{desktop};
};
