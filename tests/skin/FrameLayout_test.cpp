#include <gtest/gtest.h>

#include <climits>

#include "fakes/Rig.h"

namespace {

constexpr Twips Any = -1e9;  // not looked at

struct Expected {
  const char* Name;
  const Control* Of;
  Twips Left, Top, Width, Height;
};

// Two monitors side by side, 1024 x 768 pixels each; a window is on the one where its middle is.
class TwoMonitors : public FakeDesktop {
 public:
  using FakeDesktop::FakeDesktop;
  ScreenRect WorkArea(const Window& window) override {
    const Twips left = window.Left + window.Width / 2 < 15360 ? 0 : 15360;
    return {left, 0, left + 15360, 11520};
  }
};

class Frame : public testing::Test, protected Rig {
 protected:
  void Size(Twips width, Twips height) {
    Do([&] { main().Sized(width, height); });
  }
  std::string Rectangle() {
    const auto whole = [](Twips twips) { return std::to_string(static_cast<long>(twips)) + " "; };
    return whole(main().Left) + whole(main().Top) + whole(main().Width) + whole(main().Height);
  }
  void Expect(const std::vector<Expected>& places) {
    for (const auto& [name, of, left, top, width, height] : places) {
      const std::pair<Twips, Twips> sides[] = {
          {of->Left, left}, {of->Top, top}, {of->Width, width}, {of->Height, height}};
      for (const auto& [is, wanted] : sides) EXPECT_TRUE(wanted == Any || is == wanted) << name << ": " << is;
    }
  }
  // A drag by the left button, as the window's mouse: it stays captured wherever it goes.
  void Drag(Control& control, Twips by_x, Twips by_y) {
    Grab(control);
    Move(control, by_x, by_y);
    LetGo(control);
  }
  void Grab(Control& control) { Press(control, GrabX(control), GrabY(control)); }
  // One move of a drag, to a point that far from where the press was on the control.
  void Move(Control& control, Twips by_x, Twips by_y) {
    Over(control, GrabX(control) + by_x, GrabY(control) + by_y, 1);
  }
  void LetGo(Control& control) { Release(control, GrabX(control), GrabY(control)); }
  // Off the corners, which lie over the edges.
  Twips GrabX(const Control& control) { return &control == &Bottom() ? 1000 : 30; }
  Twips GrabY(const Control& control) { return &control == &Right() ? 1000 : 30; }

  Surface& Corner() { return frame().Picture5; }
  Surface& Right() { return frame().Picture6; }
  Surface& Bottom() { return frame().Picture7; }
  Surface& Title() { return frame().Picture4; }
};

TEST_F(Frame, LaysOutTheDesignSize) {
  const FrameLayout& f = frame();
  EXPECT_EQ(main().Width, 10605);
  EXPECT_EQ(main().Height, 6810);
  Expect({{"Picture12", &f.Picture12, 0, 0, 70, 70},
          {"Picture13", &f.Picture13, 10535, 0, 70, 70},
          {"Picture14", &f.Picture14, 0, 6740, 70, 70},
          {"Picture5", &f.Picture5, 10320, 6510, 285, 300},
          {"Picture6", &f.Picture6, 10535, 0, 70, 6510},
          {"Picture7", &f.Picture7, 0, 6740, 10320, 70},
          {"Picture8", &f.Picture8, 0, 0, 70, 6740},
          {"Picture4", &f.Picture4, 0, 0, 10605, 300},
          {"Image1", &f.Image1, 120, 60, 240, 240},
          {"labCaption", &f.labCaption, 430, 75, 9200, 255},
          {"picMin", &f.picMin, 9830, 75, 225, 225},
          {"picMax", &f.picMax, 10055, 75, 225, 225},
          {"picClose", &f.picClose, 10310, 75, 225, 225},
          {"Picture9", &f.Picture9, 80, 300, 10605, 360},
          {"Picture3", &f.Picture3, 9800, 300, 735, 360},
          {"CoolBar1", &f.CoolBar1, 80, 660, 10605, 525},
          {"Combo1", main().address.Combo1.get(), 4200, 100, 5305, 315},
          {"picTabLeft", &f.picTabLeft, 9695, 660, 375, 525},
          {"picTabRight", &f.picTabRight, 10070, 660, 375, 525},
          {"Picture2", &f.Picture2, 80, 1180, 10525, 375},
          {"picTab", &tabs().picTab(0), 0, 60, 2250, 315},
          {"Picture1", &f.Picture1, 80, 1550, 10455, 4960},
          {"WebBrowser1", &Page(0), 0, 0, 10455, 4960},
          {"Picture10", &f.Picture10, 0, 6510, 10605, 255},
          {"StatusBar1", &f.StatusBar1, 120, 15, 8625, 195},
          {"picProgress", &f.picProgress, 8805, 30, 1380, 195}});
  EXPECT_EQ(main().BackColor, 0x00BCA698);
  const std::vector<const Control*> front = {&f.picTabLeft, &f.picTabRight, &f.Picture14, &f.Picture13,
                                             &f.Picture12,  &f.Picture5,    &f.Picture6,  &f.Picture8,
                                             &f.Picture4,   &f.Picture3,    &f.Picture7,  &f.CoolBar1,
                                             &f.Picture1,   &f.Picture2,    &f.Picture10, &f.Picture9};
  std::vector<const Control*> stacked;
  for (auto child = main().Children().rbegin(); child != main().Children().rend(); ++child)
    if ((*child)->Visible) stacked.push_back(*child);
  EXPECT_EQ(stacked, front);
}

TEST_F(Frame, HoldsTheLeastSizeAndLaysOutAnyOther) {
  const FrameLayout& f = frame();
  Size(15, 15);
  EXPECT_EQ(main().Width, 5625);
  EXPECT_EQ(main().Height, 3000);
  Expect({{"Combo1", main().address.Combo1.get(), Any, Any, 325, Any},
          {"Picture1", &f.Picture1, 80, 1550, 5475, 1150},
          {"labCaption", &f.labCaption, Any, Any, 4220, Any}});
  // With wider edges the address field falls from 310 straight to 100.
  for (const auto& [edge, field] : {std::pair{73.75, 321.25}, {74.0, 100.0}, {145.0, 100.0}}) {
    Right().Width = edge;
    Do([this] { frame().Form_Resize(); });
    EXPECT_EQ(main().address.Combo1->Width, field) << edge;
  }
  Right().Width = 70;
  for (const auto& [width, height] : {std::pair{7777.0, 4321.0}, {12345.0, 10001.0}, {57600.0, 32400.0}}) {
    Size(width, height);
    Expect({{"Picture5", &f.Picture5, width - 285, height - 300, 285, 300},
            {"Picture7", &f.Picture7, 0, height - 70, width - 285, 70},
            {"Picture1", &f.Picture1, 80, 1550, width - 150, height - 1850},
            {"WebBrowser1", &Page(0), 0, 0, width - 150, height - 1850},
            {"Picture10", &f.Picture10, 0, height - 300, width, 255},
            {"picClose", &f.picClose, width - 295, 75, 225, 225}});
  }
}

TEST_F(Frame, MovesByTheTitle) {
  const Twips left = main().Left, top = main().Top;
  for (Control* title : {static_cast<Control*>(&Title()), static_cast<Control*>(&frame().labCaption)}) {
    main().Move(left, top);
    Press(*title, 600, 30);
    for (int i = 1; i <= 3; ++i) {
      Over(*title, 600 + 150, 30 - 45, 1);
      EXPECT_EQ(main().Left, left + 150 * i);
      EXPECT_EQ(main().Top, top - 45 * i);
    }
    Release(*title, 600, 30);
    Over(*title, 900, 30);
    EXPECT_EQ(main().Left, left + 450);
  }
  // A press far right on a wide screen.
  Size(57600, 32400);
  Press(Title(), 50000, 30);
  Over(Title(), 50015, 30, 1);
  EXPECT_EQ(main().Left, left + 465);
  Release(Title(), 50000, 30);

  // Another window took the mouse, and the release with it.
  Press(Title());
  Over(main().toolbar.picButton(0));
  EXPECT_EQ(main().toolbar.picButton(0).Picture(), skin().picBackHiBut.Picture());
  EXPECT_FALSE(main().Captures());

  Do([this] { frame().MaxiWindow(); });
  const std::string maximised = Rectangle();
  Drag(Title(), 300, 300);
  EXPECT_EQ(Rectangle(), maximised);
}

TEST_F(Frame, IsSizedByTheGripsWithinTheirLimits) {
  Drag(Right(), 150, 999);
  EXPECT_EQ(Rectangle(), "0 0 10755 6810 ");
  Drag(Bottom(), 999, -150);
  EXPECT_EQ(Rectangle(), "0 0 10755 6660 ");
  Drag(Corner(), -150, 150);
  EXPECT_EQ(Rectangle(), "0 0 10605 6810 ");

  // Inward past the limits: the layout's own stands, and the next move changes nothing.
  Grab(Right());
  Move(Right(), -10605 + 3400, 0);
  EXPECT_EQ(main().Width, 5625);
  Move(Right(), -3000, 0);
  EXPECT_EQ(main().Width, 5625);
  LetGo(Right());
  Grab(Bottom());
  Move(Bottom(), 0, -3810);
  EXPECT_EQ(main().Height, 3000);
  Move(Bottom(), 0, -1);
  EXPECT_EQ(main().Height, 3000);
  LetGo(Bottom());
  // The corner stops in both directions at once.
  Grab(Corner());
  Move(Corner(), 300, -15);
  EXPECT_EQ(Rectangle(), "0 0 5625 3000 ");
  Move(Corner(), -2300, 300);
  EXPECT_EQ(Rectangle(), "0 0 5625 3000 ");
  Move(Corner(), -2225, 300);
  EXPECT_EQ(Rectangle(), "0 0 5625 3300 ");
  LetGo(Corner());

  Do([this] { frame().MaxiWindow(); });
  const std::string maximised = Rectangle();
  for (Surface* grip : {&Corner(), &Right(), &Bottom()}) Drag(*grip, 300, 300);
  EXPECT_EQ(Rectangle(), maximised);
  EXPECT_EQ(frame().SizingNow, 0);
}

TEST_F(Frame, KnowsWhenItIsBeingSized) {
  Over(Corner());
  EXPECT_EQ(frame().SizingNow, 1) << "the corner, before it looks at the button";
  for (Surface* edge : {&Right(), &Bottom()}) {
    frame().SizingNow = 1;
    Over(*edge, GrabX(*edge), GrabY(*edge));
    EXPECT_EQ(frame().SizingNow, 0);
    Grab(*edge);
    Move(*edge, 0, 0);
    EXPECT_EQ(frame().SizingNow, 1);
    LetGo(*edge);
    EXPECT_EQ(frame().SizingNow, 0);
  }
}

TEST_F(Frame, ForgetsASizingWhereItIsMinimised) {
  Over(Corner());
  Do([this] { main().WindowState = Window::Minimised; });
  EXPECT_EQ(frame().SizingNow, 0);
  EXPECT_FALSE(main().Visible);
}

TEST_F(Frame, ShowsWhichWayAGripGoes) {
  EXPECT_EQ(Corner().MousePointer, Pointer::SizeDiagonal);
  EXPECT_EQ(Right().MousePointer, Pointer::SizeLeftRight);
  EXPECT_EQ(Bottom().MousePointer, Pointer::SizeUpDown);
  for (const Control* control : {static_cast<Control*>(&Title()), static_cast<Control*>(&frame().Picture8)})
    EXPECT_EQ(control->MousePointer, Pointer::Default);
}

TEST_F(Frame, DragsOnlyItsEdgesWithFastRefresh) {
  program.preferences.PaintMode = 1;
  Grab(Right());
  Move(Right(), 1500, 0);
  EXPECT_EQ(main().Width, 12105);
  EXPECT_EQ(Right().Left, 12035);
  EXPECT_EQ(Title().Width, 10605);
  EXPECT_EQ(Page(0).Width, 10455);
  for (Surface* edge : {&Corner(), &Right(), &Bottom(), &frame().Picture8})
    EXPECT_FALSE(Shown(*edge).Tiles) << "blank while it is dragged";
  LetGo(Right());
  EXPECT_EQ(Title().Width, 12105);
  EXPECT_EQ(Page(0).Width, 11955);
  EXPECT_EQ(Shown(Right()).Tiles, skin().picRight.Picture());

  // Once over the corner, other sources of a size lay out the edges only, but not the maximise button.
  Over(Corner());
  Size(10605, 6810);
  EXPECT_EQ(Title().Width, 12105);
  Click(frame().picMax);
  EXPECT_EQ(Title().Width, 15480);
  Over(Corner());
  EXPECT_EQ(frame().SizingNow, 0) << "nothing is sized while maximised";
}

TEST_F(Frame, MaximisesAndComesBackToTheExactRectangle) {
  main().Move(1234.5, 777);
  Size(8001, 5003);
  const Twips left = 1234, top = 777;  // halves to the even one
  for (int way = 0; way < 3; ++way) {
    const auto toggle = [&] {
      if (way == 0) return Click(frame().picMax);
      if (way == 1) return Do([this] { main().WindowState = Window::Maximised; });
      Click(Title());
      Do([this] { main().MousePressed(1, 0, 600, 30, true); });
      // The mouse is where the window was; a double click drags nothing along.
      Over(Title(), 615, 45, 1);
      Release(Title());
    };
    frame().SizingNow = way == 1 ? 0 : 1;
    toggle();
    EXPECT_EQ(Rectangle(), "-60 -60 15480 11640 ") << way;
    EXPECT_EQ(frame().SizingNow, 0);
    EXPECT_EQ(main().WindowState, Window::Normal);
    EXPECT_EQ(frame().picMax.Picture(), skin().picMaxButton.Picture());
    Click(frame().picMin);
    EXPECT_FALSE(main().Visible);
    EXPECT_EQ(program.dummy().WindowState, Window::Minimised);
    program.dummy().WindowState = Window::Normal;
    EXPECT_EQ(Rectangle(), "-60 -60 15480 11640 ") << way;
    toggle();
    EXPECT_EQ(main().Left, left) << way;
    EXPECT_EQ(main().Top, top) << way;
    EXPECT_EQ(main().Width, 8001) << way;
    EXPECT_EQ(main().Height, 5003) << way;
    EXPECT_EQ(Page(0).Width, 7851) << way;
  }
}

TEST(FrameOnTwoMonitors, MaximisesOnItsOwn) {
  const ProgramFolder folder;
  TwoMonitors desktop(folder.path);
  Program program(desktop);
  program.Start();
  frmMain& main = program.main();
  // Its middle is on the left one, but no longer once it is as wide as a monitor.
  main.Sized(5625, 3000);
  main.Move(9000, 300);
  main.frame.MaxiWindow();
  EXPECT_EQ(main.Left, -60);
  main.frame.MaxiWindow();
  main.Move(20000, 300);
  main.frame.MaxiWindow();
  EXPECT_EQ(main.Left, 15300);
}

TEST_F(Frame, ShowsItsButtonsPressedUntilTheRelease) {
  struct Button {
    Surface& Control;
    const Store &Rest, &Pressed;
  };
  for (const auto& [button, rest, pressed] :
       {Button{frame().picMin, skin().picMinButton, skin().picMinButtonDown},
        Button{frame().picMax, skin().picMaxButton, skin().picMaxButtonDown},
        Button{frame().picClose, skin().picCloseButton, skin().picCloseButtonDown}}) {
    const std::string rectangle = Rectangle();
    Over(button);
    EXPECT_EQ(button.Picture(), rest.Picture());
    Press(button);
    EXPECT_EQ(button.Picture(), pressed.Picture());
    // A second button stays with the first one's control; a release outside clicks nothing.
    Press(frame().picClose, 30, 30, 2);
    EXPECT_EQ(button.Picture(), pressed.Picture());
    Release(button, -900, 3000);
    EXPECT_EQ(button.Picture(), rest.Picture());
    EXPECT_EQ(Rectangle(), rectangle);
    EXPECT_TRUE(main().Visible);
  }
  EXPECT_THROW(Click(frame().picClose), ProcessEnded);
}

}  // namespace
