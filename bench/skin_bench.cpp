// Loading a complete skin against decoding its bitmaps alone; with --load-ms, nothing but the time in ms that
// the delivered skin and a list of 1,000 addresses take by the clock on the wall.

#include <cstring>
#include <filesystem>
#include <map>

#include "Bench.h"
#include "core/Program.h"
#include "core/frmMain.h"
#include "fakes/BmpFile.h"
#include "fakes/FakeDesktop.h"
#include "platform/Failure.h"

namespace {

constexpr double Bound = 1.3;
constexpr int Frames = 9, Addresses = 1'000;

// The sizes of the built-in art, in pixels, where they aren't those of a toolbar button.
const std::map<std::string, std::pair<int, int>> Sizes = {
    {"left.bmp", {5, 300}},          {"right.bmp", {5, 500}},         {"bottom.bmp", {600, 5}},
    {"titlebar.bmp", {800, 26}},     {"botright.bmp", {19, 20}},      {"browsertop.bmp", {338, 25}},
    {"statusbar.bmp", {500, 20}},    {"buttonbar.bmp", {800, 40}},    {"menubar.bmp", {338, 25}},
    {"topleft.bmp", {11, 11}},       {"botleft.bmp", {5, 5}},         {"topright.bmp", {5, 11}},
    {"maxbutton.bmp", {15, 15}},     {"minbutton.bmp", {15, 15}},     {"closebutton.bmp", {15, 15}},
    {"maxbuttonDown.bmp", {15, 15}}, {"minbuttonDown.bmp", {15, 15}}, {"closebuttonDown.bmp", {15, 15}},
    {"mnutopleft.bmp", {2, 2}},      {"mnutop.bmp", {121, 2}},        {"mnutopright.bmp", {2, 2}},
    {"mnuright.bmp", {2, 189}},      {"mnubotright.bmp", {2, 2}},     {"mnubottom.bmp", {174, 2}},
    {"mnubotleft.bmp", {2, 2}},      {"mnuleft.bmp", {2, 229}},       {"mnubackground.bmp", {300, 300}},
    {"mnuspacer.bmp", {140, 8}},     {"folder.bmp", {14, 14}},        {"link.bmp", {14, 14}},
    {"arrow.bmp", {14, 14}},         {"arrowHi.bmp", {14, 14}},       {"scroll.bmp", {14, 14}},
    {"scrollup.bmp", {14, 14}},      {"tableft.bmp", {25, 35}},       {"tabright.bmp", {25, 35}},
    {"tablefthi.bmp", {25, 35}},     {"tabrighthi.bmp", {25, 35}},    {"tabnotselected.bmp", {150, 21}},
    {"tabselected.bmp", {150, 21}},
};

std::vector<std::string> WriteSkin(const TemporaryFolder& folder) {
  std::vector<std::string> paths;
  const auto write = [&](const std::string& file, int width, int height) {
    folder.Write("skins/Bench/" + file, BmpFile(width, height, [](int x, int y) {
                   return static_cast<uint32_t>(x * 3 + y * 1000);
                 }));
    paths.push_back(folder.path + "\\skins\\Bench\\" + file);
  };
  for (const Skin::Bitmap& row : Skin::Bitmaps) {
    const auto size = Sizes.find(row.File);
    size == Sizes.end() ? write(row.File, 33, 33) : write(row.File, size->second.first, size->second.second);
  }
  for (int i = 1; i <= Frames; ++i) write(std::to_string(i) + ".bmp", 49, 24);
  folder.Write("skins/Bench/skin.ini",
               "[name]\r\nBench\r\n[animation]\r\n100\r\n[menuhighlight]\r\n&hFF\r\n[menutext]\r\n0\r\n"
               "[menutexthighlight]\r\n255\r\n[tabtext]\r\n0\r\n[tabtextdisabled]\r\n8421504\r\n[statustext]"
               "\r\n0\r\n[progressbar]\r\n&h8000000D\r\n[title]\r\n16777215\r\n");
  return paths;
}

// Milliseconds.
double LoadTime(const ProgramFolder& folder, Program& program) {
  std::string list;
  for (int i = 0; i < Addresses; ++i) list += "http://site" + std::to_string(i) + ".test/page\r\n";
  folder.Write("autocomplete.dat", list);
  const auto bench = std::filesystem::canonical("/proc/self/exe").parent_path();
  const std::string steel = bench.parent_path() / "data/skins/Steel";
  if (!std::filesystem::is_directory(steel))
    throw Failure("The skin \"" + steel + "\" isn't there: build it");
  return Medians(31, {[&] { program.main().skin.LoadSkin(steel); }}, WallTime)[0] / 1000;
}

}  // namespace

int main(int count, char** arguments) {
  const ProgramFolder folder;
  folder.Write("autocomplete.dat", "http://page.test/\r\nhttp://other.test/\r\n");
  FakeDesktop desktop(folder.path);
  Program program(desktop);
  program.Start();
  if (count > 1 && std::strcmp(arguments[1], "--load-ms") == 0) {
    std::printf("%.2f\n", LoadTime(folder, program));
    return 0;
  }
  const std::vector<std::string> paths = WriteSkin(folder);

  Report report;
  const auto times = Medians(101, {[&] {
                                     for (const std::string& path : paths) desktop.Draws().LoadPicture(path);
                                   },
                                   [&] { program.main().skin.LoadSkin(folder.path + "\\skins\\Bench"); }});
  report.Figure("decoding the " + std::to_string(paths.size()) + " bitmaps of a skin", times[0], "us");
  report.Ratio("loading the skin against decoding its bitmaps", times[1] / times[0], Bound);
  report.Figure("loading the delivered skin and 1,000 addresses", LoadTime(folder, program), "ms");
  return report.Status();
}
