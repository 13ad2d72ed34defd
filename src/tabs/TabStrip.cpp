#include "tabs/TabStrip.h"

#include <cmath>

#include "core/Program.h"
#include "core/frmDummy.h"
#include "core/frmMain.h"
#include "platform/Text.h"
#include "skin/TileBitmapModule.h"

namespace {

constexpr Place DesignTab = {0, 60, 2250, 315};
constexpr Twips UnscrolledLeft = 80;
constexpr Twips RaisedCaption = 30, RestingCaption = 90;
constexpr Twips CaptionMargins = 180;

}  // namespace

TabStrip::TabStrip(frmMain& main) : main_(main) {
  FrameLayout& frame = main.frame;
  frame.picTabLeft.Click = [this] { picTabLeft_Click(); };
  frame.picTabLeft.MouseMove = [this](const Mouse&) { picTabLeft_MouseMove(); };
  frame.picTabRight.Click = [this] { picTabRight_Click(); };
  frame.picTabRight.MouseMove = [this](const Mouse&) { picTabRight_MouseMove(); };
  frame.Picture2.DblClick = [this] { main_.toolbar.ClickBar("New Tab"); };
  frame.Picture2.MouseWheel = frame.picTabLeft.MouseWheel =
      frame.picTabRight.MouseWheel = [this](int notches) { Turn(notches); };
  frame.picTabLeft.AccessibleRole = frame.picTabRight.AccessibleRole = Role::Button;
  frame.picTabLeft.AccessibleName = "Scroll tabs left";
  frame.picTabRight.AccessibleName = "Scroll tabs right";
}

std::unique_ptr<Surface> TabStrip::MakeTab(int16_t Index) {
  auto tab = std::make_unique<Surface>(&main_.frame.Picture2, DesignTab);
  tab->AccessibleRole = Role::Tab;
  tab->Click = [this, Index] { picTab_Click(Index); };
  tab->MiddleClick = [this, Index] { main_.tabs.CloseTab(Index); };
  tab->MouseMove = [this](const Mouse&) { main_.toolbar.ResetButtons(-1); };
  tab->OLEDragDrop = [this, Index](const DataObject& Data) { picTab_OLEDragDrop(Index, Data); };
  return tab;
}

void TabStrip::UpdateTabs() {
  for (int i = 0; i <= main_.tabs.WebBrowser1.UBound(); ++i)
    if (main_.tabs.WebBrowser1.Has(i)) UpdateTab(i);
}

void TabStrip::UpdateTab(int i) {
  std::string Title, URL;
  Skipping([&] { Title = main_.tabs.WebBrowser1(i).LocationName(); });
  Skipping([&] { URL = main_.tabs.WebBrowser1(i).LocationURL(); });
  const bool shown = i == main_.tabs.CurrentTab;
  // A page that closed itself has no button any more.
  if (main_.tabs.picTab.Has(i)) {
    Surface& tab = main_.tabs.picTab(i);
    tab.AccessibleName = Title;
    tab.AccessibleSelected = shown;
    tab.ToolTipText = Title + " (" + URL + ")";
    shown ? DrawRaised(tab, Title) : DrawResting(tab, Title);
  }
  if (!shown) return;
  if (main_.program.dummy.Loaded()) main_.program.dummy().Caption = Title;
  main_.frame.labCaption.Caption = Title;
}

void TabStrip::DrawRaised(Surface& tab, const std::string& Title) {
  tab.ForeColor = main_.program.colours.TabTextColour;
  tab.Cls();
  tab.CurrentY = RaisedCaption;
  tab.Picture = main_.skin.picTabSelected.Picture;
  PrintCaption(tab, Title);
}

void TabStrip::DrawResting(Surface& tab, const std::string& Title) {
  tab.ForeColor = main_.program.colours.TabTextDisabledColour;
  tab.Picture = main_.skin.picTabNotSelected.Picture;
  tab.Cls();
  tab.CurrentY = RestingCaption;
  PrintCaption(tab, Title);
  // The title once more, in full, on the next line: at the very foot of the tab.
  tab.Print(Title);
}

void TabStrip::PrintCaption(Surface& tab, const std::string& Title) {
  // A zero's width stands for the average character.
  const auto MaxChars = static_cast<long>((tab.Width - CaptionMargins) / tab.TextWidth("0"));
  std::string Shown = Title;
  if (static_cast<long>(Text::Length(Title)) >= MaxChars + 1)
    Shown = Text::Left(Title, static_cast<size_t>(std::max(0L, MaxChars - 3))) + "...";
  tab.CurrentX = tab.Width / 2 - tab.TextWidth(Shown) / 2;
  tab.Print(Shown);
}

void TabStrip::picTab_Click(int16_t Index) {
  main_.menubar.ResetMenus(main_.frame.labDummy);
  main_.tabs.CurrentTab = Index;
  main_.tabs.FocusPage();
  main_.tabs.UpdateBrowsers();
}

void TabStrip::picTab_OLEDragDrop(int16_t Index, const DataObject& Data) {
  // A page that has just died takes nothing.
  Skipping([&] {
    if (Data.GetFormat(1)) main_.tabs.WebBrowser1(Index).Navigate(Data.GetData(1));
  });
}

void TabStrip::picTabLeft_Click() {
  if (main_.frame.Picture2.Left == UnscrolledLeft) return;
  Scroll(main_.tabs.picTab(0).Width);
}

void TabStrip::picTabRight_Click() {
  if (LastRight() < main_.Width) return;
  Scroll(-main_.tabs.picTab(0).Width);
}

void TabStrip::Turn(int notches) {
  for (; notches > 0; --notches) picTabRight_Click();
  for (; notches < 0; ++notches) picTabLeft_Click();
}

void TabStrip::Scroll(Twips by) {
  Surface& Picture2 = main_.frame.Picture2;
  Picture2.Left = Picture2.Left + by;
  Picture2.Width = std::abs(Picture2.Left) + main_.Width;
  TileBitmap(Picture2, main_.skin.picBrowserTop);
}

void TabStrip::picTabLeft_MouseMove() {
  main_.toolbar.ResetButtons(main_.frame.Picture2.Left == UnscrolledLeft ? -1 : -2);
}

void TabStrip::picTabRight_MouseMove() { main_.toolbar.ResetButtons(LastRight() >= main_.Width ? -3 : -1); }

Twips TabStrip::LastRight() {
  TabSet& tabs = main_.tabs;
  return tabs.picTab(tabs.picTab.UBound()).Left + main_.frame.Picture2.Left + tabs.picTab(0).Width;
}
