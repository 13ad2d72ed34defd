#pragma once

#include "address/AddressBar.h"
#include "cookies/CookieScanner.h"
#include "history/HistoryLog.h"
#include "history/HistoryPages.h"
#include "menus/FavouritesModule.h"
#include "menus/Keys.h"
#include "menus/LaunchMenu.h"
#include "menus/MenuBar.h"
#include "menus/MenuModule.h"
#include "platform/scene/Window.h"
#include "skin/FrameLayout.h"
#include "skin/Skin.h"
#include "skin/Toolbar.h"
#include "tabs/BrowserEvents.h"
#include "tabs/PopupHandling.h"
#include "tabs/Recovery.h"
#include "tabs/RemovedTabs.h"
#include "tabs/TabLayouts.h"
#include "tabs/TabSet.h"
#include "tabs/TabStrip.h"

class Program;

// The main window: the hub that owns the rooms and hands each what it needs.
class frmMain : public Window {
 public:
  explicit frmMain(Program& program);

  Program& program;

  FrameLayout frame;
  Skin skin;
  TabStrip strip;
  BrowserEvents events;
  PopupHandling popups;
  TabSet tabs;
  RemovedTabs removed;
  Recovery recovery;
  TabLayouts layouts;
  AddressBar address;
  HistoryLog log;
  HistoryPages history;
  Toolbar toolbar;
  MenuBar menubar;
  MenuModule menus;
  LaunchMenu launch;
  FavouritesModule favourites;
  Keys keys;
  CookieScanner cookies;

  void Form_Load();
  void Form_Unload(bool& cancel);
  // Lays the window out anew and shows the idle picture.
  void ResizeForm();

 private:
  void Form_Activate();
  void Form_GotFocus();
  void SwapOwner(bool restore, long owner);

  long hWndProxy = 0;  // of a window proxy that is never created
  long SavedOwner = 0;
};
