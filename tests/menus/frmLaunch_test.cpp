#include "menus/frmLaunch.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "fakes/Rig.h"
#include "menus/frmAddLaunch.h"

namespace {

class LaunchDialogs : public testing::Test, protected Rig {
 protected:
  // Of a dialog's part; the main window has a press of its own.
  static Act Press(const std::string& part) { return ::Press(part); }

  frmLaunch& Open(const std::string& file) {
    program.launch.Unload();
    folder.Write("launch.dat", file);
    Do([this] { main().menus.ShowLaunchDialog(); });
    return program.launch();
  }
  // In the dialog that stands in front; each list of acts is one press of "Add".
  void User(const std::vector<Act>& acts) {
    for (const Act& act : acts) Do([&] { act(program.launch()); });
  }
  void Add(const std::vector<Act>& acts) {
    desktop.acts.assign(acts.begin(), acts.end());
    User({Press("Command1")});
    EXPECT_TRUE(desktop.acts.empty());
  }
  std::string File() const { return folder.Read("launch.dat"); }
};

TEST_F(LaunchDialogs, OnlyCloseSaves) {
  frmLaunch& launch = Open("One\r\n/bin/one\r\nTwo\r\n/bin/two with blank\r\nThree\r\n/bin/three\r\n");
  EXPECT_EQ(launch.lstNameList.ListCount(), 3);
  User({Press("Command2")});  // no row
  EXPECT_EQ(launch.lstNameList.ListCount(), 3);
  User({Select("lstNameList", {1}), Press("Command2")});
  EXPECT_TRUE(File().find("Two") != std::string::npos);
  Add({Type("Text1", "Four"), Type("Text2", " four  --now"), Press("Command1")});
  EXPECT_TRUE(File().find("Two") != std::string::npos);
  User({Press("Command3")});
  EXPECT_EQ(File(), "One\r\n/bin/one\r\nThree\r\n/bin/three\r\nFour\r\n four  --now\r\n");
  EXPECT_FALSE(program.launch.Loaded());
  EXPECT_EQ(main().launch.FillMenu(), "Customise,-,One,Three,Four");
}

TEST_F(LaunchDialogs, ABrokenFileGivesItsWholePairs) {
  EXPECT_EQ(Open("One\r\n/bin/one\r\nTwo\r\n").lstNameList.ListCount(), 1);
  User({Press("Command3")});
  EXPECT_EQ(File(), "One\r\n/bin/one\r\n");
  EXPECT_EQ(Open("").lstNameList.ListCount(), 0);
  std::remove((folder.path + "/launch.dat").c_str());
  program.launch.Unload();
  Do([this] { main().menus.ShowLaunchDialog(); });
  EXPECT_EQ(program.launch().lstNameList.ListCount(), 0);
}

TEST_F(LaunchDialogs, AnEntryNeedsBothTexts) {
  frmLaunch& launch = Open("");
  Add({Press("Command1"), Type("Text1", "Name"), Press("Command1"), Type("Text1", ""), Type("Text2", "run"),
       Press("Command1"), Type("Text1", "Name, and more"), Press("Command1")});
  Add({Type("Text1", "Name"), Type("Text2", "run"), Press("Command2")});
  ASSERT_EQ(launch.lstNameList.ListCount(), 1);
  EXPECT_EQ(launch.lstPathList, std::vector<std::string>{"run"});
  User({Press("Command3")});
  // The comma makes two rows, and shifts what follows.
  EXPECT_EQ(main().launch.FillMenu(), "Customise,-,Name, and more");
  EXPECT_EQ(main().launch.lstLaunchRun.size(), 1u);
}

TEST_F(LaunchDialogs, AProgramIsFoundByItsFileOrByItsName) {
  frmLaunch& launch = Open("");
  desktop.files = {"/opt/a program", ""};
  desktop.applications = {{"Charts, tides", "charts --quiet"}};
  const auto expect = [](const std::string& name, const std::string& command) {
    return [=](Dialog& dialog) {
      EXPECT_EQ(dynamic_cast<Controls::TextBox&>(dialog.Part("Text1")).Text(), name);
      EXPECT_EQ(dynamic_cast<Controls::TextBox&>(dialog.Part("Text2")).Text(), command);
    };
  };
  Add({Press("Command3"), expect("", "/opt/a program"), Press("Command3"), expect("", "/opt/a program"),
       Press("Command4"), expect("Charts tides", "charts --quiet"), Press("Command4"),
       expect("Charts tides", "charts --quiet"), Press("Command1")});
  EXPECT_EQ(launch.lstPathList, std::vector<std::string>{"charts --quiet"});
  const std::vector<std::string> asked = Asked();
  EXPECT_EQ(std::count(asked.begin(), asked.end(),
                       "ShowOpen Add to launch menu|Applications (*.exe)|*.exe|All files (*.*)|*.*"),
            2);
}

}  // namespace
