#include "menus/FavouritesModule.h"

#include <filesystem>

#include "core/Program.h"
#include "core/frmMain.h"
#include "dialogs/AddFavorite.h"
#include "dialogs/OrganizeFav.h"
#include "platform/Files.h"
#include "platform/Text.h"

namespace {

// The key "URL" and its equals sign, which aren't looked at.
constexpr size_t KeyCharacters = 4;
// A shortcut is two lines. What is larger isn't one, and would only keep the menu waiting.
constexpr uintmax_t MostBytes = 1024 * 1024;

Failure CantOpen(const std::string& path, const std::string& why) {
  return Failure("The favourite \"" + Text::Valid(path) + "\" can't be opened: " + why);
}

}  // namespace

std::string FavouritesModule::Folder() const { return main_.program.AppPath + "\\favourites"; }

std::string FavouritesModule::AddressLine(const std::string& path) {
  const std::string host = HostPath(path);
  std::error_code error;
  const uintmax_t bytes = std::filesystem::file_size(host, error);
  if (error) throw CantOpen(host, error.message());
  if (bytes > MostBytes) throw CantOpen(host, "the file is too large for a shortcut");
  const std::string line = main_.program.general.ReadIniKey(path, "internetshortcut");
  // A file that ends with its section's name would leave the slot taken.
  main_.program.slot.Abandon();
  return line;
}

std::string FavouritesModule::ReadShortcut(const std::string& path) {
  const std::string line = AddressLine(path);
  if (Text::Length(line) < KeyCharacters)
    throw CantOpen(
        HostPath(path),
        "there is no address on the line behind \"[InternetShortcut]\". \"Organise Favourites...\" may "
        "put it right");
  return Text::Behind(line, KeyCharacters);
}

std::string FavouritesModule::OwnAddress(const std::string& path) {
  const std::string line = AddressLine(path);
  if (!Text::SameWithoutCase(Text::Left(line, KeyCharacters), "URL=")) return {};
  const std::string address = Text::Behind(line, KeyCharacters);
  return address.find_first_not_of(' ') == address.npos ? "" : address;
}

void FavouritesModule::AddToFavorites() {
  std::string Title, URL;
  try {
    const Browser& shown = main_.tabs.WebBrowser1(main_.tabs.CurrentTab);
    Title = shown.LocationName();
    URL = shown.LocationURL();
  } catch (const Failure&) {
    return Tell("The page on show has ended, so it can't be added. Refresh it, or choose another tab.");
  }
  // An error page of the browser element: behind the "#" stands the address that was wanted.
  if (Text::LowerCase(Text::Left(URL, 3)) == "res") URL.erase(0, URL.find('#') + 1);
  if (URL.empty() || URL == "about:blank")
    return Tell("The page on show has no address, so it can't be added. Open a page first.");
  main_.program.add_favorite().Ask(URL, Title);
}

void FavouritesModule::ShowOrgFavs() { main_.program.organize_fav().DoOrganizeFavDlg(HostPath(Folder())); }

void FavouritesModule::Tell(const std::string& fault) {
  main_.program.desktop.MsgBox(fault, Buttons::Ok, "Marlowick");
}
