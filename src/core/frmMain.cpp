#include "core/frmMain.h"

#include "core/Program.h"
#include "core/frmDummy.h"
#include "core/frmSplash.h"
#include "dialogs/AddFavorite.h"
#include "dialogs/OrganizeFav.h"
#include "menus/frmFavMenu.h"
#include "menus/frmMenu.h"
#include "platform/Text.h"

frmMain::frmMain(Program& program)
    : Window(program.desktop, Kind::Main, {0, 0, 10605, 6810}, "Tabbed Web Browser"),
      program(program),
      frame(*this),
      skin(*this),
      strip(*this),
      events(*this),
      popups(*this),
      tabs(*this),
      removed(*this),
      recovery(*this),
      layouts(*this),
      address(*this),
      log(*this),
      history(*this),
      toolbar(*this),
      menubar(*this),
      menus(*this),
      launch(*this),
      favourites(*this),
      keys(*this),
      cookies(*this) {
  Activate = [this] { Form_Activate(); };
  GotFocus = [this] { Form_GotFocus(); };
  KeyboardFree = [this] { tabs.FocusPage(); };
  KeyDown = [this](const KeyPress& press) { return keys.Pressed(press); };
}

void frmMain::Form_Load() {
  frmSplash& splash = program.splash();
  program.AppPath = program.desktop.ProgramFolder();
  if (program.AppPath.ends_with('\\') || program.AppPath.ends_with('/')) program.AppPath.pop_back();
  program.Unloading = 0;
  program.colours = Colours();
  events.Timer2.Interval = 200;
  frame.labCaption.ForeColor = 0;
  splash.Status("Loading preferences...");
  program.preferences.LoadIni(program);
  if (program.desktop.Driven()) {
    program.preferences.PopupPolicy = PopupHandling::PolicyTab;
    program.Unattended = true;
  }
  splash.Status("Analysing cookie cache...");
  cookies.GetCookies();
  splash.Status("Setting up initial tabs...");
  frame.StatusBar1.ForeColor = program.colours.StatusTextColour;
  frame.picProgress.BackColor = program.colours.ProgressBarColour;
  // The labels take the skin's colour before the mouse first moves over them.
  menubar.ResetMenus(frame.labDummy);
  events.ShowIdle();
  tabs.CurrentTab = 0;
  const std::string command_line = program.desktop.CommandLine();
  if (!command_line.empty())
    tabs.WebBrowser1(0).Navigate(Text::Replace(command_line, "\"", ""));
  else
    tabs.WebBrowser1(0).GoHome();
  tabs.Timer1(0).Enabled = true;
  program.desktop.DoEvents();
  splash.Status("Starting browser...");
  frame.Form_Resize();
  tabs.UpdateBrowsers();
  program.splash.Unload();
  if (program.SplashMaximised == "1") frame.MaxiWindow();
  program.SplashUp = 0;
  program.dummy().Show();
  if (!program.desktop.Driven()) recovery.Begin();
}

void frmMain::ResizeForm() {
  frame.Form_Resize();
  events.ShowIdle();
  menubar.ResetMenus(frame.labDummy);
}

void frmMain::Form_Activate() { program.menu.FavOpenPath = ""; }

void frmMain::Form_GotFocus() {
  program.menu.FavOpenPath = "";
  if (WindowState != Minimised) return;
  WindowState = Normal;
  Visible = true;
}

// The owner slot of a window that doesn't exist here: only the kept handle changes.
void frmMain::SwapOwner(bool restore, long owner) {
  if (restore) SavedOwner = owner;
}

void frmMain::Form_Unload(bool& cancel) {
  if (program.SkinRestartNeeded == 1) return;
  program.Unloading = 1;
  recovery.End(!program.Unattended);
  Skipping([&] { program.popup_menu.Unload(); });
  program.menu.FavOpenPath = "";
  program.fav_cascade.UnloadAll();
  program.fav_menu.Unload();
  Skipping([&] { program.add_favorite.Unload(); });
  Skipping([&] { program.organize_fav.Unload(); });
  // The proxy was never made: there is no owner to put back, no property and no window to take away.
  SwapOwner(false, hWndProxy);
  Skipping([&] { Hide(); });
  Skipping([&] { program.desktop.DoEvents(); });
  tabs.RemoveAllTabs();
  if (program.preferences.CookieTrapMode != 0) {
    // With the last page the cookies of the session go, and nobody sets another one.
    Skipping([&] { program.desktop.ClosePages(); });
    // Ends the process itself; where it can't come up, the process ends without it.
    Skipping([&] { cookies.CleanUp(); });
    cancel = true;
  }
  program.desktop.End(0);
}
