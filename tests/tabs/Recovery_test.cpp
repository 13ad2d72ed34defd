#include "tabs/Recovery.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>

#include "fakes/Rig.h"

namespace {

using Log = std::vector<std::string>;

KeptTabs LastTime(int count) {
  KeptTabs tabs;
  for (int i = 0; i < count; ++i)
    tabs.Pages.push_back(
        {"http://" + std::to_string(i), "Title " + std::to_string(i), "history " + std::to_string(i)});
  return tabs;
}

std::string Addresses(const std::string& content) {
  const KeptTabs tabs = KeptTabs::Unpack(content);
  std::string all;
  for (size_t i = 0; i < tabs.Pages.size(); ++i)
    all += (i == tabs.Shown ? "*" : "") + tabs.Pages[i].Address + " ";
  return all;
}

TEST(KeptTabs, ComeOutAsTheyWentIn) {
  KeptTabs tabs = LastTime(2);
  tabs.Pages[1] = {"http://a.test/\r\n3:", "", std::string("\0\r\n:9", 5)};
  tabs.Shown = 1;
  const KeptTabs out = KeptTabs::Unpack(tabs.Pack() + "\r\n");
  ASSERT_EQ(out.Pages.size(), 2u);
  EXPECT_EQ(out.Shown, 1u);
  EXPECT_EQ(out.Pages[1].Address, tabs.Pages[1].Address);
  EXPECT_EQ(out.Pages[1].Title, "");
  EXPECT_EQ(out.Pages[1].History, tabs.Pages[1].History);
}

TEST(KeptTabs, GiveWhatIsWholeBeforeAFault) {
  KeptTabs tabs = LastTime(3);
  tabs.Shown = 2;
  const std::string whole = tabs.Pack();
  size_t most = 0;
  for (size_t size = 0; size <= whole.size(); ++size) {
    const KeptTabs cut = KeptTabs::Unpack(std::string_view(whole).substr(0, size));
    EXPECT_GE(cut.Pages.size(), most);
    most = cut.Pages.size();
    EXPECT_TRUE(cut.Pages.empty() || cut.Shown < cut.Pages.size());
  }
  EXPECT_EQ(most, 3u);
  const std::string start = "<Marlowick Tabs>1:0";
  for (const char* wrong :
       {"", "5:http", "-1:a1:b1:c", "99999999999999999999:a", "1:a1:b3:c", ":", "1", "0:0:0:"})
    EXPECT_TRUE(KeptTabs::Unpack(start + wrong).Pages.empty()) << wrong;
  EXPECT_TRUE(KeptTabs::Unpack("<Tab Layout File>\r\nhttp://a.test/").Pages.empty());
  EXPECT_EQ(KeptTabs::Unpack(start + "1:\xFF" + "1:\xFF" + "1:\xFF").Pages.size(), 1u);
}

class Recovered : public testing::Test, protected Rig {
 protected:
  std::string File() {
    main().recovery.Settle();
    return folder.Read("tabs.dat");
  }
  // Another start over what the file holds.
  void StartOver(const std::string& content) {
    folder.Write("tabs.dat", content);
    Do([this] { main().recovery.Begin(); });
  }
  void Answer(bool yes) {
    Do([&] { Page(0).offer(yes); });
  }
  void Change() {
    Do([this] { Page(0).Used(); });
  }
};

TEST_F(Recovered, AreWrittenAtMostOnceInTenSeconds) {
  OpenTabs(1);
  Page(0).url = "http://a";
  Page(1).url = "http://b";
  EXPECT_EQ(File(), "");
  desktop.Advance(1000);
  EXPECT_EQ(Addresses(File()), "http://a *http://b ");
  struct stat status {};
  ASSERT_EQ(::stat((folder.path + "/tabs.dat").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0600u);
  Page(1).url = "http://c";
  Change();
  desktop.Advance(9900);
  EXPECT_EQ(Addresses(File()), "http://a *http://b ");
  desktop.Advance(200);
  EXPECT_EQ(Addresses(File()), "http://a *http://c ");
  ShowTab(0);
  Page(1).secret = true;
  desktop.Advance(10000);
  EXPECT_EQ(Addresses(File()), "*http://a ");
}

TEST_F(Recovered, AreNotWrittenAgainWhileNothingChanges) {
  Page(0).url = "http://a";
  Change();
  desktop.Advance(1000);
  EXPECT_NE(File(), "");
  folder.Write("tabs.dat", "untouched");
  Change();
  desktop.Advance(60000);
  EXPECT_EQ(File(), "untouched") << "the tabs are the same";
  Page(0).url = "http://b";
  Page(0).TitleChange();
  desktop.Advance(60000);
  EXPECT_EQ(File(), "untouched") << "a title that runs is no reason to write";
  Do([this] { Page(0).DocumentComplete(); });
  desktop.Advance(1000);
  EXPECT_EQ(Addresses(File()), "*http://b ");
}

TEST_F(Recovered, LeaveNothingAfterAWishedEnd) {
  Change();
  desktop.Advance(1000);
  EXPECT_NE(File(), "");
  EXPECT_THROW(program.main.Unload(), ProcessEnded);
  EXPECT_FALSE(std::ifstream(folder.path + "/tabs.dat").is_open());
}

TEST_F(Recovered, StayWhenTheSessionEnds) {
  OpenTabs(1);
  Page(1).url = "http://typed.just.now";
  EXPECT_THROW(desktop.SessionEnding(), ProcessEnded);
  EXPECT_NE(Addresses(folder.Read("tabs.dat")).find("*http://typed.just.now"), std::string::npos);
}

TEST_F(Recovered, AreOfferedAndComeBackAsleep) {
  KeptTabs last = LastTime(3);
  last.Shown = 1;
  StartOver(last.Pack());
  EXPECT_EQ(Asked(), (Log{"Offer Marlowick was cut off last time. 3 tabs were open.|_Restore|_Forget"}));
  EXPECT_EQ(tabs().WebBrowser1.UBound(), 0) << "nobody has answered yet";
  Answer(true);
  EXPECT_EQ(Asked(), (Log{"Restore http://0", "Restore http://1", "Restore http://2", "Wake http://1"}));
  EXPECT_EQ(tabs().CurrentTab, 2);
  EXPECT_EQ(tabs().picTab(3).AccessibleName, "Title 2");
  EXPECT_EQ(Page(3).history, "history 2");
  EXPECT_TRUE(Page(1).asleep && Page(3).asleep);
  ShowTab(3);
  EXPECT_FALSE(Page(3).asleep);
  EXPECT_TRUE(Page(1).asleep);
}

TEST_F(Recovered, TakeTheFirstTabWhereItShowsTheSame) {
  Page(0).url = "http://0";
  StartOver(LastTime(2).Pack());
  Answer(true);
  EXPECT_EQ(tabs().WebBrowser1.UBound(), 1);
  EXPECT_EQ(tabs().CurrentTab, 0);
  EXPECT_EQ(Page(0).history, "history 0");
  EXPECT_EQ(Page(1).url, "http://1");
}

TEST_F(Recovered, AreNotLostWhenTheNextRunIsCutOffToo) {
  Page(0).url = "http://new";
  StartOver(LastTime(2).Pack());
  Change();
  desktop.Advance(1000);
  EXPECT_EQ(Addresses(File()), "*http://0 http://1 http://new ");
  Page(0).url = "http://0";
  Change();
  desktop.Advance(10000);
  EXPECT_EQ(Addresses(File()), "*http://0 http://1 ")
      << "the first one is the same, and there is only one of it";
  Answer(false);
  desktop.Advance(10000);
  EXPECT_EQ(Addresses(File()), "*http://0 ");
  EXPECT_EQ(tabs().WebBrowser1.UBound(), 0);
}

TEST_F(Recovered, AreNotOfferedWhereThereIsNothingToTell) {
  Page(0).url = "http://0";
  KeptTabs alone = LastTime(1);
  alone.Pages[0].History.clear();
  folder.Write("tabs.dat.new-4711", "half");
  for (const std::string& content :
       {alone.Pack(), KeptTabs().Pack(), std::string("<Marl"), std::string(9999, '\xFF')}) {
    StartOver(content);
    EXPECT_EQ(Asked(), Log{});
  }
  EXPECT_FALSE(std::ifstream(folder.path + "/tabs.dat.new-4711").is_open())
      << "what a cut-off run began to write";
  StartOver(LastTime(1).Pack());
  EXPECT_EQ(Asked(), (Log{"Offer Marlowick was cut off last time. One tab was open.|_Restore|_Forget"}));
}

TEST_F(Recovered, TellWhereTheyCantBeKept) {
  std::filesystem::create_directory(folder.path + "/tabs.dat");
  Change();
  desktop.Advance(1000);
  main().recovery.Settle();
  EXPECT_TRUE(frame().StatusBar1.Caption().starts_with("The tabs can't be kept: Can't write the file"));
}

}  // namespace
