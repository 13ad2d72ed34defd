#include "menus/frmMenu.h"

#include <algorithm>

#include "core/Program.h"
#include "core/frmMain.h"
#include "menus/MenuKeys.h"
#include "platform/Text.h"
#include "skin/TileBitmapModule.h"

namespace {

constexpr Place DesignRow = {240, 120, 615, 225};
constexpr Twips SeparatorHeight = 120, SeparatorLeft = 60;
constexpr Twips LeastTextWidth = 1500;

// Titles and files from outside may be of any length. A text wider than this ends in an ellipsis, and no row
// ends lower than this: the first is wider than most screens, the second what the desktop's windows can have.
constexpr Twips GreatestTextWidth = 32767;
constexpr Twips GreatestHeight = 32767 * TwipsPerPixel;

}  // namespace

frmMenu::frmMenu(Program& program)
    : Window(program.desktop, Kind::Popup, {0, 0, 4140, 510}, ""),
      mnuText(program.desktop.Gate, "mnuText",
              [this, &program](int16_t Index) { return MakeRow(Index, program.colours); }),
      picSpacer(program.desktop.Gate, "picSpacer", [this](int16_t) { return MakeSpacer(); }),
      frame(this),
      program_(program) {
  picSpacer(0).Visible = false;
  MouseMove = [this](const Mouse&) { ResetMenus(-1); };
  Deactivate = [this] { Form_Deactivate(); };
  LostFocus = [this] { Form_LostFocus(); };
  KeyDown = [this](const KeyPress& press) { return Form_KeyDown(press); };
}

std::unique_ptr<Label> frmMenu::MakeRow(int16_t Index, const Colours& colours) {
  auto row = std::make_unique<Label>(this, DesignRow, "");
  row->ForeColor = colours.MenuTextColour;
  row->AccessibleRole = Role::MenuItem;
  row->MouseMove = [this, Index](const Mouse&) { ResetMenus(Index); };
  row->Click = [this, Index] { mnuText_Click(Index); };
  return row;
}

std::unique_ptr<Surface> frmMenu::MakeSpacer() {
  auto spacer = std::make_unique<Surface>(this);
  spacer->Click = [this] { ResetMenus(-1); };
  return spacer;
}

void frmMenu::Form_Load() { program_.menu.MenuLoaded = 1; }

void frmMenu::Form_Unload(bool&) {
  leaving_ = true;
  program_.menu.OpenMenuName.clear();
  program_.menu.MenuLoaded = 0;
}

void frmMenu::Build(Twips left, Twips top) {
  MakeRows();
  Move(left, top);
  Measure();
  frame.Surround(Width, Height);
  Skin& skin = program_.main().skin;
  frame.Tile(skin);
  TileBitmapForm(*this, skin.picMnuBack);
  MakeSpacers();
}

void frmMenu::MakeRows() {
  const std::vector<std::string>& items = program_.menu.MenuItems;
  mnuText(0).Caption = items[0];
  mnuText(0).AccessibleName = items[0];
  for (size_t i = 1; i < items.size(); ++i) {
    const Label& above = mnuText(static_cast<int>(i) - 1);
    const Twips top = above.Height + above.Top;
    if (top + 2 * DesignRow.Height > GreatestHeight) return;
    mnuText.Load(static_cast<int>(i));
    Label& row = mnuText(static_cast<int>(i));
    row.Caption = items[i];
    row.AccessibleName = items[i];
    row.Top = top;
    row.ZOrder(1);
    row.Visible = true;
    if (items[i] != "-") continue;
    row.Height = SeparatorHeight;
    row.Visible = false;
  }
}

void frmMenu::Measure() {
  Twips widest = 0;
  for (int i = 0; i <= mnuText.UBound(); ++i) widest = std::max(widest, TextWidth(mnuText(i).Caption()));
  widest = std::clamp(widest, LeastTextWidth, GreatestTextWidth);
  const Label& last = mnuText(mnuText.UBound());
  Width = 2 * mnuText(0).Left + widest;
  Height = last.Height + last.Top + mnuText(0).Top;
  for (int i = 0; i <= mnuText.UBound(); ++i) mnuText(i).Width = Width - 2 * mnuText(0).Left;
}

void frmMenu::MakeSpacers() {
  int k = 0;
  for (int i = 0; i <= mnuText.UBound(); ++i) {
    const Label& row = mnuText(i);
    if (row.Caption() != "-") continue;
    picSpacer(k).Top = row.Top;
    picSpacer(k).Left = SeparatorLeft;
    picSpacer(k).Width = Width - 2 * SeparatorLeft;
    picSpacer(k).Height = row.Height;
    TileBitmap(picSpacer(k), program_.main().skin.picMnuSpacer);
    picSpacer(k).Visible = true;
    ++k;
    picSpacer.Load(k);
  }
}

void frmMenu::ResetMenus(int16_t Index) {
  const Colours& colours = program_.colours;
  for (int i = 0; i <= mnuText.UBound(); ++i) {
    Label& row = mnuText(i);
    const bool highlighted = i == Index;
    row.ForeColor = highlighted ? colours.MenuHiTextColour : colours.MenuTextColour;
    if (highlighted) row.BackColor = colours.MenuHiBackColour;
    row.Opaque = highlighted;
    row.AccessibleSelected = highlighted;
  }
}

int frmMenu::Highlighted() {
  int i = mnuText.UBound();
  while (i >= 0 && !mnuText(i).Opaque) --i;
  return i;
}

void frmMenu::Step(int from, int step, std::string_view start) {
  const int rows = mnuText.UBound() + 1;
  for (int n = 0; n < rows; ++n) {
    const int i = ((from + n * step) % rows + rows) % rows;
    const std::string& caption = mnuText(i).Caption();
    if (!mnuText(i).Visible || !Text::SameWithoutCase(Text::Left(caption, Text::Length(start)), start))
      continue;
    return ResetMenus(static_cast<int16_t>(i));
  }
}

bool frmMenu::Form_KeyDown(const KeyPress& press) {
  const int row = Highlighted();
  MenuBar& bar = program_.main().menubar;
  switch (MenuKeys::Of(press)) {
    case MenuKeys::Key::Down:
      Step(row + 1, 1);
      return true;
    case MenuKeys::Key::Up:
      Step(row < 0 ? mnuText.UBound() : row - 1, -1);
      return true;
    case MenuKeys::Key::First:
      Step(0, 1);
      return true;
    case MenuKeys::Key::Last:
      Step(mnuText.UBound(), -1);
      return true;
    case MenuKeys::Key::Left:
      bar.OpenNext(-1);
      return true;
    case MenuKeys::Key::Right:
      bar.OpenNext(1);
      return true;
    case MenuKeys::Key::Choose:
      if (row >= 0) mnuText(row).Click();
      return true;
    case MenuKeys::Key::Letter:
      if (row >= 0 || !bar.OpenByLetter(press.Name)) Step(row + 1, 1, press.Name);
      return true;
    case MenuKeys::Key::Other:
      break;
  }
  return false;
}

void frmMenu::mnuText_Click(int16_t Index) {
  Program& program = program_;
  program.menu.MenuMode = 0;
  program.menu.MenuItemIndex = Index;
  program.main().tabs.FocusPage();
  program.main().menus.MenuCommand(Text::LowerCase(mnuText(Index).Caption()));
  program.main().toolbar.ResetButtons(-1);
  program.main().menubar.ResetMenus(program.main().frame.labDummy);
  program.popup_menu.Unload();
}

void frmMenu::Form_Deactivate() {
  if (leaving_) return;
  Program& program = program_;
  if (program.menu.OpenMenuName != "favourites") {
    program.menu.OpenMenuName.clear();
    program.menu.MenuMode = 0;
  }
  program.menu.MenuLoaded = 0;
  program.popup_menu.Unload();
  program.main().toolbar.ResetButtons(-1);
  program.main().menubar.ResetMenus(program.main().frame.labDummy);
  if (program.menu.MenuMode == 0) program.main().tabs.FocusPage();
}

void frmMenu::Form_LostFocus() {
  if (leaving_) return;
  program_.menu.OpenMenuName.clear();
  program_.menu.MenuLoaded = 0;
  program_.popup_menu.Unload();
}
