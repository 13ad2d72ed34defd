#include "skin/Toolbar.h"

#include <array>
#include <utility>

#include "core/Program.h"
#include "core/frmMain.h"

namespace {

struct Button {
  Twips Left;
  const char* ToolTip;
  const char* Word;
  Store Skin::*Rest;
  Store Skin::*Hover;
  Store Skin::*Pressed;
};

constexpr std::array<Button, 8> Rows = {{
    {120, "Back", "Back", &Skin::picBackBut, &Skin::picBackHiBut, &Skin::picBackDown},
    {615, "Forward", "Forward", &Skin::picForwardBut, &Skin::picForwardHiBut, &Skin::picForwardDown},
    {1110, "Refresh", "Refresh", &Skin::picrefreshBut, &Skin::picRefreshHiBut, &Skin::picRefreshDown},
    {1605, "Stop", "Stop", &Skin::picStopBut, &Skin::picStopHiBut, &Skin::picStopDown},
    {2100, "New Tab", "New Tab", &Skin::picNewTabBut, &Skin::picNewTabHiBut, &Skin::picNewTabDown},
    {2595, "Remove Tab", "Del Tab", &Skin::picDelTabBut, &Skin::picDelTabHiBut, &Skin::picDelTabDown},
    {3085, "History", "History", &Skin::picHistoryBut, &Skin::picHistoryHiBut, &Skin::picHistoryDown},
    {3585, "Search", "Search", &Skin::picSearchBut, &Skin::picSearchHiBut, &Skin::picSearchDown},
}};
static_assert(Rows.back().Word, "a row for each button");

// Rest, hover, pressed.
constexpr size_t ButtonStates = 3;

constexpr Twips ButtonTop = 15, ButtonSize = 495;

}  // namespace

Toolbar::Toolbar(frmMain& main)
    : picButton(main.program.desktop.Gate, "picButton",
                [this, &main](int16_t Index) { return MakeButton(main.frame.CoolBar1, Index); }),
      TimerMenus(main.program.desktop, 10000, true),
      main_(main) {
  for (size_t Index = 1; Index < Rows.size(); ++Index) {
    picButton.Load(static_cast<int>(Index));
    picButton(static_cast<int>(Index)).Visible = true;
  }
  for (Surface* strip : {&main.frame.CoolBar1, &main.frame.Picture2, &main.frame.Picture9})
    strip->MouseMove = [this](const Mouse&) { Strip_MouseMove(); };
  TimerMenus.Tick = [this] { TimerMenus_Timer(); };
}

std::unique_ptr<Surface> Toolbar::MakeButton(Surface& strip, int16_t Index) {
  const Button& row = Rows[static_cast<size_t>(Index)];
  auto button = std::make_unique<Surface>(&strip, Place{row.Left, ButtonTop, ButtonSize, ButtonSize});
  button->ToolTipText = row.ToolTip;
  button->AccessibleRole = Role::Button;
  button->AccessibleName = row.ToolTip;
  button->MouseDown = [this, Index](const Mouse&) { ButtonDown(Index); };
  button->MouseMove = [this, Index](const Mouse& mouse) { picButton_MouseMove(Index, mouse); };
  button->Click = [this, &row] { ClickBar(row.Word); };
  return button;
}

void Toolbar::ResetButtons(int16_t Index) {
  Skin& skin = main_.skin;
  for (int i = 0; i <= picButton.UBound(); ++i) {
    const Button& row = Rows[static_cast<size_t>(i)];
    Show(i, (skin.*(i == Index ? row.Hover : row.Rest)).Picture);
  }
  main_.frame.picTabLeft.Picture = (Index == -2 ? skin.TabLeftHi : skin.TabLeft).Picture;
  main_.frame.picTabRight.Picture = (Index == -3 ? skin.TabRightHi : skin.TabRight).Picture;
  // Whatever the index: each call arms the late sweep.
  TimerMenus.Enabled = true;
}

void Toolbar::Show(int i, const Picture& picture) {
  const auto way = static_cast<size_t>(i);
  const bool pales = way < ways_.size() && !ways_[way];
  if (way < ways_.size()) way_pictures_[way] = picture;
  picButton(i).Picture = pales ? Pale(picture) : picture;
}

void Toolbar::UpdateWays() {
  std::array<bool, 2> ways = {};
  Skipping([&] {
    const Browser& shown = main_.tabs.WebBrowser1(main_.tabs.CurrentTab);
    ways = {shown.CanGoBack(), shown.CanGoForward()};
  });
  if (ways == std::exchange(ways_, ways)) return;
  for (int i = 0; i < static_cast<int>(ways_.size()); ++i) Show(i, way_pictures_[static_cast<size_t>(i)]);
}

// Two thirds of the way to what each row begins with, which is the toolbar behind the button.
Picture Toolbar::Pale(const Picture& picture) {
  if (!picture || picture->Width <= 0) return picture;
  // Those of a skin that has gone aren't kept.
  if (pale_.size() > 2 * ButtonStates) pale_.clear();
  Picture& pale = pale_[picture];
  if (pale) return pale;
  Bitmap made = *picture;
  const auto width = static_cast<size_t>(made.Width);
  for (size_t at = 0; at < made.Pixels.size(); ++at) {
    const uint32_t behind = picture->Pixels[at / width * width], pixel = made.Pixels[at];
    uint32_t mixed = 0xFF000000;
    for (const int shift : {0, 8, 16})
      mixed |= ((behind >> shift & 0xFF) * 2 + (pixel >> shift & 0xFF)) / 3 << shift;
    made.Pixels[at] = mixed;
  }
  return pale = std::make_shared<const Bitmap>(std::move(made));
}

void Toolbar::ButtonDown(int16_t Index) {
  for (int i = 0; i <= picButton.UBound(); ++i) {
    const Button& row = Rows[static_cast<size_t>(i)];
    Show(i, (main_.skin.*(i == Index ? row.Pressed : row.Rest)).Picture);
  }
}

void Toolbar::picButton_MouseMove(int16_t Index, const Mouse& mouse) {
  main_.menubar.ResetMenus(main_.frame.labDummy);
  if (mouse.Button != 0)
    ButtonDown(Index);
  else
    ResetButtons(Index);
}

void Toolbar::Strip_MouseMove() {
  main_.menubar.ResetMenus(main_.frame.labDummy);
  ResetButtons(-1);
}

void Toolbar::TimerMenus_Timer() {
  main_.menubar.ResetMenus(main_.frame.labDummy);
  ResetButtons(-1);
  TimerMenus.Enabled = false;
}

void Toolbar::ClickBar(std::string_view Command) {
  TabSet& tabs = main_.tabs;
  const Preferences& preferences = main_.program.preferences;
  Skipping([&] {
    const auto shown = [&tabs]() -> Browser& { return tabs.WebBrowser1(tabs.CurrentTab); };
    if (Command == "Back") {
      shown().GoBack();
    } else if (Command == "Forward") {
      shown().GoForward();
    } else if (Command == "Refresh") {
      shown().Refresh();
    } else if (Command == "Home") {
      shown().GoHome();
    } else if (Command == "Stop") {
      shown().Stop();
    } else if (Command == "New Tab") {
      tabs.AddTab(preferences.NewTabMode != 0 ? shown().LocationURL() : preferences.DefaultPage);
    } else if (Command == "Del Tab") {
      return tabs.CloseTab(tabs.CurrentTab);
    } else if (Command == "Search") {
      if (preferences.SearchInTab == 1)
        tabs.AddTab(preferences.SearchPage);
      else
        shown().Navigate(preferences.SearchPage);
    } else if (Command == "History") {
      main_.history.OpenHistory();
    }
    // A new tab waits for an address; what else was asked for is to be read.
    if (Command == "New Tab")
      main_.address.AskForAddress();
    else if (Command != "Stop")
      tabs.FocusPage();
  });
}
