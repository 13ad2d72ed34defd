#include "core/Program.h"

#include "cookies/frmCleanup.h"
#include "cookies/frmCookies.h"
#include "cookies/frmFilter.h"
#include "cookies/frmNewcookies.h"
#include "core/frmDummy.h"
#include "core/frmMain.h"
#include "core/frmSplash.h"
#include "dialogs/AddFavorite.h"
#include "dialogs/ChooseFolder.h"
#include "dialogs/OrganizeFav.h"
#include "dialogs/frmAbout.h"
#include "dialogs/frmOptions.h"
#include "menus/frmAddLaunch.h"
#include "menus/frmFavMenu.h"
#include "menus/frmLaunch.h"
#include "menus/frmMenu.h"
#include "platform/Text.h"
#include "tabs/frmPopup.h"

namespace {

template <class T>
auto Maker(Program& program) {
  return [&program] { return std::make_shared<T>(program); };
}

}  // namespace

Program::Program(Desktop& desktop)
    : desktop(desktop),
      splash(desktop.Gate, Maker<frmSplash>(*this)),
      main(desktop.Gate, Maker<frmMain>(*this)),
      dummy(desktop.Gate, Maker<frmDummy>(*this)),
      popup_menu(desktop.Gate, Maker<frmMenu>(*this)),
      fav_menu(desktop.Gate, Maker<frmFavMenu>(*this)),
      fav_cascade(desktop.Gate, Maker<frmFavMenu>(*this)),
      add_favorite(desktop.Gate, Maker<AddFavorite>(*this)),
      organize_fav(desktop.Gate, Maker<OrganizeFav>(*this)),
      launch(desktop.Gate, Maker<frmLaunch>(*this)),
      add_launch(desktop.Gate, Maker<frmAddLaunch>(*this)),
      options(desktop.Gate, Maker<frmOptions>(*this)),
      about(desktop.Gate, Maker<frmAbout>(*this)) {
  desktop.SessionEnding = [this] { EndSession(); };
  desktop.HandedOver = [this](const std::string& address) { return TakeOver(address); };
}

Program::~Program() {
  desktop.SessionEnding = nullptr;
  desktop.HandedOver = nullptr;
}

void Program::Start() { splash(); }

bool Program::TakeOver(const std::string& address) {
  if (Unloading == 1 || !dummy.Loaded()) return false;
  // As from this program's own command line.
  if (!address.empty()) main().tabs.AddChosenTab(Text::Replace(address, "\"", ""), true);
  return true;
}

void Program::Close() {
  desktop.AskPages([this] { dummy.Unload(); });
}

void Program::EndSession() {
  Unattended = true;
  if (Unloading == 1) {
    // On its way already, unless it waits for the user.
    if (main().cookies.newcookies.Loaded() && main().cookies.newcookies().Visible) desktop.End(0);
    return;
  }
  // Before the main window stands no cookie is new.
  if (dummy.Loaded()) dummy.Unload();
  desktop.End(0);
}

void Program::JoinDialogs() {
  frmPopup(*this).Join();
  AddFavorite(*this).Join();
  ChooseFolder(*this).Join();
  OrganizeFav(*this).Join();
  frmCookies(*this).Join();
  frmNewcookies(*this).Join();
  frmFilter(*this).Join();
  frmCleanup(*this).Join();
  frmLaunch(*this).Join();
  frmAddLaunch(*this).Join();
  frmOptions(*this).Join();
  frmAbout(*this).Join();
}
