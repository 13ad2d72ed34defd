#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "menus/MenuFrame.h"
#include "platform/SharedValue.h"
#include "platform/Timer.h"
#include "platform/scene/ControlArray.h"
#include "platform/scene/Window.h"

class Program;

// A favourites window: one folder of the favourites, its sub-folders above its shortcuts. Hovering over a
// folder opens a further window beside this one. No window knows of another: each one closes itself once
// `FavOpenPath` doesn't lead through its own folder any more.
class frmFavMenu : public Window {
 public:
  explicit frmFavMenu(Program& program);
  ~frmFavMenu() override;

  std::string labSource;                 // the folder on show, without a trailing backslash
  std::string labStart;                  // the folder of favourites; on the top window only
  std::string labOpen;                   // "first" on the top window
  int16_t CurMenu = 0;                   // the folder row hovered over last
  std::vector<std::string> Dir1, File1;  // names of sub-folders, and of shortcuts with their extension

  Surface picMenuBack;                         // carries everything else, and moves when the window scrolls
  ControlArray<Label> labFolder, labMenuItem;  // one for each sub-folder, each shortcut
  ControlArray<Surface> picFolder, picLink, picArrow;  // the rows' icons
  Label labAdd, labOrganise;
  Surface picSpacer;  // the line under these two
  MenuFrame frame;
  Label labScroll, labScrollUp;  // the strips that scroll
  Surface picScroll, picScrollUp;

  Timer Timer1;  // closes the window once the path has left it
  Timer Timer2;  // opens the hovered folder

  void Form_Load();
  void Form_Unload(bool& cancel);

  // Fills, sizes and paints the window, and leaves it hidden.
  void GetMenuItems(const std::string& Path);
  // Hides each row outside the part on view, and shows the others.
  void CheckVisibleItems();
  // The window for a folder's row, at a point of the screen, in twips.
  void CreateNextMenu(int16_t Index, int32_t Top, int32_t Left);

  // Highlights one row; -1: none, -2: labAdd, -3: labOrganise.
  void ResetMenuItems(int16_t Index);
  void ResetMenuFolders(int16_t Index);

  // By one row.
  void ScrollMenu();
  void ScrollMenuUp();

 private:
  bool IsTop() const { return labOpen == "first"; }
  std::unique_ptr<Label> MakeRow();
  std::unique_ptr<Label> MakeFolderRow(int16_t Index);
  std::unique_ptr<Label> MakeShortcutRow(int16_t Index);
  std::unique_ptr<Surface> MakeIcon();
  void WireMouse();
  void Wire(Control& control, void (frmFavMenu::*hover)(), void (frmFavMenu::*click)() = nullptr);

  // The steps of GetMenuItems.
  void PlaceFixedRows();
  void FillRows(ControlArray<Label>& rows, ControlArray<Surface>& icons,
                const std::vector<std::string>& captions, const Store& picture);
  void FillEmpty();
  void SetWidths();
  void PlaceArrows();
  void SetHeight();
  void LimitToScreen();
  Twips HeightOfVisible(ControlArray<Label>& rows);
  void PlaceStrips();
  void TileAll();

  void Highlight(Label& row, bool highlighted);
  void HighlightFixed(int16_t Index);
  // By the keyboard: the window's rows from the top down, as one list.
  bool Form_KeyDown(const KeyPress& press);
  int Rows() const;
  Label& Row(int row);
  int Highlighted();
  // Highlights a row, scrolled into sight; one that there isn't is passed over.
  void HighlightRow(int row);
  void ScrollTo(const Label& row);
  void ChooseRow(int row);
  void FindLetter(std::string_view letter);
  void OpenFolder(int16_t Index);
  void BackToParent();
  void SetPath();
  void OverBackground();
  void OverFixed(int16_t Index);
  void OverAdd() { OverFixed(-2); }
  void OverOrganise() { OverFixed(-3); }
  void OverScroll();
  void OverScrollUp();
  void labFolder_MouseMove(int16_t Index);
  void labMenuItem_MouseMove(int16_t Index);
  void labMenuItem_Click(int16_t Index);
  void labAdd_Click();
  void labOrganise_Click();
  void Timer1_Timer();
  void Timer2_Timer();
  void Form_Deactivate();

  void EndMenuMode();
  void ShowStrip(Label& label, Surface& picture, bool shown);
  void PlaceLowerFrame();
  void PlaceUpperFrame();
  void HideStripAtEnd();
  void ShowTop();

  Program& program_;
  Colour FavTextColour = 0, FavHiTextColour = 0,
         FavHiBackColour = 0;  // as they were when the window was loaded
  SharedValue<std::string>::Watch path_watch_;
};
