#include "menus/frmFavMenu.h"

#include <algorithm>
#include <cmath>

#include "core/Program.h"
#include "core/frmMain.h"
#include "platform/Files.h"
#include "platform/Text.h"
#include "platform/favourites/FavouritesFolder.h"
#include "skin/ScreenSize.h"
#include "skin/TileBitmapModule.h"

namespace {

constexpr Place DesignFolder = {360, 120, 720, 225}, DesignItem = {360, 120, 825, 225};
constexpr Place DesignIcon = {0, 0, 210, 210};
constexpr Twips IconLeft = 90, ArrowRight = 90;
constexpr Twips SpacerHeight = 120, BelowFixedRows = 165;
constexpr Twips LeastTextWidth = 300;
constexpr Twips AboveScreenBottom = 60;
constexpr Twips LeastTopHeight = 1215, LeastHeight = 600;

// Rows are numbered in 16 bits.
constexpr size_t MostRows = INT16_MAX;

std::vector<std::string> Readable(const std::vector<std::string>& names) {
  std::vector<std::string> captions;
  captions.reserve(names.size());
  for (const std::string& name : names) captions.push_back(Text::Valid(name));
  return captions;
}

}  // namespace

frmFavMenu::frmFavMenu(Program& program)
    : Window(program.desktop, Kind::Popup, {0, 0, 4140, 510}, ""),
      picMenuBack(this),
      labFolder(program.desktop.Gate, "labFolder", [this](int16_t Index) { return MakeFolderRow(Index); }),
      labMenuItem(program.desktop.Gate, "labMenuItem",
                  [this](int16_t Index) { return MakeShortcutRow(Index); }),
      picFolder(program.desktop.Gate, "picFolder", [this](int16_t) { return MakeIcon(); }),
      picLink(program.desktop.Gate, "picLink", [this](int16_t) { return MakeIcon(); }),
      picArrow(program.desktop.Gate, "picArrow", [this](int16_t) { return MakeIcon(); }),
      labAdd(&picMenuBack, DesignItem, "Add to Favourites..."),
      labOrganise(&picMenuBack, DesignItem, "Organise Favourites..."),
      picSpacer(&picMenuBack),
      frame(&picMenuBack),
      labScroll(&picMenuBack, DesignIcon, ""),
      labScrollUp(&picMenuBack, DesignIcon, ""),
      picScroll(&picMenuBack, DesignIcon),
      picScrollUp(&picMenuBack, DesignIcon),
      Timer1(program.desktop, 1, true),
      Timer2(program.desktop, 500, false),
      program_(program) {
  labFolder(0).Caption = "Folder List";
  const std::initializer_list<Control*> hidden = {&labFolder(0), &labMenuItem(0), &labAdd,     &labOrganise,
                                                  &picSpacer,    &labScrollUp,    &picScrollUp};
  for (Control* control : hidden) control->Visible = false;
  labAdd.AccessibleRole = labOrganise.AccessibleRole = Role::MenuItem;
  labAdd.AccessibleName = labAdd.Caption;
  labOrganise.AccessibleName = labOrganise.Caption;
  WireMouse();
}

// All rows at once: each by itself would have to be found among the others.
frmFavMenu::~frmFavMenu() { picMenuBack.ReleaseChildren(); }

std::unique_ptr<Label> frmFavMenu::MakeFolderRow(int16_t Index) {
  auto row = std::make_unique<Label>(&picMenuBack, DesignFolder, "");
  row->AccessibleRole = Role::SubMenu;
  row->MouseMove = [this, Index](const Mouse&) { labFolder_MouseMove(Index); };
  row->AccessiblePress = [this, Index] {
    labFolder_MouseMove(Index);
    Timer2_Timer();
  };
  return row;
}

std::unique_ptr<Label> frmFavMenu::MakeShortcutRow(int16_t Index) {
  auto row = std::make_unique<Label>(&picMenuBack, DesignItem, "");
  row->AccessibleRole = Role::MenuItem;
  row->MouseMove = [this, Index](const Mouse&) { labMenuItem_MouseMove(Index); };
  row->Click = [this, Index] { labMenuItem_Click(Index); };
  return row;
}

std::unique_ptr<Surface> frmFavMenu::MakeIcon() {
  auto icon = std::make_unique<Surface>(&picMenuBack, DesignIcon);
  icon->Visible = false;
  return icon;
}

void frmFavMenu::Form_Load() {
  const Skin& skin = program_.main().skin;
  picFolder(0).Picture = skin.picFolder.Picture;
  picArrow(0).Picture = skin.picArrow.Picture;
  picLink(0).Picture = skin.picLink.Picture;
  picScroll.Picture = skin.picScroll.Picture;
  picScrollUp.Picture = skin.picScrollUp.Picture;
  FavTextColour = program_.colours.MenuTextColour;
  FavHiTextColour = program_.colours.MenuHiTextColour;
  // Black, whatever the other menus have.
  FavHiBackColour = 0;
  path_watch_ = program_.menu.FavOpenPath.WhenChanged([this] { Timer1.Enabled = true; });
}

void frmFavMenu::Form_Unload(bool&) {
  path_watch_.reset();
  Timer1.Enabled = false;
  Timer2.Enabled = false;
}

void frmFavMenu::GetMenuItems(const std::string& Path) {
  Favourites::Listing listing = Favourites::List(HostPath(Path));
  Dir1 = std::move(listing.Folders);
  File1 = std::move(listing.Shortcuts);
  Dir1.resize(std::min(Dir1.size(), MostRows));
  File1.resize(std::min(File1.size(), MostRows));
  Skin& skin = program_.main().skin;
  if (IsTop()) PlaceFixedRows();
  FillRows(labFolder, picFolder, Readable(Dir1), skin.picFolder);
  if (!Dir1.empty() && !File1.empty()) {
    const Label& last = labFolder(labFolder.UBound());
    labMenuItem(0).Top = last.Top + last.Height;
  }
  std::vector<std::string> captions = Readable(File1);
  for (std::string& caption : captions) caption = Favourites::WithoutExtension(caption);
  FillRows(labMenuItem, picLink, captions, skin.picLink);
  if (Dir1.empty() && File1.empty()) FillEmpty();
  SetWidths();
  PlaceArrows();
  SetHeight();
  LimitToScreen();
  picMenuBack.Width = Width;
  picMenuBack.Height = Height;
  PlaceStrips();
  frame.Surround(Width, Height);
  TileAll();
  labScroll.Top = picScroll.Top;
  labScroll.Left = 0;
  // In front of the rows' texts, which reach past the right edge.
  for (Control* front : {static_cast<Control*>(&labScroll), static_cast<Control*>(&labScrollUp),
                         static_cast<Control*>(&picScroll), static_cast<Control*>(&picScrollUp)})
    front->ZOrder(0);
  frame.ToFront();
}

// The two rows of the top window that are no favourites, and the line under them.
void frmFavMenu::PlaceFixedRows() {
  labAdd.Top = labFolder(0).Top;
  labOrganise.Top = labAdd.Top + labAdd.Height;
  labFolder(0).Top = labOrganise.Top + labOrganise.Height + BelowFixedRows;
  labMenuItem(0).Top = labFolder(0).Top;
  labAdd.Visible = true;
  labOrganise.Visible = true;
  picSpacer.Top = labOrganise.Top + labOrganise.Height;
  picSpacer.Height = SpacerHeight;
  picSpacer.Visible = true;
}

// One row below the other, from where the first one stands.
void frmFavMenu::FillRows(ControlArray<Label>& rows, ControlArray<Surface>& icons,
                          const std::vector<std::string>& captions, const Store& picture) {
  Twips top = rows(0).Top;
  for (size_t n = 0; n < captions.size(); ++n) {
    const int i = static_cast<int>(n);
    if (i > 0) {
      rows.Load(i);
      icons.Load(i);
    }
    Label& row = rows(i);
    row.Caption = captions[n];
    row.AccessibleName = captions[n];
    row.Top = top;
    row.Visible = true;
    Surface& icon = icons(i);
    icon.Picture = picture.Picture;
    icon.Left = IconLeft;
    icon.Top = top;
    icon.Visible = true;
    top += row.Height;
  }
}

// A disabled row: the mouse finds the background there.
void frmFavMenu::FillEmpty() {
  Label& row = labMenuItem(0);
  row.Caption = "[empty]";
  row.AccessibleName = row.Caption;
  row.Enabled = false;
  row.Visible = true;
}

// By the widest caption, hidden ones too; not by those of the fixed rows.
void frmFavMenu::SetWidths() {
  Twips widest = LeastTextWidth;
  for (ControlArray<Label>* rows : {&labFolder, &labMenuItem})
    for (int i = 0; i <= rows->UBound(); ++i) widest = std::max(widest, TextWidth((*rows)(i).Caption()));
  Width = 2 * labFolder(0).Left + widest;
  labAdd.Width = widest;
  labOrganise.Width = widest;
  picSpacer.Width = widest;
  picSpacer.Left = labFolder(0).Left;
  labAdd.ForeColor = FavTextColour;
  labOrganise.ForeColor = FavTextColour;
  // The window's width, so that the highlight reaches past the right edge.
  for (ControlArray<Label>* rows : {&labFolder, &labMenuItem})
    for (int i = 0; i <= rows->UBound(); ++i) {
      (*rows)(i).Width = Width;
      (*rows)(i).ForeColor = FavTextColour;
    }
}

void frmFavMenu::PlaceArrows() {
  for (int i = 0; i < static_cast<int>(Dir1.size()); ++i) {
    if (i > 0) picArrow.Load(i);
    Surface& arrow = picArrow(i);
    arrow.Picture = program_.main().skin.picArrow.Picture;
    arrow.Top = labFolder(i).Top;
    arrow.Left = Width - ArrowRight - arrow.Width;
    arrow.Visible = true;
  }
}

// The last row of each kind counts, even where it is hidden.
void frmFavMenu::SetHeight() {
  const Twips base = IsTop() ? labAdd.Top : labFolder(0).Top;
  const Label &item = labMenuItem(labMenuItem.UBound()), &folder = labFolder(labFolder.UBound());
  Height = std::max(item.Top + item.Height + base, folder.Top + folder.Height + base);
}

// A folder too long for the screen ends on a whole row, above the strip that scrolls.
void frmFavMenu::LimitToScreen() {
  const frmMain& main = program_.main();
  // Of the monitor that the main window is on, and below its panels.
  const Twips bottom =
      program_.desktop.WorkArea(main).Top + GetMaximisedSize(main, program_.desktop).MaxClientHeight;
  if (Top + Height <= bottom) return ShowStrip(labScroll, picScroll, false);
  Height = std::max(0.0, bottom - Top - AboveScreenBottom);
  ShowStrip(labScroll, picScroll, true);
  CheckVisibleItems();
  const Twips least = IsTop() ? LeastTopHeight : LeastHeight;
  Height = std::max({HeightOfVisible(labFolder), HeightOfVisible(labMenuItem), least});
}

// What the rows that are visible need with the strip below them; 0 where none is.
Twips frmFavMenu::HeightOfVisible(ControlArray<Label>& rows) {
  Twips height = 0;
  for (int i = 0; i <= rows.UBound(); ++i)
    if (rows(i).Visible) height = rows(i).Top + rows(i).Height + rows(0).Top + labScroll.Height;
  return IsTop() ? height + labAdd.Top - rows(0).Top : height;
}

void frmFavMenu::PlaceStrips() {
  picScroll.Top = Height - picScroll.Height - frame.picBottom.Height;
  picScroll.Left = Width / 2 - picScroll.Width / 2;
  labScroll.Width = Width;
  labScroll.Height = picScroll.Height;
  labScrollUp.Height = picScrollUp.Height;
  labScrollUp.Width = Width;
  labScrollUp.Top = frame.picTop.Height;
  picScrollUp.Top = frame.picTop.Height;
  picScrollUp.Left = Width / 2 - picScrollUp.Width / 2;
}

void frmFavMenu::TileAll() {
  Skin& skin = program_.main().skin;
  frame.Tile(skin);
  TileBitmap(picMenuBack, skin.picMnuBack);
  TileBitmap(picSpacer, skin.picMnuSpacer);
}

void frmFavMenu::CheckVisibleItems() {
  const Twips above = std::abs(picMenuBack.Top());
  const Twips limit = above + (labScrollUp.Visible ? labScrollUp.Height() : 0);
  const auto on_view = [&](const Label& row) {
    return row.Top + row.Height - above <= Height - picScroll.Height && row.Top >= limit;
  };
  for (int i = 0; i < static_cast<int>(Dir1.size()); ++i) {
    const bool shown = on_view(labFolder(i));
    labFolder(i).Visible = shown;
    picFolder(i).Visible = shown;
    if (picArrow.Has(i)) picArrow(i).Visible = shown;
  }
  for (int i = 0; i < static_cast<int>(File1.size()); ++i) {
    const bool shown = on_view(labMenuItem(i));
    labMenuItem(i).Visible = shown;
    picLink(i).Visible = shown;
  }
  if (!IsTop()) return;
  labAdd.Visible = labAdd.Top >= limit;
  labOrganise.Visible = labOrganise.Top >= limit;
  picSpacer.Visible = picSpacer.Top >= limit;
}
