#include <string>
#include <vector>

#include "Bench.h"
#include "cookies/frmCleanup.h"
#include "cookies/frmNewcookies.h"
#include "core/Program.h"
#include "core/frmDummy.h"
#include "core/frmMain.h"
#include "fakes/FakeDesktop.h"

namespace {

constexpr int Entries = 10'000, Rounds = 31;

// As long as the names of real cookies are.
std::vector<std::string> CookieNames(int count) {
  std::vector<std::string> names;
  for (int i = 0; i < count; ++i)
    names.push_back("Cookie:session_" + std::to_string(i) + "@.site" + std::to_string(i % 997) +
                    ".test/shop/basket");
  return names;
}

// The whole clean-up with so many old and so many new cookies, in microseconds.
double CleanUp(int old, int news) {
  const ProgramFolder folder;
  FakeDesktop desktop(folder.path);
  Program program(desktop);
  std::vector<std::string> names = CookieNames(old + news);
  desktop.cookies.Set({names.begin(), names.begin() + old});
  program.Start();
  desktop.cookies.Set(names);
  program.preferences.CookieTrapMode = 2;
  double reached = 0;
  // Up to where the user is asked.
  desktop.acts = {[&](Dialog&) {
    reached = Now();
    desktop.End(0);
  }};
  const double start = Now();
  try {
    desktop.Gate.Run([&] { program.dummy.Unload(); });
  } catch (const ProcessEnded&) {
  }
  return reached - start;
}

}  // namespace

int main() {
  Report report;
  const ProgramFolder folder;
  FakeDesktop desktop(folder.path);
  Program program(desktop);
  program.Start();
  desktop.cookies.Set(CookieNames(Entries));
  const std::vector<std::string> names = desktop.cookies.Names();
  CookieScanner& cookies = program.main().cookies;

  std::vector<std::string> copy;
  const auto plainly = [&] {
    copy.clear();
    for (const std::string& name : names) copy.push_back(name);
  };
  const std::vector<double> scan = Medians(Rounds, {plainly, [&] { cookies.GetCookies(); }});
  report.Figure("a plain copy of 10,000 names", scan[0], "us");
  report.Figure("GetCookies with 10,000 entries", scan[1], "us");
  report.Ratio("GetCookies against the copy", scan[1] / scan[0], 2);

  frmNewcookies& window = cookies.newcookies();
  window.lstNewCookies.Fill({names.begin(), names.begin() + Entries / 2});
  report.Figure("RefreshLists with 10,000 entries, half of them new",
                Medians(Rounds, {[&] { window.RefreshLists(); }})[0], "us");
  report.Figure("finding 5,000 new ones among 10,000 at the end", CleanUp(Entries / 2, Entries / 2), "us");
  return report.Status();
}
