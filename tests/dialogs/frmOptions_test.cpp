#include "dialogs/frmOptions.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "fakes/BmpFile.h"
#include "fakes/Rig.h"
#include "platform/Failure.h"

namespace {

const std::string Notice =
    "MsgBox Marlowick Information|You will need to restart Marlowick to display the skin you have selected.";

class Options : public testing::Test, protected Rig {
 protected:
  // Of a dialog's part; the main window has a press of its own.
  static Act Press(const std::string& part) { return ::Press(part); }

  frmOptions& Open() {
    Do([this] { main().menus.ShowOptions(); });
    return program.options();
  }
  void User(const std::vector<Act>& acts) {
    frmOptions& options = program.options();
    for (const Act& act : acts) Do([&] { act(options); });
  }
  std::string Ini() const { return folder.Read("browser.ini"); }

  // A skin whose preview is as wide as its name is long.
  void Skin(const std::string& name, const std::string& ini) const {
    folder.Write("skins/" + name + "/skin.ini", ini);
    folder.Write("skins/" + name + "/preview.bmp",
                 BmpFile(static_cast<int>(name.size()), 2, [](int, int) { return 0xFF0000u; }));
  }
  void NamedSkins() const {
    Skin("Brass", "[name]\r\nBrass\r\n[description]\r\nYellow\r\n");
    Skin("Copper", "[name]\r\nCopper\r\n[description]\r\nRed\r\n");
  }
  bool Told() {
    const std::vector<std::string> asked = Asked();
    return std::count(asked.begin(), asked.end(), Notice) == 1;
  }
};

TEST_F(Options, OkWithoutAChangeWritesWhatWasThere) {
  const std::string delivered = ReadWholeFile(MARLOWICK_DATA_DIR "/browser.ini");
  folder.Write("browser.ini", delivered);
  Do([this] { program.preferences.LoadIni(program); });
  Open();
  User({Press("Command2")});
  EXPECT_EQ(Ini(), delivered);
  EXPECT_FALSE(program.options.Loaded());
}

TEST_F(Options, EveryControlReachesItsKeyAndComesBack) {
  Open();
  User({Press("Option2"), Press("Check1"), Press("Option4"), Type("Text2", "find \u00FC"), Press("Option7"),
        Press("Check4"), Press("Option13"), Press("Command2")});
  EXPECT_EQ(Ini(),
            "[Skin]\r\ndefault\r\n\r\n[History]\r\n 1\r\n\r\n[SearchTab]\r\n 0\r\n\r\n[Search]\r\nfind "
            "\u00FC\r\n\r\n"
            "[Default]\r\nabout:blank\r\n\r\n[Popups]\r\n1\r\n\r\n[Paint]\r\n 0\r\n\r\n[NewTab]\r\n1\r\n\r\n"
            "[AutoComplete]\r\n 1\r\n\r\n[CookieTrap]\r\n3\r\n\r\n\r\n");
  const Preferences& now = program.preferences;
  EXPECT_EQ(now.NewTabMode, 1);
  EXPECT_EQ(now.HistoryInTab, 1);
  EXPECT_EQ(now.SearchInTab, 0);
  EXPECT_EQ(now.SearchPage, "find \u00FC");
  EXPECT_EQ(now.DefaultPage, "about:blank");
  EXPECT_EQ(now.PopupPolicy, 1);
  EXPECT_EQ(now.AutoCompleteOff, 1);
  EXPECT_EQ(now.CookieTrapMode, 3);

  frmOptions& again = Open();
  EXPECT_TRUE(again.Option2.Value && again.Option4.Value && again.Option7.Value && again.Option13.Value);
  EXPECT_EQ(again.Check1.Value + again.Check4.Value, 2);
  EXPECT_EQ(again.Check2.Value + again.Check3.Value, 0);
  User({Press("Option1"), Press("Check1"), Press("Check2"), Press("Check3"), Press("Option5"),
        Type("Text1", ""), Type("Text2", ""), Press("Option8"), Press("Check4"), Press("Option11"),
        Press("Command2")});
  EXPECT_EQ(Ini(),
            "[Skin]\r\ndefault\r\n\r\n[History]\r\n 0\r\n\r\n[SearchTab]\r\n 1\r\n\r\n[Search]\r\n\r\n\r\n"
            "[Default]\r\n\r\n\r\n[Popups]\r\n2\r\n\r\n[Paint]\r\n 1\r\n\r\n[NewTab]\r\n0\r\n\r\n"
            "[AutoComplete]\r\n 0\r\n\r\n[CookieTrap]\r\n1\r\n\r\n\r\n");
  EXPECT_EQ(now.PaintMode + now.SearchInTab, 2);
  EXPECT_EQ(now.HistoryInTab + now.NewTabMode + now.AutoCompleteOff, 0);
  // An empty page of one's own is one's own still.
  EXPECT_TRUE(Open().Option5.Value);
}

TEST_F(Options, AGroupWithoutAChoiceWritesNoSection) {
  program.preferences.PopupPolicy = 7;
  program.preferences.CookieTrapMode = -1;
  program.preferences.DefaultPage = "HOME";
  EXPECT_TRUE(Open().Option3.Value);
  User({Press("Command2")});
  EXPECT_EQ(Ini().find("[Popups]"), std::string::npos);
  EXPECT_EQ(Ini().find("[CookieTrap]"), std::string::npos);
  EXPECT_NE(Ini().find("[Default]\r\nhome\r\n"), std::string::npos);
  EXPECT_EQ(program.preferences.PopupPolicy, 0);
}

TEST_F(Options, CancelAndAnotherWindowChangeNothing) {
  folder.Write("browser.ini", Ini() + "as it was");
  Open();
  User({Press("Option2"), Press("Check1"), GoElsewhere()});
  EXPECT_TRUE(Asked().back() == "SetFocus frmOptions");
  User({Press("Command1")});
  EXPECT_TRUE(Ini().ends_with("as it was"));
  EXPECT_EQ(program.preferences.NewTabMode, 0);
  EXPECT_FALSE(Open().Option2.Value);
}

TEST_F(Options, WhatCantBeChosenCantBeTyped) {
  frmOptions& options = Open();
  const auto own_page = [&] { return options.Text1.Enabled && options.Text1.BackColor == SystemColour(5); };
  EXPECT_FALSE(own_page());
  EXPECT_EQ(options.Text1.BackColor(), SystemColour(15));
  User({Press("Option5")});
  EXPECT_TRUE(own_page());
  for (const char* other : {"Option4", "Option5", "Option3"}) User({Press(other)});
  EXPECT_FALSE(own_page());
  EXPECT_FALSE(options.Command5.Enabled);
  for (const char* trap : {"Option10", "Option11", "Option12"}) {
    User({Press("Option13")});
    EXPECT_TRUE(options.Command5.Enabled);
    User({Press(trap)});
    EXPECT_FALSE(options.Command5.Enabled) << trap;
  }
  program.options.Unload();
  program.preferences.CookieTrapMode = 3;
  program.preferences.DefaultPage = "http://own.test/";
  frmOptions& again = Open();
  EXPECT_TRUE(again.Command5.Enabled);
  EXPECT_TRUE(again.Option5.Value && again.Text1.Enabled);
  EXPECT_EQ(again.Text1.Text(), "http://own.test/");
}

TEST_F(Options, ASkinIsShownBeforeItIsTaken) {
  NamedSkins();
  frmOptions& options = Open();
  EXPECT_EQ(options.List1.ListCount(), 3);
  EXPECT_EQ(options.List1.ListIndex(), -1);
  EXPECT_EQ(options.List1.List(0) + options.List1.List(1) + options.List1.List(2), "DefaultBrassCopper");
  EXPECT_EQ(options.Label6.Caption(), "Default");
  EXPECT_EQ(options.Label7.Caption(), "Default Marlowick Skin. Included with Version 0.6a onwards.");
  ASSERT_TRUE(options.Image1.Picture());
  User({Select("List1", {2})});
  EXPECT_EQ(options.Label6.Caption(), "Copper");
  EXPECT_EQ(options.Label7.Caption(), "Red");
  EXPECT_EQ(options.Image1.Picture()->Width, 6);
  EXPECT_EQ(program.preferences.SkinFolder, "default");
  User({Press("Command2")});
  EXPECT_EQ(program.preferences.SkinFolder, "skins\\Copper");
  EXPECT_TRUE(Ini().starts_with("[Skin]\r\nskins\\Copper\r\n"));
  EXPECT_FALSE(Told());
  EXPECT_EQ(Open().Label6.Caption(), "Copper");
}

TEST_F(Options, DefaultBehindAFolderNeedsARestart) {
  NamedSkins();
  Open();
  // Default over Default needs none; over what was only looked at, it does.
  User({Select("List1", {0}), Press("Command2")});
  EXPECT_FALSE(Told());
  Open();
  User({Select("List1", {1}), Select("List1", {0}), Press("Command2")});
  EXPECT_TRUE(Told());
  EXPECT_EQ(program.SkinRestartNeeded, 0);
  EXPECT_EQ(program.preferences.SkinFolder, "default");
  // A folder behind it takes the need away, and so does Default chosen once more.
  program.preferences.SkinFolder = "skins\\Brass";
  Open();
  User({Select("List1", {0})});
  EXPECT_EQ(program.SkinRestartNeeded, 1);
  User({Select("List1", {2}), Press("Command2")});
  EXPECT_FALSE(Told());
  EXPECT_EQ(program.preferences.SkinFolder, "skins\\Copper");
  Open();
  User({Select("List1", {0}), Select("List1", {}), Select("List1", {0})});
  EXPECT_EQ(program.SkinRestartNeeded, 0);
}

TEST_F(Options, OddSkinsAreShownAsWellAsTheyCanBe) {
  folder.Write("skins/a file", "no skin");
  folder.Write("skins/b-empty/readme", "");
  folder.Write("skins/c-broken/preview.bmp", "BM and nothing more");
  folder.Write("skins/c-broken/skin.ini", "[description]\r\nIt ends with a key\r\n[name]");
  Skin("d-long", "[name]\r\n" + std::string(5000, 'x') + "\r\n");
  Skin("e-script", "[name]\r\n\u6E2F\u53E3 \u0645\u0631\u0641\u0623\r\n[description]\r\n\xFF\xC3(\r\n");
  Skin("f-last", "[name]\r\nLast\r\n");
  frmOptions& options = Open();
  ASSERT_EQ(options.List1.ListCount(), 6);
  EXPECT_EQ(options.List1.List(1), "");
  EXPECT_EQ(options.List1.List(4), "\u6E2F\u53E3 \u0645\u0631\u0641\u0623");
  EXPECT_EQ(options.List1.List(5), "Last") << "a file that breaks off keeps none of the others";
  const auto names = [&](const std::string& file) {
    return options.labPreview.Caption->find(file) != std::string::npos && !options.Image1.Picture();
  };
  User({Select("List1", {1})});
  EXPECT_TRUE(names("b-empty/preview.bmp")) << options.labPreview.Caption();
  User({Select("List1", {5})});
  EXPECT_EQ(options.labPreview.Caption(), "");
  User({Select("List1", {2})});
  EXPECT_TRUE(names("c-broken/preview.bmp"));
  EXPECT_EQ(options.Label6.Caption() + options.Label7.Caption(), "It ends with a key");
  User({Select("List1", {3})});
  EXPECT_GE(options.Label6.Caption->size(), 200u);
  User({Select("List1", {1}), Press("Command2")});
  EXPECT_EQ(program.preferences.SkinFolder, "skins\\b-empty");
}

TEST_F(Options, OkReadsEverythingAnew) {
  folder.Write("autocomplete.dat", "one\r\n");
  Open();
  folder.Write("autocomplete.dat", "two\r\nthree\r\n");
  folder.Write("filter.dat", "word\r\n");
  User({Press("Command2")});
  EXPECT_EQ(main().address.Combo1->ListCount(), 2u);
  EXPECT_EQ(program.preferences.lstFilter, std::vector<std::string>{"word"});
  // What can't be written ends the program, and the file stays whole.
  const std::string before = Ini();
  std::string told;
  desktop.Gate.Unhandled = [&](const Failure& failure) { told = failure.what(); };
  std::filesystem::remove(folder.path + "/browser.ini");
  std::filesystem::create_directory(folder.path + "/browser.ini");
  Open();
  User({Press("Command2")});
  EXPECT_NE(told.find("browser.ini"), std::string::npos) << told;
}

TEST_F(Options, ClearsTheHistoryAtOnce) {
  Open();
  User({Press("Command3")});  // no folder yet
  folder.Write("history/3 May 2026.htm", "");
  folder.Write("history/back\\slash.txt", "");
  folder.Write("history/.hidden", "");
  folder.Write("history/kept/page.htm", "");
  User({Press("Command3")});
  EXPECT_EQ(FileNames(folder.path + "/history"), std::vector<std::string>{});
  EXPECT_EQ(FolderNames(folder.path + "/history"), std::vector<std::string>{"kept"});
  User({Press("Command3")});  // an empty one
  EXPECT_EQ(program.options().labHistoryCleared.Caption(), "The history is empty.");
  EXPECT_TRUE(program.options.Loaded());
}

TEST_F(Options, ClearsTheAddressesForGoodOnlyWithOk) {
  main().address.AddItem("http://one.test/");
  Open();
  EXPECT_EQ(folder.Read("autocomplete.dat"), "http://one.test/\r\n");
  User({Press("Command4")});
  EXPECT_EQ(folder.Read("autocomplete.dat"), "");
  EXPECT_EQ(main().address.Combo1->ListCount(), 1u);
  User({Press("Command1")});
  Open();
  EXPECT_EQ(folder.Read("autocomplete.dat"), "http://one.test/\r\n");
  User({Press("Command4"), Press("Command2")});
  EXPECT_EQ(main().address.Combo1->ListCount(), 0u);
  Open();
  EXPECT_EQ(folder.Read("autocomplete.dat"), "");
}

}  // namespace
