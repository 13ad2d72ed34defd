// A tab more and a tab less, with 10, 100 and 1,000 tabs of a page that costs nothing.

#include <cmath>

#include "Bench.h"
#include "core/Program.h"
#include "core/frmMain.h"
#include "fakes/FakeDesktop.h"

namespace {

// Ten times the tabs may cost ten times the time, and a little for what the machine does besides.
constexpr double LinearGrowth = 10, Slack = 1.15;

}  // namespace

int main() {
  const ProgramFolder folder;
  FakeDesktop desktop(folder.path);
  Program program(desktop);
  program.Start();
  TabSet& tabs = program.main().tabs;

  Report report;
  double before = 0;
  for (const int count : {10, 100, 1000}) {
    while (tabs.WebBrowser1.UBound() < count - 1)
      desktop.Gate.Run([&] {
        tabs.AddTab("http://page.test/" + std::to_string(tabs.WebBrowser1.UBound()));
        static_cast<FakeBrowser&>(tabs.WebBrowser1(tabs.CurrentTab)).title =
            "Page " + std::to_string(tabs.CurrentTab);
      });
    const auto times = Medians(21, {[&] { desktop.Gate.Run([&] { tabs.AddTab("http://page.test/"); }); },
                                    [&] { desktop.Gate.Run([&] { tabs.DelTab(); }); }});
    const std::string name = std::to_string(count) + " tabs";
    report.Figure("AddTab with " + name, times[0], "us");
    report.Figure("DelTab with " + name, times[1], "us");
    const double both = times[0] + times[1];
    if (before > 0) report.Ratio("growth to " + name, both / before, LinearGrowth * Slack);
    before = both;
    desktop.log.clear();
  }
  return report.Status();
}
