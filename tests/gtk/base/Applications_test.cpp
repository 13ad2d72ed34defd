#include "gtk/base/Applications.h"

#include <gtest/gtest.h>

#include "fakes/FakeDesktop.h"
#include "gtk/base/ProgramLine.h"

namespace {

class Entries : public testing::Test {
 protected:
  std::string Command(const std::string& lines) {
    folder.Write("entry.desktop", "[Desktop Entry]\nType=Application\nName=A thing\n" + lines);
    const Owned<GDesktopAppInfo> entry(
        g_desktop_app_info_new_from_filename((folder.path + "/entry.desktop").c_str()));
    return entry ? Applications::CommandOf(entry.get()) : "no entry";
  }

  const TemporaryFolder folder;
};

TEST_F(Entries, LoseTheirFieldCodes) {
  EXPECT_EQ(Command("Exec=sh %U\n"), "sh");
  EXPECT_EQ(Command("Exec=sh --new %f -t 50%% %i --name %c\n"), "sh --new  -t 50%  --name 'A thing'");
  EXPECT_EQ(TakeApart(Command("Exec=\"sh\" \"a b\" %k\n")),
            (std::vector<std::string>{"sh", "a b", folder.path + "/entry.desktop"}));
  EXPECT_EQ(Command("Exec=sh %"), "sh %");
}

TEST_F(Entries, OfATerminalNeedOne) {
  const std::string command = Command("Exec=sh -c top\nTerminal=true\n");
  EXPECT_TRUE(command.empty() || command == "x-terminal-emulator -e sh -c top") << command;
}

}  // namespace
