#include "history/HistoryLog.h"

#include "core/Program.h"
#include "core/frmMain.h"
#include "platform/Text.h"

namespace {

// Of the names that stand for characters in HTML.
constexpr const char* NameCharacters = "#0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";

std::string TwoDigits(int number) { return (number < 10 ? "0" : "") + std::to_string(number); }

std::string TimeOfDay(const Moment& now) {
  return TwoDigits(now.Hour) + ":" + TwoDigits(now.Minute) + ":" + TwoDigits(now.Second);
}

// An address between the quotes of a link, so that the link leads to it and nowhere else. Nearly every
// address stands there as it is: only a quote would end it early, and what reads like a character's name
// would be taken for the character.
std::string Quoted(const std::string& address) {
  std::string quoted;
  for (size_t at = 0; at < address.size(); ++at) {
    const size_t end = address.find_first_not_of(NameCharacters, at + 1);
    const bool name = address[at] == '&' && end != at + 1 && (end == address.npos || address[end] != '=');
    if (address[at] == '"')
      quoted += "&quot;";
    else
      quoted += name ? "&amp;" : address.substr(at, 1);
  }
  return quoted;
}

}  // namespace

std::string DayPageName(const Moment& day) {
  return TwoDigits(day.Day) + " " + MonthName(day.Month) + " " + std::to_string(day.Year) + ".htm";
}

void HistoryLog::UpDateHistory(int16_t Index) {
  Program& program = main_.program;
  Browser& browser = main_.tabs.WebBrowser1(Index);
  const Moment now = program.desktop.Now();
  const std::string url = browser.LocationURL();
  const std::string entry_line = "<font face=\"Arial\"><a href=\"" + Quoted(url) + "\" target=\"_top\">" +
                                 browser.LocationName() + "</a> at " + TimeOfDay(now) + "</font><br>";
  // Two elements are opened and one is closed: pages of all ages have it so, and the comparison needs it so.
  const std::string address_line =
      Text::Replace("<font face=\"Arial\"><font size=\"1\">" + url + "</font><br>", "%20", " ");

  const std::string folder = program.AppPath + "\\history";
  const std::string page = folder + "\\" + DayPageName(now);
  if (!program.general.FolderExists(folder)) MakeFolder(folder);
  if (!program.general.FileExists(page)) {
    const std::string beginning = program.general.ReadSectionText(program.AppPath + "\\history.dat", "date");
    program.slot.Open(page, FileSlot::Mode::Create);
    program.slot.Print(Text::Replace(beginning, "#date#", program.desktop.ShortDate(now)));
    program.slot.Close();
  }
  // In a new page as well: it may be another program's, begun in the meantime.
  const bool Found = HasLine(page, address_line);
  if (Found) return;
  Skipping([&] {
    program.slot.Open(page, FileSlot::Mode::Append);
    program.slot.Print(entry_line);
    program.slot.Print(address_line);
    program.slot.Close();
  });
}

// Whether a page has a line, without regard to case; as far as the page can be read.
bool HistoryLog::HasLine(const std::string& page, const std::string& line) {
  FileSlot& slot = main_.program.slot;
  bool Found = false;
  Skipping([&] {
    slot.Open(page, FileSlot::Mode::Input);
    Skipping([&] {
      while (!Found && !slot.EndOfFile()) Found = Text::SameWithoutCase(slot.LineView(), line);
    });
    slot.Close();
  });
  return Found;
}
