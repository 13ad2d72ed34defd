// From the mouse's move over a label of the menu bar to the menu's first composed frame.

#include <algorithm>
#include <chrono>
#include <cstdio>

#include "core/Program.h"
#include "core/frmMain.h"
#include "fakes/FakeDesktop.h"
#include "menus/frmMenu.h"

namespace {

// One displayed frame for a menu as people know it; for one of 500 rows, less than is felt as a wait.
constexpr double OneFrame = 16, Prompt = 50;  // ms

class MenuOfTabs {
 public:
  explicit MenuOfTabs(int tabs) : program_(desktop_) {
    program_.Start();
    frmMain& main = program_.main();
    for (int i = 1; i < tabs; ++i) main.tabs.WebBrowser1.Load(i);
    for (int i = 0; i < tabs; ++i)
      static_cast<FakeBrowser&>(main.tabs.WebBrowser1(i)).title =
          "The page of the tab numbered " + std::to_string(i);
  }

  // Text that was never drawn before, as at the first opening.
  void Forget() { desktop_.drawing = MakeDrawing(); }

  void Open() {
    frmMain& main = program_.main();
    const Label& label = main.menubar.Label5;
    program_.menu.MenuMode = 1;
    desktop_.Gate.Run([&] { main.MouseMoved(0, 0, label.RootLeft() + 15, label.RootTop() + 15); });
    frmMenu& menu = program_.popup_menu();
    const PixelRect all = menu.PixelBounds();
    pixels_.assign(static_cast<size_t>(all.Width) * static_cast<size_t>(all.Height), 0);
    desktop_.Draws().Compose({pixels_.data(), all.Width, all.Height}, menu.Describe(),
                             {{0, 0, all.Width, all.Height}});
  }

  void Close() {
    desktop_.Gate.Run([&] { program_.popup_menu().Deactivate(); });
  }

 private:
  const ProgramFolder folder_;
  FakeDesktop desktop_{folder_.path};
  Program program_;
  std::vector<uint32_t> pixels_;
};

bool Measure(int rows, double bound) {
  // Two commands and a line stand above the tabs.
  MenuOfTabs menu(rows - 3);
  using Steady = std::chrono::steady_clock;
  std::vector<double> times;
  for (int round = 0; round < 21; ++round) {
    menu.Forget();
    const auto start = Steady::now();
    menu.Open();
    times.push_back(std::chrono::duration<double, std::milli>(Steady::now() - start).count());
    menu.Close();
  }
  std::sort(times.begin(), times.end());
  const double median = times[times.size() / 2];
  std::printf("menu of %d rows, first frame: %.1f ms (bound %.0f) %s\n", rows, median, bound,
              median <= bound ? "ok" : "MISSED");
  return median <= bound;
}

}  // namespace

int main() {
  const bool few = Measure(5, OneFrame), many = Measure(500, Prompt);
  return few && many ? 0 : 1;
}
