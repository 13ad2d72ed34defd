#pragma once

#include <cstdint>
#include <string>

#include "core/General.h"
#include "core/Instances.h"
#include "core/Preferences.h"
#include "core/Slot.h"
#include "menus/MenuState.h"
#include "platform/Desktop.h"
#include "platform/Files.h"
#include "platform/scene/Colour.h"

class frmSplash;
class frmMain;
class frmDummy;
class frmMenu;
class frmFavMenu;
class AddFavorite;
class OrganizeFav;
class frmLaunch;
class frmAddLaunch;
class frmOptions;
class frmAbout;

// The skin's colours as variables, with the values that the built-in skin has.
struct Colours {
  Colour MenuHiBackColour = ButtonTextColour;
  Colour MenuTextColour = ButtonTextColour;
  Colour MenuHiTextColour = WindowBackgroundColour;
  Colour TabTextColour = WindowBackgroundColour;
  Colour TabTextDisabledColour = ButtonTextColour;
  Colour StatusTextColour = 0;
  Colour ProgressBarColour = ButtonTextColour;
};

// The life of the process: the window slots, the program's folder, and what all windows share.
class Program {
 public:
  explicit Program(Desktop& desktop);
  ~Program();

  // Shows the splash, which brings up everything else.
  void Start();
  // The user closes the program: the pages that want it are asked first.
  void Close();
  // Joins every dialog to its look, without showing it. Fails for the first one that doesn't fit: what a
  // debug build finds out at its start.
  void JoinDialogs();

  Desktop& desktop;
  FileSlot slot;
  General general{slot};
  Preferences preferences;
  MenuState menu;
  Colours colours;

  std::string AppPath;            // the program's folder, never with a trailing backslash
  int16_t Unloading = 0;          // 1 once the main window is going down
  bool Unattended = false;        // the session ends: nobody is there to answer a question
  int16_t SplashUp = 0;           // 1 while the splash lives
  std::string SplashMaximised;    // "1" when the system opened the first window maximised
  int16_t SkinRestartNeeded = 0;  // while 1, the main window's unload does nothing at all

  Slot<frmSplash> splash;
  Slot<frmMain> main;
  Slot<frmDummy> dummy;
  Slot<frmMenu> popup_menu;
  Slot<frmFavMenu> fav_menu;          // the top window of the favourites
  Instances<frmFavMenu> fav_cascade;  // those that opened from it
  Slot<AddFavorite> add_favorite;
  Slot<OrganizeFav> organize_fav;
  Slot<frmLaunch> launch;
  Slot<frmAddLaunch> add_launch;
  Slot<frmOptions> options;
  Slot<frmAbout> about;

 private:
  // Opens what another start hands over in a new tab. False where it's too late.
  bool TakeOver(const std::string& address);
  // Closes the program as the user does, without a question.
  void EndSession();
};
