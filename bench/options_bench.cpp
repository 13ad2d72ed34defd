// From "Ok" in the options to the first frame in the new skin, against one loading of a skin, one full layout
// and their frame; and opening the options with 200 skins. The files lie in memory: how long a disk takes to
// say that it has them isn't the program's doing.

#include <stdlib.h>

#include <filesystem>

#include "Bench.h"
#include "core/Program.h"
#include "core/frmMain.h"
#include "dialogs/frmOptions.h"
#include "fakes/FakeDesktop.h"

namespace {

constexpr double OkBound = 1.3, OpenBound = 100;  // ratio, ms
constexpr int Skins = 200, Rounds = 51;

// The skins that the build has drawn.
std::filesystem::path DeliveredSkins() {
  return std::filesystem::canonical("/proc/self/exe").parent_path().parent_path() / "data/skins";
}

class Screen {
 public:
  explicit Screen(Program& program) : program_(program) {}

  // Paints what has changed since the last frame.
  void Frame() {
    DisplayList wanted = program_.main().Describe();
    const PixelRect all = program_.main().PixelBounds();
    pixels_.resize(static_cast<size_t>(all.Width) * static_cast<size_t>(all.Height));
    program_.desktop.Draws().Compose({pixels_.data(), all.Width, all.Height, 1}, wanted,
                                     Damage(shown_, wanted));
    shown_ = std::move(wanted);
  }

 private:
  Program& program_;
  DisplayList shown_;
  std::vector<uint32_t> pixels_;
};

}  // namespace

int main() {
  if (std::filesystem::is_directory("/dev/shm")) setenv("TMPDIR", "/dev/shm", 1);
  const ProgramFolder folder;
  std::filesystem::create_directories(folder.path + "/skins");
  for (const char* skin : {"Steel", "Paper"})
    std::filesystem::copy(DeliveredSkins() / skin, folder.path + "/skins/" + skin,
                          std::filesystem::copy_options::recursive);
  FakeDesktop desktop(folder.path);
  Program program(desktop);
  program.Start();
  Screen screen(program);
  screen.Frame();

  // Each round takes the skin that isn't worn: rows 1 and 2 are Paper and Steel.
  int row = 0;
  const auto open = [&] {
    desktop.Gate.Run([&] {
      program.main().menus.ShowOptions();
      Select("List1", {1 + ++row % 2})(program.options());
    });
  };
  const auto press = [&](const char* button) { desktop.Gate.Run([&] { Press(button)(program.options()); }); };
  const auto times = Medians(Rounds, {[&] {
                                        open();
                                        press("Command1");
                                      },
                                      [&] {
                                        open();
                                        press("Command2");
                                        screen.Frame();
                                      },
                                      [&] {
                                        const char* skin = row % 2 == 0 ? "\\skins\\Steel" : "\\skins\\Paper";
                                        program.main().skin.LoadSkin(program.AppPath + skin);
                                        program.main().frame.Form_Resize();
                                        screen.Frame();
                                      }});
  Report report;
  report.Figure("from Ok to the first frame in the new skin", times[1] - times[0], "us");
  report.Ratio("the same against loading, layout and frame alone", (times[1] - times[0]) / times[2], OkBound);

  for (int i = 0; i < Skins; ++i)
    std::filesystem::copy(DeliveredSkins() / "Steel", folder.path + "/skins/Steel " + std::to_string(i),
                          std::filesystem::copy_options::recursive);
  const double opening = Medians(Rounds, {[&] {
                                   open();
                                   press("Command1");
                                 }},
                                 WallTime)[0] /
                         1000;
  report.Figure("opening the options with 202 skins, without their widgets", opening, "ms");
  report.Ratio("the same against 100 ms", opening / OpenBound, 1);
  return report.Status();
}
