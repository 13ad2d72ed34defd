#include "dialogs/frmAbout.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "fakes/Rig.h"

namespace {

const std::string Unavailable = "MsgBox Marlowick|System Information Is Unavailable At This Time";
const std::string ToolKey = "SOFTWARE\\Microsoft\\Shared Tools\\MSINFO";
const std::string LocationKey = "SOFTWARE\\Microsoft\\Shared Tools Location";

class About : public testing::Test, protected Rig {
 protected:
  // Of a dialog's part; the main window has a press of its own.
  static Act Press(const std::string& part) { return ::Press(part); }

  frmAbout& Open() {
    Do([this] { main().menus.ShowAbout(); });
    desktop.log.clear();
    return program.about();
  }
  void User(const Act& act) {
    frmAbout& about = program.about();
    Do([&] { act(about); });
  }
  void Knows(std::vector<Registry::Value> values) { desktop.registry = Registry(std::move(values)); }
  std::vector<std::string> SysInfo() {
    Asked();
    User(Press("cmdSysInfo"));
    EXPECT_TRUE(program.about.Loaded());
    return Asked();
  }
  // What GetKeyValue makes of a value of the bytes.
  std::string Read(uint32_t type, const std::string& data) {
    Knows({{.Key = ToolKey, .Name = "PATH", .Type = type, .Data = data}});
    std::string value = "as it was";
    EXPECT_TRUE(Open().GetKeyValue(Registry::HKEY_LOCAL_MACHINE, ToolKey, "path", value));
    return value;
  }
};

TEST_F(About, LinksLeadOutAndUnloadTheWindow) {
  const std::string project = Open().Label4.Caption;
  User(Press("Label4"));
  EXPECT_EQ(tabs().CurrentTab, 1);
  EXPECT_EQ(Page(1).url, project);
  EXPECT_FALSE(program.about.Loaded());
  const std::string mail = Open().Label5.Caption;
  User(Press("Label5"));
  EXPECT_EQ(Page(1).url, "mailto:" + mail);
  EXPECT_EQ(tabs().WebBrowser1.UBound(), 1);
  EXPECT_FALSE(program.about.Loaded());
  // On a page that has ended it says so, and stays.
  Open();
  Page(1).fails = true;
  User(Press("Label5"));
  EXPECT_TRUE(program.about.Loaded());
  EXPECT_NE(Asked().back().find("can't be done"), std::string::npos);
  User(GoElsewhere());
  EXPECT_EQ(Asked().back(), "SetFocus frmAbout");
  User(Press("cmdOK"));
  EXPECT_FALSE(program.about.Loaded());
}

TEST_F(About, StartsTheFirstInformationToolThatIsNamed) {
  Open();
  EXPECT_EQ(SysInfo(), std::vector<std::string>{Unavailable});
  Knows({{.Key = ToolKey, .Name = "PATH", .Data = "info --all\0"}});
  EXPECT_EQ(SysInfo(), std::vector<std::string>{"Shell info --all"});
  desktop.no_program = "info --all";
  EXPECT_EQ(SysInfo(), (std::vector<std::string>{"Shell info --all", Unavailable}));

  Knows({{.Key = LocationKey, .Name = "MSINFO", .Data = folder.path}});
  EXPECT_EQ(SysInfo(), std::vector<std::string>{Unavailable});
  folder.Write("MSINFO32.EXE", "");
  EXPECT_EQ(SysInfo(), std::vector<std::string>{"Shell " + folder.path + "\\MSINFO32.EXE"});
}

TEST_F(About, ReadsTextsAndNumbersOfTheRegistry) {
  const auto bytes = [](std::initializer_list<int> values) {
    return std::string(values.begin(), values.end());
  };
  EXPECT_EQ(Read(Registry::REG_SZ, std::string("a path\0", 7)), "a path");
  EXPECT_EQ(Read(Registry::REG_SZ, "no end"), "no end");
  EXPECT_EQ(Read(Registry::REG_SZ, std::string("two\0\0", 5)), std::string("two\0", 4));
  EXPECT_EQ(Read(Registry::REG_SZ, ""), "");
  EXPECT_EQ(Read(Registry::REG_DWORD, bytes({1, 0, 0, 0})), "1");
  EXPECT_EQ(Read(Registry::REG_DWORD, bytes({0x78, 0x56, 0x34, 0x12})), "305419896");
  // Digits aren't padded.
  EXPECT_EQ(Read(Registry::REG_DWORD, bytes({0x05, 0x01, 0, 0})), "21");
  EXPECT_EQ(Read(Registry::REG_DWORD, bytes({0xFF, 0xFF, 0xFF, 0xFF})), "-1");
  EXPECT_EQ(Read(3, "bytes"), "as it was");

  std::string value = "as it was";
  EXPECT_FALSE(Open().GetKeyValue(Registry::HKEY_LOCAL_MACHINE, ToolKey, "OTHER", value));
  EXPECT_EQ(value, "");
  value = "as it was";
  EXPECT_FALSE(Open().GetKeyValue(1, ToolKey, "PATH", value));
  EXPECT_EQ(value, "");
  Knows({{.Key = ToolKey, .Name = "PATH", .Data = std::string(1025, 'x')}});
  EXPECT_FALSE(Open().GetKeyValue(Registry::HKEY_LOCAL_MACHINE, ToolKey, "PATH", value));
}

}  // namespace
