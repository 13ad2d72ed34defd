// A tab more and a tab less, with 10, 100 and 1,000 tabs of a page that costs nothing.

#include "Bench.h"
#include "core/Program.h"
#include "core/frmMain.h"
#include "fakes/FakeDesktop.h"

namespace {

// Ten times the tabs may cost ten times the time, and a little for what the machine does besides.
constexpr double LinearGrowth = 10, Slack = 1.15;
constexpr int Rounds = 51;

// A program of its own with so many tabs.
class Tabs {
 public:
  explicit Tabs(int count) : desktop_(folder_.path), program_(desktop_) {
    program_.Start();
    while (Set().WebBrowser1.UBound() < count - 1) {
      Add();
      static_cast<FakeBrowser&>(Set().WebBrowser1(Set().CurrentTab)).title =
          "Page " + std::to_string(Set().CurrentTab);
    }
  }

  void Add() {
    desktop_.Gate.Run([this] { Set().AddTab("http://page.test/"); });
  }
  void Delete() {
    desktop_.Gate.Run([this] { Set().DelTab(); });
  }

 private:
  TabSet& Set() { return program_.main().tabs; }

  ProgramFolder folder_;
  FakeDesktop desktop_;
  Program program_;
};

}  // namespace

int main() {
  Tabs ten(10), hundred(100), thousand(1000);
  std::vector<std::function<void()>> ways;
  for (Tabs* tabs : {&ten, &hundred, &thousand}) {
    ways.push_back([tabs] { tabs->Add(); });
    ways.push_back([tabs] { tabs->Delete(); });
  }
  const auto times = Medians(Rounds, ways);

  Report report;
  double before = 0;
  for (size_t i = 0; i < ways.size(); i += 2) {
    const std::string name = std::vector{"10", "100", "1,000"}[i / 2] + std::string(" tabs");
    report.Figure("AddTab with " + name, times[i], "us");
    report.Figure("DelTab with " + name, times[i + 1], "us");
    const double both = times[i] + times[i + 1];
    if (before > 0) report.Ratio("growth to " + name, both / before, LinearGrowth * Slack);
    before = both;
  }
  return report.Status();
}
