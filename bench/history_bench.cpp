#include <filesystem>
#include <fstream>

#include "Bench.h"
#include "core/Program.h"
#include "core/frmMain.h"
#include "fakes/FakeDesktop.h"
#include "platform/Files.h"

namespace {

constexpr int Entries = 10'000, Days = 3'650, Rounds = 31;
constexpr double FrameMicroseconds = 16'000, ShownMicroseconds = 100'000;

// Fills today's page with addresses that differ from each other and from the one that is to be found new.
void FillDay(Program& program) {
  auto& page = dynamic_cast<FakeBrowser&>(program.main().tabs.WebBrowser1(0));
  page.url = "http://site.test/first";
  program.main().log.UpDateHistory(0);
  FileSlot& slot = program.slot;
  slot.Open(program.AppPath + "\\history\\22 November 2026.htm", FileSlot::Mode::Append);
  for (int i = 1; i < Entries; ++i) {
    const std::string url = "http://site" + std::to_string(i % 97) + ".test/news/page" + std::to_string(i);
    slot.Print("<font face=\"Arial\"><a href=\"" + url + "\" target=\"_top\">The title of page " +
               std::to_string(i) + "</a> at 20:15:07</font><br>");
    slot.Print("<font face=\"Arial\"><font size=\"1\">" + url + "</font><br>");
  }
  slot.Close();
}

void FillFolder(const TemporaryFolder& folder) {
  for (int i = 0; i < Days; ++i) {
    const Moment day{2015 + i / 365, 1 + i % 365 / 31, 1 + i % 365 % 31};
    folder.Write("history/" + DayPageName(day), "");
  }
}

}  // namespace

int main() {
  Report report;
  const ProgramFolder folder;
  FakeDesktop desktop(folder.path);
  Program program(desktop);
  program.Start();

  FillDay(program);
  const std::string day = folder.path + "/history/22 November 2026.htm";
  auto& page = dynamic_cast<FakeBrowser&>(program.main().tabs.WebBrowser1(0));
  // Into a string of its own, and for comparison into memory that is there and warm already.
  const auto read = [&day](std::string& room) {
    std::ifstream(day).read(room.data(), static_cast<std::streamsize>(room.size()));
  };
  std::string warm(std::filesystem::file_size(day), '\0');
  int visit = 0;
  const std::vector<double> log =
      Medians(Rounds, {[&] {
                         std::string room(std::filesystem::file_size(day), '\0');
                         read(room);
                       },
                       [&] { read(warm); },
                       [&] {
                         page.url = "http://site5.test/news/new" + std::to_string(++visit);
                         program.main().log.UpDateHistory(0);
                       }});
  report.Figure("a day's page of 10,000 entries", static_cast<double>(std::filesystem::file_size(day)) / 1024,
                "KiB");
  report.Figure("one plain read of it", log[0], "us");
  report.Figure("one into warm memory", log[1], "us");
  report.Figure("UpDateHistory with a new address", log[2], "us");
  report.Ratio("UpDateHistory against the plain read", log[2] / log[0], 3);
  report.Figure("UpDateHistory against the one into warm memory", log[2] / log[1], "times");
  report.Ratio("UpDateHistory against a frame of 16 ms", log[2] / FrameMicroseconds, 1);

  FillFolder(folder);
  const std::vector<double> pages = Medians(
      Rounds, {[&] { FileNames(folder.path + "/history"); }, [&] { program.main().history.OpenHistory(); }});
  report.Figure("one plain listing of 3,650 days", pages[0], "us");
  report.Figure("OpenHistory with them", pages[1], "us");
  const double waited = Medians(Rounds, {[&] { program.main().history.OpenHistory(); }}, WallTime)[0];
  report.Figure("OpenHistory by the clock on the wall, its files on the disk", waited, "us");
  report.Figure("OpenHistory against the listing", pages[1] / pages[0], "times");
  report.Ratio("OpenHistory against 100 ms", pages[1] / ShownMicroseconds, 1);
  return report.Status();
}
