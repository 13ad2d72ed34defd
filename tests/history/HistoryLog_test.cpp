#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>
#include <filesystem>
#include <fstream>

#include "core/Program.h"
#include "core/frmMain.h"
#include "fakes/FakeDesktop.h"
#include "platform/Failure.h"

namespace {

std::string Entry(const std::string& url, const std::string& title, const std::string& time) {
  return "<font face=\"Arial\"><a href=\"" + url + "\" target=\"_top\">" + title + "</a> at " + time +
         "</font><br>\r\n";
}

std::string Shown(const std::string& url) {
  return "<font face=\"Arial\"><font size=\"1\">" + url + "</font><br>\r\n";
}

class History : public testing::Test {
 protected:
  History() { program.Start(); }

  void Visit(const std::string& url, const std::string& title = "") {
    auto& page = dynamic_cast<FakeBrowser&>(program.main().tabs.WebBrowser1(0));
    page.url = url;
    page.title = title;
    program.main().log.UpDateHistory(0);
  }
  bool Exists(const std::string& name) const { return std::filesystem::exists(folder.path + "/" + name); }

  const ProgramFolder folder;
  FakeDesktop desktop{folder.path};
  Program program{desktop};
};

TEST_F(History, BeginsADaysPageAndTellsEachAddressOnce) {
  desktop.now = {2026, 2, 1, 9, 5, 3};
  Visit("http://one.test/A%20b%20c", "<b>One & \"two\"</b>");
  const std::string first = "<h1>1/2/2026</h1>\r\n" +
                            Entry("http://one.test/A%20b%20c", "<b>One & \"two\"</b>", "09:05:03") +
                            Shown("http://one.test/A b c");
  EXPECT_EQ(folder.Read("history/01 February 2026.htm"), first);

  // The same page with another title, in other case, and with letters beyond the plain ones.
  Visit("http://one.test/A%20b%20c", "Changed");
  Visit("HTTP://ONE.test/a%20B%20C");
  EXPECT_EQ(folder.Read("history/01 February 2026.htm"), first);
  Visit("http://one.test/ÄÖ");
  Visit("http://one.test/äö");
  // An address within another one is no repeat.
  Visit("http://one.test/A");
  EXPECT_EQ(folder.Read("history/01 February 2026.htm"),
            first + Entry("http://one.test/ÄÖ", "", "09:05:03") + Shown("http://one.test/ÄÖ") +
                Entry("http://one.test/A", "", "09:05:03") + Shown("http://one.test/A"));
}

TEST_F(History, LinksToWhatWasVisited) {
  Visit("data:text/html,<a href=\"x\">&amp;</a>");
  Visit("http://one.test/?a=1&b=2&lt=3&c&copy");
  const std::string page = folder.Read("history/22 November 2026.htm");
  for (const char* link : {"<a href=\"data:text/html,<a href=&quot;x&quot;>&amp;amp;</a>\" target=\"_top\">",
                           "<a href=\"http://one.test/?a=1&b=2&lt=3&amp;c&amp;copy\" target=\"_top\">"})
    EXPECT_NE(page.find(link), page.npos) << link;
}

// Another program of the same folder begins the day's page while this one does.
class BusyDesktop : public FakeDesktop {
 public:
  using FakeDesktop::FakeDesktop;
  std::string ShortDate(const Moment& moment) override {
    std::ofstream(folder + "/history/22 November 2026.htm") << "theirs\r\n" << Shown("http://one.test/");
    return FakeDesktop::ShortDate(moment);
  }
};

TEST(HistoryOfTwo, GoesOnWithThePageThatTheOtherHasBegun) {
  const ProgramFolder folder;
  BusyDesktop desktop(folder.path);
  Program program(desktop);
  program.Start();
  auto& page = dynamic_cast<FakeBrowser&>(program.main().tabs.WebBrowser1(0));
  for (const char* url : {"http://one.test/", "http://two.test/"}) {
    page.url = url;
    program.main().log.UpDateHistory(0);
  }
  EXPECT_EQ(folder.Read("history/22 November 2026.htm"), "theirs\r\n" + Shown("http://one.test/") +
                                                             Entry("http://two.test/", "", "20:15:07") +
                                                             Shown("http://two.test/"));
}

TEST_F(History, GoesOnWithANewPageAtMidnight) {
  desktop.now = {2026, 12, 31, 23, 59, 59};
  Visit("http://one.test/");
  desktop.now = {2027, 1, 1, 0, 0, 0};
  Visit("http://one.test/");
  EXPECT_EQ(
      folder.Read("history/31 December 2026.htm"),
      "<h1>31/12/2026</h1>\r\n" + Entry("http://one.test/", "", "23:59:59") + Shown("http://one.test/"));
  EXPECT_EQ(folder.Read("history/01 January 2027.htm"),
            "<h1>1/1/2027</h1>\r\n" + Entry("http://one.test/", "", "00:00:00") + Shown("http://one.test/"));
}

TEST_F(History, WithoutItsTemplateRecordsNothingAndSweepsNoTabAway) {
  folder.Write("history.dat", "[date]\r\nno end");
  auto& main = program.main();
  desktop.Gate.Run([&] { main.tabs.AddTab("http://one.test/"); });
  desktop.Advance(5);
  EXPECT_FALSE(program.slot.IsOpen());
  EXPECT_TRUE(main.tabs.WebBrowser1.Has(1));
  EXPECT_TRUE(main.tabs.picTab.Has(1));
  EXPECT_TRUE(std::filesystem::is_empty(folder.path + "/history"));
  std::filesystem::remove(folder.path + "/history.dat");
  EXPECT_THROW(Visit("http://one.test/"), Failure);

  // The next finished page tries again. A file without the section gives an empty line.
  folder.Write("history.dat", "[other]\r\nx\r\n[end]\r\n");
  Visit("http://one.test/");
  EXPECT_TRUE(folder.Read("history/22 November 2026.htm").starts_with("\r\n<font face"));

  // A page that died in between is still taken away.
  main.tabs.Timer1(1).Enabled = true;
  dynamic_cast<FakeBrowser&>(main.tabs.WebBrowser1(1)).dead = true;
  desktop.Advance(5);
  EXPECT_FALSE(main.tabs.WebBrowser1.Has(1));
}

TEST_F(History, IsNotStoppedByAPageThatOthersHaveFilled) {
  std::string strange = "<h1>\r\n" + std::string(10'000'000, 'x') + "\n";
  for (int i = 0; i < 1000; ++i) strange += static_cast<char>(i);
  folder.Write("history/22 November 2026.htm", strange + "\r\n" + Shown("http://told.test/"));
  Visit("http://told.test/");
  Visit("http://new.test/");
  EXPECT_EQ(folder.Read("history/22 November 2026.htm"), strange + "\r\n" + Shown("http://told.test/") +
                                                             Entry("http://new.test/", "", "20:15:07") +
                                                             Shown("http://new.test/"));
}

TEST_F(History, LosesAnEntryThatCannotBeAppendedAndNothingElse) {
  // A file that the program has open keeps the log from its page, and stays open.
  Visit("http://one.test/");
  const std::string before = folder.Read("history/22 November 2026.htm");
  program.slot.Open(folder.path + "/filter.dat", FileSlot::Mode::Input);
  EXPECT_NO_THROW(Visit("http://two.test/"));
  EXPECT_TRUE(program.slot.IsOpen());
  program.slot.Close();

  // A disk that takes a part of the entry only.
  rlimit usual{};
  getrlimit(RLIMIT_FSIZE, &usual);
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  const rlimit full{before.size() + 10, usual.rlim_max};
  setrlimit(RLIMIT_FSIZE, &full);
  EXPECT_NO_THROW(Visit("http://two.test/"));
  setrlimit(RLIMIT_FSIZE, &usual);
  std::signal(SIGXFSZ, handler);
  EXPECT_EQ(folder.Read("history/22 November 2026.htm"), before);
  Visit("http://two.test/");
  EXPECT_EQ(folder.Read("history/22 November 2026.htm"),
            before + Entry("http://two.test/", "", "20:15:07") + Shown("http://two.test/"));
}

}  // namespace
