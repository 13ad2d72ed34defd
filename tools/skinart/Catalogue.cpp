#include "Catalogue.h"

#include <stdexcept>

#include "Animation.h"
#include "Buttons.h"
#include "Pieces.h"

namespace skinart {
namespace {

using Painter = std::function<Canvas(const Kit&)>;

Painter tool(Icon icon, State state) {
  return [=](const Kit& kit) { return toolButton(kit, icon, state); };
}

Painter scroll(Side side, bool hover) {
  return [=](const Kit& kit) { return scroller(kit, side, hover); };
}

Painter window(WindowButton button, bool down) {
  return [=](const Kit& kit) { return windowButton(kit, button, down); };
}

Painter frame(int number) {
  return [=](const Kit& kit) { return animationFrame(kit, number); };
}

}  // namespace

// tools/CMakeLists.txt takes the file names from the lines of this table.
// clang-format off
const std::vector<Entry>& catalogue() {
  static const std::vector<Entry> entries = {
      {"left.bmp", 5, 300, leftEdge},
      {"right.bmp", 5, 500, rightEdge},
      {"bottom.bmp", 600, 5, bottomEdge},
      {"titlebar.bmp", 800, 26, titleBar},
      {"botright.bmp", 19, 20, bottomRightCorner},
      {"browsertop.bmp", 338, 25, tabStrip},
      {"statusbar.bmp", 500, 20, statusBar},
      {"buttonbar.bmp", 800, 40, toolBar},
      {"menubar.bmp", 338, 25, menuBar},
      {"topleft.bmp", 11, 11, topLeftCorner},
      {"botleft.bmp", 5, 5, bottomLeftCorner},
      {"topright.bmp", 5, 11, topRightCorner},
      {"maxbutton.bmp", 15, 15, window(WindowButton::Maximise, false)},
      {"minbutton.bmp", 15, 15, window(WindowButton::Minimise, false)},
      {"closebutton.bmp", 15, 15, window(WindowButton::Close, false)},
      {"maxbuttonDown.bmp", 15, 15, window(WindowButton::Maximise, true)},
      {"minbuttonDown.bmp", 15, 15, window(WindowButton::Minimise, true)},
      {"closebuttonDown.bmp", 15, 15, window(WindowButton::Close, true)},
      {"mnutopleft.bmp", 2, 2, menuTopLeft},
      {"mnutop.bmp", 121, 2, menuTop},
      {"mnutopright.bmp", 2, 2, menuTopRight},
      {"mnuright.bmp", 2, 189, menuRight},
      {"mnubotright.bmp", 2, 2, menuBottomRight},
      {"mnubottom.bmp", 174, 2, menuBottom},
      {"mnubotleft.bmp", 2, 2, menuBottomLeft},
      {"mnuleft.bmp", 2, 229, menuLeft},
      {"mnubackground.bmp", 300, 300, menuBackground},
      {"mnuspacer.bmp", 140, 8, menuSpacer},
      {"folder.bmp", 14, 14, folderIcon},
      {"link.bmp", 14, 14, linkIcon},
      {"arrow.bmp", 14, 14, subMenuArrow},
      {"arrowHi.bmp", 14, 14, subMenuArrowHighlighted},
      {"scroll.bmp", 14, 14, scrollDownIcon},
      {"scrollup.bmp", 14, 14, scrollUpIcon},
      {"backflat.bmp", 33, 33, tool(Icon::Back, State::Rest)},
      {"forwardflat.bmp", 33, 33, tool(Icon::Forward, State::Rest)},
      {"stopflat.bmp", 33, 33, tool(Icon::Stop, State::Rest)},
      {"refreshflat.bmp", 33, 33, tool(Icon::Refresh, State::Rest)},
      {"newtabflat.bmp", 33, 33, tool(Icon::NewTab, State::Rest)},
      {"deltabflat.bmp", 33, 33, tool(Icon::RemoveTab, State::Rest)},
      {"historyflat.bmp", 33, 33, tool(Icon::History, State::Rest)},
      {"Searchflat.bmp", 33, 33, tool(Icon::Search, State::Rest)},
      {"tableft.bmp", 25, 35, scroll(Side::Left, false)},
      {"tabright.bmp", 25, 35, scroll(Side::Right, false)},
      {"tablefthi.bmp", 25, 35, scroll(Side::Left, true)},
      {"tabrighthi.bmp", 25, 35, scroll(Side::Right, true)},
      {"backbutton.bmp", 33, 33, tool(Icon::Back, State::Hover)},
      {"forwardbutton.bmp", 33, 33, tool(Icon::Forward, State::Hover)},
      {"stopbutton.bmp", 33, 33, tool(Icon::Stop, State::Hover)},
      {"refreshbutton.bmp", 33, 33, tool(Icon::Refresh, State::Hover)},
      {"newtabbutton.bmp", 33, 33, tool(Icon::NewTab, State::Hover)},
      {"deltabbutton.bmp", 33, 33, tool(Icon::RemoveTab, State::Hover)},
      {"historybutton.bmp", 33, 33, tool(Icon::History, State::Hover)},
      {"searchbutton.bmp", 33, 33, tool(Icon::Search, State::Hover)},
      {"backdown.bmp", 33, 33, tool(Icon::Back, State::Down)},
      {"forwarddown.bmp", 33, 33, tool(Icon::Forward, State::Down)},
      {"stopdown.bmp", 33, 33, tool(Icon::Stop, State::Down)},
      {"refreshdown.bmp", 33, 33, tool(Icon::Refresh, State::Down)},
      {"newtabdown.bmp", 33, 33, tool(Icon::NewTab, State::Down)},
      {"deltabdown.bmp", 33, 33, tool(Icon::RemoveTab, State::Down)},
      {"historydown.bmp", 33, 33, tool(Icon::History, State::Down)},
      {"searchdown.bmp", 33, 33, tool(Icon::Search, State::Down)},
      {"tabnotselected.bmp", 150, 21, otherTab},
      {"tabselected.bmp", 150, 21, selectedTab},
      {"1.bmp", 49, 24, frame(0)},
      {"2.bmp", 49, 24, frame(1)},
      {"3.bmp", 49, 24, frame(2)},
      {"4.bmp", 49, 24, frame(3)},
      {"5.bmp", 49, 24, frame(4)},
      {"6.bmp", 49, 24, frame(5)},
      {"7.bmp", 49, 24, frame(6)},
      {"8.bmp", 49, 24, frame(7)},
      {"9.bmp", 49, 24, frame(IdleFrame)},
  };
  return entries;
}
// clang-format on

Art paintAll(const Kit& kit) {
  Art art;
  for (const Entry& entry : catalogue()) {
    Canvas canvas = entry.paint(kit);
    if (canvas.width() != entry.width || canvas.height() != entry.height) {
      throw std::logic_error(std::string(entry.file) + " is painted in another size than the catalogue's");
    }
    art.emplace(entry.file, std::move(canvas));
  }
  return art;
}

}  // namespace skinart
