#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "platform/scene/Scene.h"

class frmMain;

// The row of tab buttons, drawn with the pages' titles, that slides sideways behind two arrows.
class TabStrip {
 public:
  explicit TabStrip(frmMain& main);

  // The button of a tab, where element 0 stands by design.
  std::unique_ptr<Surface> MakeTab(int16_t Index);

  // Draws every tab anew; a missing element costs nothing.
  void UpdateTabs();

 private:
  void UpdateTab(int i);
  void DrawRaised(Surface& tab, const std::string& Title);
  void DrawResting(Surface& tab, const std::string& Title);
  void PrintCaption(Surface& tab, const std::string& Title);
  void picTab_Click(int16_t Index);
  void picTab_OLEDragDrop(int16_t Index, const DataObject& Data);
  void picTabLeft_Click();
  void picTabLeft_MouseMove();
  void picTabRight_Click();
  void picTabRight_MouseMove();
  // The wheel, as so many clicks on the arrows.
  void Turn(int notches);
  void Scroll(Twips by);
  // The right edge of the last button within the window.
  Twips LastRight();

  frmMain& main_;
};
