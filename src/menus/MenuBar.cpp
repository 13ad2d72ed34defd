#include "menus/MenuBar.h"

#include <algorithm>

#include "core/Conversions.h"
#include "core/Program.h"
#include "core/frmMain.h"
#include "menus/frmFavMenu.h"
#include "menus/frmMenu.h"
#include "platform/Text.h"

constexpr std::array<MenuBar::Menu, 7> MenuBar::Menus = {{
    {&MenuBar::mnuFile, "file", &MenuBar::Label_MouseMove, &MenuBar::FileItems},
    {&MenuBar::Label1, "edit", &MenuBar::Label_MouseMove, &MenuBar::EditItems},
    {&MenuBar::Label2, "view", &MenuBar::Label_MouseMove, &MenuBar::ViewItems},
    {&MenuBar::labFavs, "favourites", &MenuBar::labFavs_MouseMove, nullptr},
    {&MenuBar::Label3, "launch", &MenuBar::Label3_MouseMove, &MenuBar::LaunchItems},
    {&MenuBar::Label5, "tabs", &MenuBar::Label_MouseMove, &MenuBar::TabItems},
    {&MenuBar::Label4, "help", &MenuBar::Label_MouseMove, &MenuBar::HelpItems},
}};

MenuBar::MenuBar(frmMain& main)
    : mnuFile(&main.frame.Picture9, {120, 90, 360, 195}, "File", Alignment::Centre),
      Label1(&main.frame.Picture9, {600, 90, 375, 195}, "Edit", Alignment::Centre),
      Label2(&main.frame.Picture9, {1080, 90, 465, 195}, "View", Alignment::Centre),
      labFavs(&main.frame.Picture9, {1680, 95, 855, 195}, "Favourites", Alignment::Centre),
      Label3(&main.frame.Picture9, {2640, 90, 660, 195}, "Launch", Alignment::Centre),
      Label5(&main.frame.Picture9, {3360, 90, 480, 195}, "Tabs", Alignment::Centre),
      Label4(&main.frame.Picture9, {3960, 90, 450, 195}, "Help", Alignment::Centre),
      main_(main) {
  static_assert(Menus.back().Name, "a row for each label");
  for (const Menu& menu : Menus) Wire(menu);
}

void MenuBar::Wire(const Menu& menu) {
  Label& label = this->*menu.Control;
  label.AccessibleRole = Role::MenuLabel;
  label.AccessibleName = label.Caption;
  label.MouseMove = [this, &menu](const Mouse&) {
    by_key_ = false;
    (this->*menu.MouseMove)(menu);
  };
  // The menu itself opens at the next move of the mouse over the label.
  label.Click = [this] { main_.program.menu.MenuMode = 1; };
  label.AccessiblePress = [&label] {
    label.Click();
    label.MouseMove({});
  };
}

size_t MenuBar::OpenIndex() const {
  const auto open = std::find_if(Menus.begin(), Menus.end(), [this](const Menu& menu) {
    return main_.program.menu.OpenMenuName == menu.Name;
  });
  return static_cast<size_t>(open - Menus.begin());
}

// False: there is no menu behind this label just now.
bool MenuBar::OpenAt(size_t index) {
  const Menu& menu = Menus[index];
  main_.program.menu.MenuMode = 1;
  (this->*menu.MouseMove)(menu);
  by_key_ = true;
  return main_.program.popup_menu.Loaded() || main_.program.fav_menu.Loaded();
}

void MenuBar::Open(std::string_view name) {
  const auto wanted =
      std::find_if(Menus.begin(), Menus.end(), [name](const Menu& menu) { return name == menu.Name; });
  if (wanted != Menus.end()) OpenAt(static_cast<size_t>(wanted - Menus.begin()));
}

void MenuBar::OpenNext(int step) {
  const size_t open = OpenIndex();
  for (size_t i = 1; i < Menus.size(); ++i)
    if (OpenAt((open + (step > 0 ? i : Menus.size() - i)) % Menus.size())) return;
}

bool MenuBar::OpenByLetter(std::string_view letter) {
  if (!by_key_) return false;
  const size_t open = OpenIndex();
  for (size_t i = 1; i <= Menus.size(); ++i) {
    const size_t index = (open + i) % Menus.size();
    const std::string& caption = (this->*Menus[index].Control).Caption();
    if (!Text::SameWithoutCase(Text::Left(caption, 1), letter)) continue;
    if (index != open) OpenAt(index);
    return true;
  }
  return false;
}

void MenuBar::ResetMenus(Label& label) {
  const Colours& colours = main_.program.colours;
  for (const Menu& menu : Menus) {
    (this->*menu.Control).ForeColor = colours.MenuTextColour;
    (this->*menu.Control).Opaque = false;
  }
  label.ForeColor = colours.MenuHiTextColour;
  label.Opaque = true;
  label.BackColor = colours.MenuHiBackColour;
  // No label is called so, `labDummy` included: each call arms the late sweep.
  main_.toolbar.TimerMenus.Enabled = label.Caption() != "frmDummy";
}

void MenuBar::Label_MouseMove(const Menu& menu) {
  ResetMenus(this->*menu.Control);
  if (main_.program.menu.MenuMode == 0) return;
  TakeOver(menu);
  ShowBelow(this->*menu.Control, (this->*menu.Items)());
}

// Like the others, but its file is read once for each opening, and a reading that fails opens no menu.
void MenuBar::Label3_MouseMove(const Menu& menu) {
  ResetMenus(Label3);
  if (main_.program.menu.MenuMode == 0) return;
  if (main_.program.menu.OpenMenuName == menu.Name) return;
  TakeOver(menu);
  Skipping([&] { ShowBelow(Label3, (this->*menu.Items)()); });
}

void MenuBar::labFavs_MouseMove(const Menu& menu) {
  ResetMenus(labFavs);
  if (main_.program.menu.MenuMode == 0) return;
  main_.program.menu.OpenMenuName = menu.Name;
  main_.toolbar.TimerMenus.Enabled = false;
  ShowFavourites();
}

// Ends a neighbour's menu, and makes this one the open one.
void MenuBar::TakeOver(const Menu& menu) {
  MenuState& state = main_.program.menu;
  if (state.OpenMenuName != menu.Name) main_.program.popup_menu.Unload();
  state.FavOpenPath = "";
  state.OpenMenuName = menu.Name;
}

void MenuBar::ShowBelow(const Label& label, const std::string& items) {
  const int32_t Top = ToInt32(main_.Top + main_.frame.Picture9.Top + label.Top + label.Height);
  const int32_t Left = ToInt32(main_.Left + label.Left);
  main_.menus.ShowMenu(Left, Top, items);
}

void MenuBar::ShowFavourites() {
  Program& program = main_.program;
  if (program.fav_menu.Loaded() && program.fav_menu().Visible) {
    program.fav_menu().SetFocus();
    return EndPopupMenu();
  }
  program.fav_menu.Unload();
  const std::string path = main_.favourites.Folder();
  program.menu.FavOpenPath = path;
  frmFavMenu& window = program.fav_menu();
  window.Top = ToInt32(main_.Top + main_.frame.Picture9.Top + labFavs.Top + labFavs.Height);
  window.Left = ToInt32(main_.Left + labFavs.Left);
  window.labOpen = "first";
  window.labStart = path;
  window.labSource = path;
  window.GetMenuItems(path);
  window.Show();
  EndPopupMenu();
}

// The favourites window has taken the focus, which ends a popup menu and keeps the menu mode.
void MenuBar::EndPopupMenu() {
  Program& program = main_.program;
  if (!program.popup_menu.Loaded()) return;
  program.popup_menu().Deactivate();
  ResetMenus(labFavs);
  program.menu.OpenMenuName = "favourites";
  main_.toolbar.TimerMenus.Enabled = false;
}

std::string MenuBar::FileItems() {
  // A page that has gone can't say; the menu opens all the same.
  bool offline = false;
  Skipping([&] { offline = main_.tabs.WebBrowser1(main_.tabs.CurrentTab).Offline(); });
  return offline ? "New Tab,New Window,Open...,Save as...,-,Remove Tab,-,Print...,-,Work Online,Close"
                 : "New Tab,New Window,Open...,Save as...,-,Remove Tab,-,Print...,-,Work Offline,Close";
}

std::string MenuBar::EditItems() { return "Cut,Copy,Paste,-,Select All,-,Find (on this page) ..."; }

std::string MenuBar::ViewItems() {
  return "Forward,Back,Stop,Refresh,-,History,Search,-,Source,-,Cookies...,-,Browser Options...,Internet "
         "Options...";
}

std::string MenuBar::LaunchItems() { return main_.launch.FillMenu(); }

std::string MenuBar::TabItems() {
  auto& WebBrowser1 = main_.tabs.WebBrowser1;
  std::string entries;
  int n = 0;  // a row's number is the tab's ordinal among the live ones
  for (int i = 0; i <= WebBrowser1.UBound(); ++i) {
    if (!WebBrowser1.Has(i)) continue;
    Skipping([&] {
      const std::string title = Text::Replace(WebBrowser1(i).LocationName(), ",", " ");
      if (n > 0) entries += ",";
      entries += std::to_string(n + 1) + ". " + title;
      ++n;
    });
  }
  return "Save Tab Layout...,Restore Tab Layout...,-," + entries;
}

std::string MenuBar::HelpItems() { return "About..."; }
