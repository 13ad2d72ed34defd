// How favourites windows answer the keyboard: with the highlight that the mouse would give, but no folder
// opens before it is wanted.

#include <cmath>

#include "core/Program.h"
#include "core/frmMain.h"
#include "menus/MenuKeys.h"
#include "menus/frmFavMenu.h"
#include "platform/Text.h"

namespace {

// Above the folders, on the top window only.
constexpr int FixedRows = 2;

}  // namespace

int frmFavMenu::Rows() const {
  return static_cast<int>(Dir1.size() + File1.size()) + (IsTop() ? FixedRows : 0);
}

Label& frmFavMenu::Row(int row) {
  if (IsTop() && row < FixedRows) return row == 0 ? labAdd : labOrganise;
  const int folder = row - (IsTop() ? FixedRows : 0), folders = static_cast<int>(Dir1.size());
  return folder < folders ? labFolder(folder) : labMenuItem(folder - folders);
}

int frmFavMenu::Highlighted() {
  int row = Rows() - 1;
  while (row >= 0 && !Row(row).Opaque) --row;
  return row;
}

void frmFavMenu::ScrollTo(const Label& row) {
  // Each step brings the window one row further, and both ends bring no row more.
  for (int steps = Rows(); steps > 0 && !row.Visible; --steps)
    row.Top < std::abs(picMenuBack.Top()) + labScrollUp.Height ? ScrollMenuUp() : ScrollMenu();
}

void frmFavMenu::HighlightRow(int row) {
  if (row < 0 || row >= Rows()) return;
  Label& label = Row(row);
  ScrollTo(label);
  if (&label == &labAdd) {
    OverAdd();
  } else if (&label == &labOrganise) {
    OverOrganise();
  } else if (label.AccessibleRole == Role::SubMenu) {
    SetPath();
    labFolder_MouseMove(static_cast<int16_t>(row - (IsTop() ? FixedRows : 0)));
  } else {
    label.MouseMove({});
  }
  Timer2.Enabled = false;
}

void frmFavMenu::ChooseRow(int row) {
  if (row < 0) return;
  Label& label = Row(row);
  if (label.AccessibleRole == Role::SubMenu)
    OpenFolder(static_cast<int16_t>(row - (IsTop() ? FixedRows : 0)));
  else
    label.Click();
}

// The window that opens is the one that hears of keys from then on.
void frmFavMenu::OpenFolder(int16_t Index) {
  labFolder_MouseMove(Index);
  Timer2_Timer();
  const auto& open = program_.fav_cascade.All();
  if (!open.empty() && open.back().get() != this) open.back()->HighlightRow(0);
}

void frmFavMenu::FindLetter(std::string_view letter) {
  const int from = Highlighted() + 1;
  for (int n = 0; n < Rows(); ++n) {
    const int row = (from + n) % Rows();
    if (Text::SameWithoutCase(Text::Left(Row(row).Caption(), 1), letter)) return HighlightRow(row);
  }
}

void frmFavMenu::BackToParent() {
  program_.menu.FavOpenPath = labSource.substr(0, labSource.rfind('\\'));
  Timer1_Timer();
}

bool frmFavMenu::Form_KeyDown(const KeyPress& press) {
  const int row = Highlighted();
  switch (MenuKeys::Of(press)) {
    case MenuKeys::Key::Down:
      HighlightRow(row + 1);
      return true;
    case MenuKeys::Key::Up:
      HighlightRow(row < 0 ? Rows() - 1 : row - 1);
      return true;
    case MenuKeys::Key::First:
      HighlightRow(0);
      return true;
    case MenuKeys::Key::Last:
      HighlightRow(Rows() - 1);
      return true;
    case MenuKeys::Key::Left:
      IsTop() ? program_.main().menubar.OpenNext(-1) : BackToParent();
      return true;
    case MenuKeys::Key::Right:
      if (row < 0 && !IsTop())
        HighlightRow(0);
      else if (row >= 0 && Row(row).AccessibleRole == Role::SubMenu)
        OpenFolder(static_cast<int16_t>(row - (IsTop() ? FixedRows : 0)));
      else
        program_.main().menubar.OpenNext(1);
      return true;
    case MenuKeys::Key::Choose:
      ChooseRow(row);
      return true;
    case MenuKeys::Key::Letter:
      if (row >= 0 || !IsTop() || !program_.main().menubar.OpenByLetter(press.Name)) FindLetter(press.Name);
      return true;
    case MenuKeys::Key::Other:
      break;
  }
  return false;
}
