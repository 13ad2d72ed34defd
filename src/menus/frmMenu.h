#pragma once

#include <cstdint>
#include <memory>

#include "menus/MenuFrame.h"
#include "platform/scene/ControlArray.h"
#include "platform/scene/Window.h"

class Program;
struct Colours;

// A popup menu: a borderless window in the skin's art, built anew each time it opens.
class frmMenu : public Window {
 public:
  explicit frmMenu(Program& program);

  ControlArray<Label> mnuText;      // one for each row
  ControlArray<Surface> picSpacer;  // one for each separator, and one more
  MenuFrame frame;

  void Form_Load();
  void Form_Unload(bool& cancel);

  // Makes the rows of the menu's items, at a point of the screen, and takes the size that they need. Leaves
  // the window hidden.
  void Build(Twips left, Twips top);

  // Highlights one row; -1: none.
  void ResetMenus(int16_t Index);

 private:
  // One row for each of the menu's items, from the top down. Rows that would stand lower than a window can
  // reach are left out.
  void MakeRows();
  // The window's size by the widest item and the last row, and the rows' width by the window's.
  void Measure();
  // A line in the place of each row that reads "-".
  void MakeSpacers();
  std::unique_ptr<Label> MakeRow(int16_t Index, const Colours& colours);
  std::unique_ptr<Surface> MakeSpacer();
  bool Form_KeyDown(const KeyPress& press);
  // The row that is highlighted, -1 for none.
  int Highlighted();
  // Highlights the next row from one on that can be chosen and begins with a text, round the ends.
  void Step(int from, int step, std::string_view start = {});
  void mnuText_Click(int16_t Index);
  void Form_Deactivate();
  void Form_LostFocus();

  Program& program_;
  bool leaving_ = false;  // unloaded: what the desktop still reports of this window no longer counts
};
