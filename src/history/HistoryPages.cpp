#include "history/HistoryPages.h"

#include <algorithm>
#include <array>

#include "core/Program.h"
#include "core/frmMain.h"
#include "history/HistoryLog.h"
#include "platform/Failure.h"
#include "platform/Text.h"

namespace {

constexpr std::array Months = {"january", "february", "march",     "april",   "may",      "june",
                               "july",    "august",   "september", "october", "november", "december"};
static_assert(Months.size() == 12);

std::string DayLink(const std::string& name) {
  const std::string link =
      Text::Replace("<a href=\"#link#\" target=\"date\">#linktext#</a><br>", "#link#", "history/" + name);
  return Text::Replace(link, "#linktext#", name.substr(0, name.size() - 4));
}

}  // namespace

void HistoryPages::OpenHistory() {
  Program& program = main_.program;
  const std::string templates = program.AppPath + "\\history.dat";
  const std::string frames = program.general.ReadSectionText(templates, "history");
  const std::string today = "history/" + DayPageName(program.desktop.Now());
  Write(program.AppPath + "\\history.htm", Text::Replace(frames, "#main#", today));
  const std::vector<std::string> File1 = DayPages(program.AppPath + "\\history");
  const std::string contents = program.general.ReadSectionText(templates, "contents");
  SortNames(File1);
  Write(program.AppPath + "\\contents.htm", Text::Replace(contents, "#list#", DayLinks()));
  const std::string address = program.AppPath + "\\History.htm";
  if (program.preferences.HistoryInTab == 1)
    main_.tabs.AddTab(address);
  else
    main_.tabs.WebBrowser1(main_.tabs.CurrentTab).Navigate(address);
}

// The names of the pages in a folder.
std::vector<std::string> HistoryPages::DayPages(const std::string& folder) const {
  if (!main_.program.general.FolderExists(folder))
    throw Failure("The folder of the history's pages, \"" + HostPath(folder) +
                  "\", is missing. Create it, or visit a page, which does");
  std::vector<std::string> names = FileNames(folder);
  std::erase_if(names, [](const std::string& name) { return !Text::LowerCase(name).ends_with(".htm"); });
  return names;
}

void HistoryPages::SortNames(const std::vector<std::string>& names) {
  lstSorted.clear();
  for (const std::string& name : names) lstSorted.push_back({Text::LowerCase(name), name});
  std::sort(lstSorted.begin(), lstSorted.end());
}

// Month by month through the calendar, whatever the year; inside a month by the names' own order. A name that
// tells no month is left out, one that tells two comes twice.
std::string HistoryPages::DayLinks() const {
  std::string links;
  for (const char* month : Months)
    for (const auto& [lower, name] : lstSorted)
      if (lower.find(month) != lower.npos) links += "\r\n" + DayLink(name);
  return links;
}

void HistoryPages::Write(const std::string& path, const std::string& text) {
  FileSlot& slot = main_.program.slot;
  slot.Open(path, FileSlot::Mode::Output);
  slot.Print(text);
  slot.Close();
}
