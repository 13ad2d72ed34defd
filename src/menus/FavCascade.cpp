// How favourites windows answer the mouse, open one another, scroll and close.

#include <cmath>

#include "core/Conversions.h"
#include "core/Program.h"
#include "core/frmMain.h"
#include "menus/frmFavMenu.h"
#include "platform/Text.h"

namespace {

constexpr Twips Overlap = 60;  // of a window and the one that opened it

}  // namespace

void frmFavMenu::Wire(Control& control, void (frmFavMenu::*hover)(), void (frmFavMenu::*click)()) {
  control.MouseMove = [this, hover](const Mouse&) { (this->*hover)(); };
  if (click) control.Click = [this, click] { (this->*click)(); };
}

void frmFavMenu::WireMouse() {
  Wire(*this, &frmFavMenu::OverBackground);
  Wire(picMenuBack, &frmFavMenu::OverBackground);
  Wire(picSpacer, &frmFavMenu::OverBackground);
  Wire(labAdd, &frmFavMenu::OverAdd, &frmFavMenu::labAdd_Click);
  Wire(labOrganise, &frmFavMenu::OverOrganise, &frmFavMenu::labOrganise_Click);
  for (Control* strip : {static_cast<Control*>(&labScroll), static_cast<Control*>(&picScroll)})
    Wire(*strip, &frmFavMenu::OverScroll, &frmFavMenu::ScrollMenu);
  for (Control* strip : {static_cast<Control*>(&labScrollUp), static_cast<Control*>(&picScrollUp)})
    Wire(*strip, &frmFavMenu::OverScrollUp, &frmFavMenu::ScrollMenuUp);
  // As the strips do, and so only where they are there.
  MouseWheel = [this](int notches) {
    for (; notches > 0 && picScroll.Visible; --notches) ScrollMenu();
    for (; notches < 0 && picScrollUp.Visible; ++notches) ScrollMenuUp();
  };
  Timer1.Tick = [this] { Timer1_Timer(); };
  Timer2.Tick = [this] { Timer2_Timer(); };
  Deactivate = [this] { Form_Deactivate(); };
  KeyDown = [this](const KeyPress& press) { return Form_KeyDown(press); };
}

void frmFavMenu::Highlight(Label& row, bool highlighted) {
  row.ForeColor = highlighted ? FavHiTextColour : FavTextColour;
  if (highlighted) row.BackColor = FavHiBackColour;
  row.Opaque = highlighted;
  row.AccessibleSelected = highlighted;
}

void frmFavMenu::ResetMenuItems(int16_t Index) {
  for (int i = 0; i <= labMenuItem.UBound(); ++i) Highlight(labMenuItem(i), i == Index);
  HighlightFixed(Index);
}

void frmFavMenu::ResetMenuFolders(int16_t Index) {
  const Skin& skin = program_.main().skin;
  for (int i = 0; i <= labFolder.UBound(); ++i) {
    Highlight(labFolder(i), i == Index);
    if (picArrow.Has(i)) picArrow(i).Picture = i == Index ? skin.picArrowHi.Picture : skin.picArrow.Picture;
  }
  HighlightFixed(Index);
}

void frmFavMenu::HighlightFixed(int16_t Index) {
  Highlight(labAdd, Index == -2);
  Highlight(labOrganise, Index == -3);
}

// Nothing deeper than this window is wanted.
void frmFavMenu::SetPath() { program_.menu.FavOpenPath = labSource; }

void frmFavMenu::OverBackground() {
  Timer2.Enabled = false;
  SetPath();
  ResetMenuItems(-1);
  ResetMenuFolders(-1);
}

// Leaves Timer2 running: a folder hovered over just before still opens.
void frmFavMenu::OverFixed(int16_t Index) {
  SetPath();
  ResetMenuItems(Index);
  ResetMenuFolders(Index);
}

void frmFavMenu::OverScroll() {
  OverBackground();
  ScrollMenu();
}

void frmFavMenu::OverScrollUp() {
  OverBackground();
  ScrollMenuUp();
}

// The path stays, so that an open window stays while the mouse crosses other folders on its way there.
void frmFavMenu::labFolder_MouseMove(int16_t Index) {
  CurMenu = Index;
  Timer2.Enabled = true;
  ResetMenuItems(-1);
  ResetMenuFolders(Index);
}

void frmFavMenu::labMenuItem_MouseMove(int16_t Index) {
  // The file is read when the mouse is on its row for the first time.
  Label& row = labMenuItem(Index);
  if (row.ToolTipText->empty() && static_cast<size_t>(Index) < File1.size())
    Skipping([&] {
      const std::string address =
          program_.main().favourites.ReadShortcut(labSource + "\\" + File1[static_cast<size_t>(Index)]);
      row.ToolTipText = Text::Left(Text::Valid(address), FavouritesModule::TipCharacters);
    });
  Timer2.Enabled = false;
  SetPath();
  ResetMenuItems(Index);
  ResetMenuFolders(-1);
}

void frmFavMenu::EndMenuMode() {
  program_.menu.MenuMode = 0;
  program_.main().toolbar.ResetButtons(-1);
  program_.main().menubar.ResetMenus(program_.main().frame.labDummy);
}

// In the tab on show. A shortcut without an address loads nothing.
void frmFavMenu::labMenuItem_Click(int16_t Index) {
  if (static_cast<size_t>(Index) >= File1.size()) return;
  const std::string path = labSource + "\\" + File1[static_cast<size_t>(Index)];
  frmMain& main = program_.main();
  EndMenuMode();
  std::string fault;
  try {
    const std::string address = main.favourites.ReadShortcut(path);
    main.address.Combo1->SetText(address);
    // As if it had been chosen in the address bar's list.
    main.address.Combo1->Click();
  } catch (const Failure& failure) {
    fault = failure.what();
  }
  program_.menu.FavOpenPath = "";
  main.SetFocus();
  if (!fault.empty()) main.favourites.Tell(fault);
}

void frmFavMenu::labAdd_Click() {
  EndMenuMode();
  program_.main().favourites.AddToFavorites();
  program_.menu.FavOpenPath = "";
}

void frmFavMenu::labOrganise_Click() {
  EndMenuMode();
  program_.main().favourites.ShowOrgFavs();
  program_.menu.FavOpenPath = "";
}

void frmFavMenu::Timer2_Timer() {
  Timer2.Enabled = false;
  const Label& row = labFolder(CurMenu);
  const Twips first = IsTop() ? labAdd.Top : labFolder(0).Top;
  CreateNextMenu(CurMenu, ToInt32(Top + row.Top - first - std::abs(picMenuBack.Top())),
                 ToInt32(Left + Width - Overlap));
}

void frmFavMenu::CreateNextMenu(int16_t Index, int32_t Top, int32_t Left) {
  const std::string P = labSource + "\\" + Dir1.at(static_cast<size_t>(Index));
  // It is the deepest one already.
  if (Text::SameWithoutCase(P, program_.menu.FavOpenPath())) return;
  frmFavMenu& next = program_.fav_cascade.Add();
  program_.menu.FavOpenPath = P;
  next.Move(Left, Top);
  next.labSource = P;
  next.GetMenuItems(P);
  next.Show();
}

// A tick that finds nothing to do is the last one until the path changes.
void frmFavMenu::Timer1_Timer() {
  const std::string& path = program_.menu.FavOpenPath();
  if (Text::SameWithoutCase(Text::Left(path, Text::Length(labSource)), labSource)) {
    Timer1.Enabled = false;
    return;
  }
  // Where another menu of the bar has taken over, the menu mode goes on.
  if (program_.menu.MenuLoaded != 1 && IsTop()) EndMenuMode();
  if (IsTop())
    program_.fav_menu.Unload();
  else
    program_.fav_cascade.Unload(*this);
}

// A press outside the menus, or another program in front: the main window is the active one again.
void frmFavMenu::Form_Deactivate() {
  if (IsTop()) program_.main().tabs.FocusPage();
  if (program_.main().Activate) program_.main().Activate();
}

void frmFavMenu::ShowStrip(Label& label, Surface& picture, bool shown) {
  label.Visible = shown;
  picture.Visible = shown;
}

void frmFavMenu::PlaceLowerFrame() {
  picScroll.Top = picMenuBack.Height - picScroll.Height - frame.picBottom.Height;
  labScroll.Top = picScroll.Top;
  frame.PlaceBottom(picMenuBack.Height);
}

void frmFavMenu::PlaceUpperFrame() {
  const Twips above = std::abs(picMenuBack.Top());
  frame.PlaceTop(above);
  picScrollUp.Top = above + frame.picTop.Height;
  labScrollUp.Top = picScrollUp.Top;
}

// At the last row the lower strip goes.
void frmFavMenu::HideStripAtEnd() {
  if (Dir1.empty() && File1.empty()) return;
  const Label& last = File1.empty() ? labFolder(labFolder.UBound()) : labMenuItem(labMenuItem.UBound());
  if (last.Visible) ShowStrip(labScroll, picScroll, false);
}

// The surface grows by a row and moves up by one, so that the window always shows its lower end.
void frmFavMenu::ScrollMenu() {
  ShowStrip(labScrollUp, picScrollUp, true);
  const Twips Step = labMenuItem(0).Height;
  picMenuBack.Height = picMenuBack.Height + Step;
  PlaceLowerFrame();
  TileAll();
  picMenuBack.Top = picMenuBack.Top - Step;
  PlaceUpperFrame();
  CheckVisibleItems();
  HideStripAtEnd();
}

void frmFavMenu::ScrollMenuUp() {
  if (picMenuBack.Top == 0) return ShowTop();
  ShowStrip(labScroll, picScroll, true);
  ShowStrip(labScrollUp, picScrollUp, true);
  const Twips Step = labMenuItem(0).Height;
  picMenuBack.Height = picMenuBack.Height - Step;
  PlaceLowerFrame();
  TileAll();
  picMenuBack.Top = picMenuBack.Top + Step;
  PlaceUpperFrame();
  CheckVisibleItems();
  HideStripAtEnd();
  if (picMenuBack.Top != 0) return;
  ShowTop();
  CheckVisibleItems();
}

void frmFavMenu::ShowTop() {
  ShowStrip(labScrollUp, picScrollUp, false);
  ShowStrip(labScroll, picScroll, true);
}
