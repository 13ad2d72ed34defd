#include "menus/Keys.h"

#include <gtest/gtest.h>

#include "menus/MenuRig.h"

namespace {

using Texts = std::vector<std::string>;

class KeyTable : public ::testing::Test {
 protected:
  bool Press(const KeyPress& press) {
    bool used = false;
    rig.desktop.Gate.Run([&] { used = rig.main().keys.Pressed(press); });
    return used;
  }
  bool Control(const char* name) { return Press({name, true, false, false}); }
  MenuRig rig;
};

TEST_F(KeyTable, DoesWhatEachKeyStandsFor) {
  const std::vector<std::pair<KeyPress, Texts>> expected = {
      {{"f", true}, {"ShowFind"}},
      {{"F", true}, {"ShowFind"}},
      {{"p", true}, {"ShowPrint"}},
      {{"s", true}, {"ExecWB 4 0"}},
      {{"n", true}, {"OpenWindow"}},
      {{"o", true},
       {"ShowOpen Open Local Web Page|Web Pages (*.htm;*.html)|*.htm;*.html|All files (*.*)|*.*"}},
      {{"r", true}, {"Refresh"}},
      {{"R", true, true}, {"RefreshPastCache"}},
      {{"F5", true}, {"RefreshPastCache"}},
      {{"Refresh"}, {"Refresh"}},
      {{"Stop"}, {"Stop"}},
      {{"Back"}, {"GoBack"}},
      {{"Forward"}, {"GoForward"}},
      {{"Home", false, false, true}, {"GoHome"}},
      {{"HomePage"}, {"GoHome"}},
      {{"g", true}, {"FindNext"}},
      {{"F3"}, {"FindNext"}},
      {{"F3", false, true}, {"FindPrevious"}},
      {{"u", true}, {"Navigate view-source:"}},
      {{"F12"}, {"ShowInspector"}},
      {{"I", true, true}, {"ShowInspector"}},
      {{"F7"}, {"SwitchCaret"}},
      {{"F5"}, {"Refresh"}},
      {{"plus", true, true}, {"Zoom 1"}},
      {{"equal", true}, {"Zoom 1"}},
      {{"KP_Subtract", true}, {"Zoom -1"}},
      {{"0", true}, {"Zoom 0"}},
      {{"Left", false, false, true}, {"GoBack"}},
      {{"Right", false, false, true}, {"GoForward"}},
  };
  for (const auto& [press, asked] : expected) {
    EXPECT_TRUE(Press(press)) << press.Name;
    EXPECT_EQ(rig.Asked(), asked) << press.Name;
  }
  // Others are the page's and the field's.
  for (const KeyPress& press :
       {KeyPress{"f"}, KeyPress{"f", true, true}, KeyPress{"f", true, false, true}, KeyPress{"Left"},
        KeyPress{"Tab"}, KeyPress{"F5", false, true}, KeyPress{"", true}})
    EXPECT_FALSE(Press(press)) << press.Name;
  EXPECT_TRUE(rig.Asked().empty());
  rig.Page(0).fails = rig.Page(0).dead = true;
  for (const auto& [press, asked] : expected) EXPECT_NO_THROW(Press(press)) << press.Name;
}

TEST_F(KeyTable, OpensClosesAndWalksTheLiveTabs) {
  TabSet& tabs = rig.main().tabs;
  for (int i = 0; i < 4; ++i) EXPECT_TRUE(Control("t"));
  rig.Page(2).dead = true;
  EXPECT_EQ(tabs.CurrentTab, 4);
  std::vector<int> walk;
  for (int i = 0; i < 4; ++i) {
    EXPECT_TRUE(Control("Tab"));
    walk.push_back(tabs.CurrentTab);
  }
  EXPECT_EQ(walk, (std::vector<int>{0, 1, 3, 4}));
  EXPECT_EQ(rig.desktop.keyboard, &tabs.WebBrowser1(4));
  for (const char* name : {"Tab", "ISO_Left_Tab", "ISO_Left_Tab", "ISO_Left_Tab"}) {
    Press({name, true, true, false});
    walk.push_back(tabs.CurrentTab);
  }
  EXPECT_EQ(walk, (std::vector<int>{0, 1, 3, 4, 3, 1, 0, 4}));
  walk.clear();
  for (const char* digit : {"1", "3", "9", "2", "8"}) {
    EXPECT_TRUE(Control(digit));
    walk.push_back(tabs.CurrentTab);
  }
  EXPECT_EQ(walk, (std::vector<int>{0, 3, 4, 1, 1}));
  EXPECT_TRUE(Control("Page_Up") && Control("Page_Up"));
  EXPECT_EQ(tabs.CurrentTab, 4);
  Control("w");
  EXPECT_FALSE(tabs.WebBrowser1.Has(4));
  tabs.CurrentTab = 0;
  EXPECT_TRUE(Control("w"));
  EXPECT_TRUE(tabs.WebBrowser1.Has(3));
  EXPECT_EQ(tabs.CurrentTab, 0);
}

TEST_F(KeyTable, SelectsTheAddress) {
  auto& Combo1 = static_cast<FakeComboBox&>(*rig.main().address.Combo1);
  Combo1.SetText("http://pagé.test/");
  Control("l");
  EXPECT_EQ(Combo1.start, 0);
  EXPECT_EQ(Combo1.length, 17);
}

TEST_F(KeyTable, EscapeEndsAMenuFirstThenALoad) {
  rig.Page(0).busy = true;
  rig.Open(rig.bar().mnuFile);
  EXPECT_TRUE(Press({"Escape"}));
  EXPECT_FALSE(rig.program.popup_menu.Loaded());
  EXPECT_EQ(rig.state().MenuMode, 0);
  EXPECT_TRUE(rig.Asked().empty());
  // The page and the field get it too.
  EXPECT_FALSE(Press({"Escape"}));
  EXPECT_EQ(rig.Asked(), Texts{"Stop"});
  // A bar over the page goes first, and keeps the key.
  rig.Page(0).bar = true;
  EXPECT_TRUE(Press({"Escape"}));
  EXPECT_FALSE(rig.Page(0).bar);
  EXPECT_TRUE(rig.Asked().empty());
  // A typist's field comes before all of them; the other way leads to the page.
  static_cast<FakeComboBox&>(*rig.main().address.Combo1).Type("x");
  rig.Page(0).bar = true;
  EXPECT_FALSE(Press({"Escape"}));
  EXPECT_FALSE(Press({"Escape", false, true}));
  EXPECT_TRUE(rig.Page(0).bar);
  EXPECT_TRUE(rig.Asked().empty());
  EXPECT_EQ(rig.desktop.keyboard, &rig.Page(0));
  EXPECT_FALSE(rig.main().address.Typing());
  rig.Page(0).busy = rig.Page(0).bar = false;
  EXPECT_FALSE(Press({"Escape"}));
  EXPECT_TRUE(rig.Asked().empty());
}

}  // namespace
