// One layout and picture of a window with 20 tabs against copying one frame of that many pixels; and what a
// window costs that doesn't change.

#include <cstring>

#include "Bench.h"
#include "core/Program.h"
#include "core/frmMain.h"
#include "fakes/FakeDesktop.h"

namespace {

constexpr int Width = 1920, Height = 1080, Tabs = 20;
constexpr double Bound = 3;

void OpenTabs(frmMain& main) {
  for (int i = 1; i < Tabs; ++i) main.tabs.AddTab("http://page.test/" + std::to_string(i));
  for (int i = 0; i < Tabs; ++i)
    static_cast<FakeBrowser&>(main.tabs.WebBrowser1(i)).title =
        "A page with number " + std::to_string(i) + " and a long title";
}

}  // namespace

int main() {
  const ProgramFolder folder;
  FakeDesktop desktop(folder.path);
  Program program(desktop);
  program.Start();
  frmMain& main = program.main();
  OpenTabs(main);
  main.Sized(Width * TwipsPerPixel, Height * TwipsPerPixel);

  Report report;
  std::vector<uint32_t> frame(Width * Height), copy(Width * Height, 1);
  const Canvas canvas{frame.data(), Width, Height, 1};
  const std::vector<PixelRect> everything = {{0, 0, Width, Height}};
  DisplayList shown;
  const auto times = Medians(51, {[&] { std::memcpy(copy.data(), frame.data(), frame.size() * 4); },
                                  [&] {
                                    main.frame.Form_Resize();
                                    shown = main.Describe();
                                    desktop.Draws().Compose(canvas, shown, everything);
                                  },
                                  [&] {
                                    main.strip.UpdateTabs();
                                    const DisplayList wanted = main.Describe();
                                    desktop.Draws().Compose(canvas, wanted, Damage(shown, wanted));
                                  }});
  report.Figure("copying a frame", times[0], "us");
  report.Ratio("layout and picture of 20 tabs against copying a frame", times[1] / times[0], Bound);
  report.Figure("redrawing 20 tabs that look as before", times[2], "us");
  report.Ratio("rectangles painted for it", static_cast<double>(Damage(shown, main.Describe()).size()), 0);
  return report.Status();
}
