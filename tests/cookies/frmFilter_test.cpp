#include "cookies/frmFilter.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>

#include "cookies/CookieRig.h"
#include "platform/Failure.h"

namespace {

class Filter : public testing::Test {
 protected:
  Filter() {
    rig.folder.Write("filter.dat", "b word\r\nAds\r\n");
    rig.program.preferences.LoadIni(rig.program);
  }

  frmFilter& window() { return rig.cookies().filter(); }
  std::string File() { return rig.folder.Read("filter.dat"); }
  void Add(const std::string& word) {
    window().Text1.Text = word;
    rig.Press(window().Command2);
  }

  CookieRig rig;
};

TEST_F(Filter, AddsAtTheEndAndWritesEachTime) {
  EXPECT_EQ(Rows(window().lstFilter), (Names{"Ads", "b word"}));
  Add("Ärger & Co");
  EXPECT_EQ(window().Text1.Text(), "");
  EXPECT_EQ(File(), "Ads\r\nb word\r\nÄrger & Co\r\n");
  window().Text1.Text = " a ";
  rig.Do([this] { window().Text1.Activate(); });  // Enter
  EXPECT_EQ(File(), "Ads\r\nb word\r\nÄrger & Co\r\n a \r\n");

  // A word in another case is there already; an empty box does nothing.
  rig.folder.Write("filter.dat", "");
  Add("äRGER & CO");
  EXPECT_EQ(window().Text1.Text(), "");
  EXPECT_EQ(File(), "Ads\r\nb word\r\nÄrger & Co\r\n a \r\n");
  rig.folder.Write("filter.dat", "");
  Add("");
  EXPECT_EQ(File(), "");
}

TEST_F(Filter, RemovesWhatIsSelected) {
  rig.folder.Write("filter.dat", "");
  rig.Press(window().Command1);
  EXPECT_EQ(File(), "Ads\r\nb word\r\n");
  window().lstFilter.SetSelected(0, true);
  rig.Press(window().Command1);
  EXPECT_EQ(File(), "b word\r\n");
  window().lstFilter.SelectAll();
  rig.Do([this] { window().lstFilter.DeleteKey(); });
  EXPECT_EQ(File(), "");
  EXPECT_EQ(window().lstFilter.ListCount(), 0);
}

TEST_F(Filter, GivesTheWordsToTheCleanUpAtTheClosing) {
  Add("aa");
  EXPECT_EQ(rig.program.preferences.lstFilter, (Names{"Ads", "b word"}));
  rig.Press(window().Command3);
  EXPECT_EQ(rig.program.preferences.lstFilter, (Names{"aa", "Ads", "b word"}));
  EXPECT_FALSE(rig.cookies().filter.Loaded());
}

// A full disk, or what looks like one: the failure names the file, which keeps what it had.
TEST_F(Filter, LeavesTheOldFileWhereTheNewOneCannotBeWritten) {
  window();
  const auto before = signal(SIGXFSZ, SIG_IGN);
  rlimit limit{}, none{};
  getrlimit(RLIMIT_FSIZE, &limit);
  none = limit;
  none.rlim_cur = 4;
  setrlimit(RLIMIT_FSIZE, &none);
  std::string failure;
  try {
    Add("more");
  } catch (const Failure& error) {
    failure = error.what();
  }
  setrlimit(RLIMIT_FSIZE, &limit);
  signal(SIGXFSZ, before);
  EXPECT_NE(failure.find("filter.dat"), failure.npos) << failure;
  EXPECT_EQ(File(), "b word\r\nAds\r\n");
}

}  // namespace
