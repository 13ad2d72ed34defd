#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "core/Program.h"
#include "core/frmMain.h"
#include "fakes/FakeDesktop.h"
#include "platform/Failure.h"

namespace {

class HistoryShown : public testing::Test {
 protected:
  HistoryShown() {
    program.Start();
    std::filesystem::create_directory(folder.path + "/history");
  }

  void Days(const std::vector<std::string>& names) {
    for (const std::string& name : names) folder.Write("history/" + name, "");
  }

  const ProgramFolder folder;
  FakeDesktop desktop{folder.path};
  Program program{desktop};
};

std::string Link(const std::string& day) {
  return "\r\n<a href=\"history/" + day + ".htm\" target=\"date\">" + day + "</a><br>";
}

TEST_F(HistoryShown, ListsTheDaysByMonthThenDayThenYear) {
  folder.Write("history.dat",
               "[contents]\r\n<#list#>\r\n<#list#>\r\n[END]\r\n[History]\r\n<#main#>\r\n#main#\r\n[end]\r\n");
  Days({"15 March 2002.htm", "02 March 2003.htm", "02 March 2001.htm", "31 December 1999.htm",
        "01 January 2027.HTM", "28 FEBRUARY 2026.htm", "a May in June.htm", "notes.htm", "March.txt",
        "05 March 2001.htm.bak"});
  program.main().history.OpenHistory();
  const std::string list = Link("01 January 2027").replace(34, 4, ".HTM") + Link("28 FEBRUARY 2026") +
                           Link("02 March 2001") + Link("02 March 2003") + Link("15 March 2002") +
                           Link("a May in June") + Link("a May in June") + Link("31 December 1999");
  EXPECT_EQ(folder.Read("contents.htm"), "<" + list + ">\r\n<" + list + ">\r\n");
  EXPECT_EQ(folder.Read("history.htm"), "<history/22 November 2026.htm>\r\nhistory/22 November 2026.htm\r\n");
}

TEST_F(HistoryShown, OpensInTheTabOnShowOrInANewOne) {
  program.main().history.OpenHistory();
  EXPECT_EQ(folder.Read("contents.htm"), "\r\n");
  const std::string opened = "Navigate " + folder.path + "\\History.htm";
  EXPECT_EQ(desktop.log.back(), opened);
  EXPECT_EQ(program.main().tabs.WebBrowser1.UBound(), 0);
  program.preferences.HistoryInTab = 1;
  program.main().history.OpenHistory();
  EXPECT_EQ(std::count(desktop.log.begin(), desktop.log.end(), opened), 2);
  EXPECT_EQ(program.main().tabs.CurrentTab, 1);
  // Any other value than 1: into the tab on show, wherever it stands.
  program.preferences.HistoryInTab = 2;
  for (const int shown : {0, 1}) {
    program.main().tabs.CurrentTab = static_cast<int16_t>(shown);
    for (const int index : {0, 1})
      dynamic_cast<FakeBrowser&>(program.main().tabs.WebBrowser1(index)).url.clear();
    program.main().history.OpenHistory();
    EXPECT_EQ(program.main().tabs.WebBrowser1.UBound(), 1);
    EXPECT_EQ(program.main().tabs.WebBrowser1(shown).LocationURL(), folder.path + "\\History.htm");
    EXPECT_EQ(program.main().tabs.WebBrowser1(1 - shown).LocationURL(), "");
  }
}

TEST_F(HistoryShown, FailsWithWhatIsMissingAndLeavesOldPagesWhole) {
  program.main().history.OpenHistory();
  const std::string before = folder.Read("contents.htm");
  folder.Write("history.dat", "[history]\r\nnew\r\n[end]\r\n[contents]\r\nno end");
  EXPECT_THROW(program.main().history.OpenHistory(), Failure);
  EXPECT_EQ(folder.Read("contents.htm"), before);
  folder.Write("history.dat", "[history]\r\nnew\r\n[end]\r\n[contents]\r\n#list#\r\n[end]\r\n");
  std::filesystem::remove(folder.path + "/history");
  try {
    program.main().history.OpenHistory();
    FAIL();
  } catch (const Failure& failure) {
    EXPECT_NE(std::string(failure.what()).find(folder.path + "/history"), std::string::npos);
  }
}

}  // namespace
