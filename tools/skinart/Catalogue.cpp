#include "Catalogue.h"

#include <stdexcept>

#include "Animation.h"
#include "Buttons.h"
#include "Pieces.h"

namespace skinart {
namespace {

using Painter = std::function<Canvas(const Kit&)>;

Painter Tool(Icon icon, State state) {
  return [=](const Kit& kit) { return ToolButton(kit, icon, state); };
}

Painter Scroll(Side side, bool hover) {
  return [=](const Kit& kit) { return Scroller(kit, side, hover); };
}

Painter Window(WindowButton button, bool down) {
  return [=](const Kit& kit) { return DrawWindowButton(kit, button, down); };
}

Painter Frame(int number) {
  return [=](const Kit& kit) { return AnimationFrame(kit, number); };
}

}  // namespace

// tools/CMakeLists.txt takes the file names from the lines of this table.
// clang-format off
const std::vector<Entry>& Catalogue() {
  static const std::vector<Entry> Entries = {
      {"left.bmp", 5, 300, LeftEdge},
      {"right.bmp", 5, 500, RightEdge},
      {"bottom.bmp", 600, 5, BottomEdge},
      {"titlebar.bmp", 800, 26, TitleBar},
      {"botright.bmp", 19, 20, BottomRightCorner},
      {"browsertop.bmp", 338, 25, TabStrip},
      {"statusbar.bmp", 500, 20, StatusBar},
      {"buttonbar.bmp", 800, 40, ToolBar},
      {"menubar.bmp", 338, 25, MenuBar},
      {"topleft.bmp", 11, 11, TopLeftCorner},
      {"botleft.bmp", 5, 5, BottomLeftCorner},
      {"topright.bmp", 5, 11, TopRightCorner},
      {"maxbutton.bmp", 15, 15, Window(WindowButton::Maximise, false)},
      {"minbutton.bmp", 15, 15, Window(WindowButton::Minimise, false)},
      {"closebutton.bmp", 15, 15, Window(WindowButton::Close, false)},
      {"maxbuttonDown.bmp", 15, 15, Window(WindowButton::Maximise, true)},
      {"minbuttonDown.bmp", 15, 15, Window(WindowButton::Minimise, true)},
      {"closebuttonDown.bmp", 15, 15, Window(WindowButton::Close, true)},
      {"mnutopleft.bmp", 2, 2, MenuTopLeft},
      {"mnutop.bmp", 121, 2, MenuTop},
      {"mnutopright.bmp", 2, 2, MenuTopRight},
      {"mnuright.bmp", 2, 189, MenuRight},
      {"mnubotright.bmp", 2, 2, MenuBottomRight},
      {"mnubottom.bmp", 174, 2, MenuBottom},
      {"mnubotleft.bmp", 2, 2, MenuBottomLeft},
      {"mnuleft.bmp", 2, 229, MenuLeft},
      {"mnubackground.bmp", 300, 300, MenuBackground},
      {"mnuspacer.bmp", 140, 8, MenuSpacer},
      {"folder.bmp", 14, 14, FolderIcon},
      {"link.bmp", 14, 14, LinkIcon},
      {"arrow.bmp", 14, 14, SubMenuArrow},
      {"arrowHi.bmp", 14, 14, SubMenuArrowHighlighted},
      {"scroll.bmp", 14, 14, ScrollDownIcon},
      {"scrollup.bmp", 14, 14, ScrollUpIcon},
      {"backflat.bmp", 33, 33, Tool(Icon::Back, State::Rest)},
      {"forwardflat.bmp", 33, 33, Tool(Icon::Forward, State::Rest)},
      {"stopflat.bmp", 33, 33, Tool(Icon::Stop, State::Rest)},
      {"refreshflat.bmp", 33, 33, Tool(Icon::Refresh, State::Rest)},
      {"newtabflat.bmp", 33, 33, Tool(Icon::NewTab, State::Rest)},
      {"deltabflat.bmp", 33, 33, Tool(Icon::RemoveTab, State::Rest)},
      {"historyflat.bmp", 33, 33, Tool(Icon::History, State::Rest)},
      {"Searchflat.bmp", 33, 33, Tool(Icon::Search, State::Rest)},
      {"tableft.bmp", 25, 35, Scroll(Side::Left, false)},
      {"tabright.bmp", 25, 35, Scroll(Side::Right, false)},
      {"tablefthi.bmp", 25, 35, Scroll(Side::Left, true)},
      {"tabrighthi.bmp", 25, 35, Scroll(Side::Right, true)},
      {"backbutton.bmp", 33, 33, Tool(Icon::Back, State::Hover)},
      {"forwardbutton.bmp", 33, 33, Tool(Icon::Forward, State::Hover)},
      {"stopbutton.bmp", 33, 33, Tool(Icon::Stop, State::Hover)},
      {"refreshbutton.bmp", 33, 33, Tool(Icon::Refresh, State::Hover)},
      {"newtabbutton.bmp", 33, 33, Tool(Icon::NewTab, State::Hover)},
      {"deltabbutton.bmp", 33, 33, Tool(Icon::RemoveTab, State::Hover)},
      {"historybutton.bmp", 33, 33, Tool(Icon::History, State::Hover)},
      {"searchbutton.bmp", 33, 33, Tool(Icon::Search, State::Hover)},
      {"backdown.bmp", 33, 33, Tool(Icon::Back, State::Down)},
      {"forwarddown.bmp", 33, 33, Tool(Icon::Forward, State::Down)},
      {"stopdown.bmp", 33, 33, Tool(Icon::Stop, State::Down)},
      {"refreshdown.bmp", 33, 33, Tool(Icon::Refresh, State::Down)},
      {"newtabdown.bmp", 33, 33, Tool(Icon::NewTab, State::Down)},
      {"deltabdown.bmp", 33, 33, Tool(Icon::RemoveTab, State::Down)},
      {"historydown.bmp", 33, 33, Tool(Icon::History, State::Down)},
      {"searchdown.bmp", 33, 33, Tool(Icon::Search, State::Down)},
      {"tabnotselected.bmp", 150, 21, OtherTab},
      {"tabselected.bmp", 150, 21, SelectedTab},
      {"1.bmp", 49, 24, Frame(0)},
      {"2.bmp", 49, 24, Frame(1)},
      {"3.bmp", 49, 24, Frame(2)},
      {"4.bmp", 49, 24, Frame(3)},
      {"5.bmp", 49, 24, Frame(4)},
      {"6.bmp", 49, 24, Frame(5)},
      {"7.bmp", 49, 24, Frame(6)},
      {"8.bmp", 49, 24, Frame(7)},
      {"9.bmp", 49, 24, Frame(IdleFrame)},
  };
  return Entries;
}
// clang-format on

Art PaintAll(const Kit& kit) {
  Art art;
  for (const Entry& entry : Catalogue()) {
    Canvas canvas = entry.paint(kit);
    if (canvas.Width() != entry.width || canvas.Height() != entry.height) {
      throw std::logic_error(std::string(entry.file) + " is painted in another size than the catalogue's");
    }
    art.emplace(entry.file, std::move(canvas));
  }
  return art;
}

}  // namespace skinart
