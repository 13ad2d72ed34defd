#pragma once

#include <cstdint>
#include <memory>

#include "platform/scene/ControlArray.h"
#include "platform/scene/Window.h"

class Program;
struct Colours;

// A popup menu: a borderless window in the skin's art, built anew each time it opens. MenuModule::ShowMenu
// calls the steps below in their order.
class frmMenu : public Window {
 public:
  explicit frmMenu(Program& program);

  ControlArray<Label> mnuText;      // one for each row
  ControlArray<Surface> picSpacer;  // one for each separator, and one more
  Surface picTop, picRight, picBottom, picLeft;
  Surface picTopLeft, picTopRight, picBotRight, picBotLeft;  // over the edges

  void Form_Load();
  void Form_Unload(bool& cancel);

  // One row for each of the menu's items, from the top down. Rows that would stand lower than a window can
  // reach are left out.
  void MakeRows();
  // The window's size by the widest item and the last row, and the rows' width by the window's.
  void Measure();
  void PlaceFrame();
  void TileFrame();
  // A line in the place of each row that reads "-".
  void MakeSpacers();

  // Highlights one row; -1: none.
  void ResetMenus(int16_t Index);

 private:
  std::unique_ptr<Label> MakeRow(int16_t Index, const Colours& colours);
  std::unique_ptr<Surface> MakeSpacer();
  void mnuText_Click(int16_t Index);
  void Form_Deactivate();
  void Form_LostFocus();

  Program& program_;
  bool leaving_ = false;  // unloaded: what the desktop still reports of this window no longer counts
};
