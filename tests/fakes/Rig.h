#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "core/Program.h"
#include "core/frmDummy.h"
#include "core/frmMain.h"
#include "fakes/FakeDesktop.h"

// A started program and the user's hand on its main window. The mouse goes through the window's own
// functions, and every event through the gate.
struct Rig {
  Rig() {
    program.Start();
    desktop.log.clear();
  }

  frmMain& main() { return program.main(); }
  FrameLayout& frame() { return main().frame; }
  TabSet& tabs() { return main().tabs; }
  Skin& skin() { return main().skin; }
  FakeBrowser& Page(int index) { return static_cast<FakeBrowser&>(tabs().WebBrowser1(index)); }

  // One event of the outside.
  void Do(const std::function<void()>& event) { desktop.Gate.Run(event); }
  // Tabs 0 to `last`, the last one on show.
  void OpenTabs(int last) {
    while (tabs().WebBrowser1.UBound() < last) Do([this] { tabs().AddTab("about:blank"); });
    desktop.log.clear();
  }
  // Tab `index` on show, by a click of the program's own kind.
  void ShowTab(int index) {
    Do([&] { tabs().picTab(index).Click(); });
    desktop.log.clear();
  }

  // The mouse at a point of a control; by default 2 pixels from its corner.
  void Press(Control& control, Twips x = 30, Twips y = 30, int button = 1) {
    const Twips left = control.RootLeft() + x, top = control.RootTop() + y;
    Do([&] { WindowOf(control).MousePressed(button, 0, left, top); });
  }
  void Release(Control& control, Twips x = 30, Twips y = 30, int button = 1) {
    const Twips left = control.RootLeft() + x, top = control.RootTop() + y;
    Do([&] { WindowOf(control).MouseReleased(button, 0, left, top); });
  }
  void Over(Control& control, Twips x = 30, Twips y = 30, int held = 0) {
    const Twips left = control.RootLeft() + x, top = control.RootTop() + y;
    Do([&] { WindowOf(control).MouseMoved(held, 0, left, top); });
  }
  void Click(Control& control) {
    Press(control);
    Release(control);
  }

  // What a control shows: its place in the window's picture, an empty item where it isn't on it.
  DrawItem Shown(const Control& control) {
    for (DrawItem& item : main().Describe())
      if (item.Control == &control) return std::move(item);
    return {};
  }
  // The window as pixels, 0xFFRRGGBB, row after row.
  std::vector<uint32_t> Pixels() {
    const PixelRect all = main().PixelBounds();
    std::vector<uint32_t> pixels(static_cast<size_t>(all.Width) * static_cast<size_t>(all.Height));
    desktop.Draws().Compose({pixels.data(), all.Width, all.Height, 1}, main().Describe(),
                            {{0, 0, all.Width, all.Height}});
    return pixels;
  }
  // What was asked of the outside since the last time.
  std::vector<std::string> Asked() { return std::exchange(desktop.log, {}); }

  const ProgramFolder folder;
  FakeDesktop desktop{folder.path};
  Program program{desktop};
};
