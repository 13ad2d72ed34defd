#include "menus/FavouritesModule.h"

#include <filesystem>

#include "core/Program.h"
#include "core/frmMain.h"
#include "platform/Files.h"
#include "platform/Text.h"

namespace {

// The key "URL" and its equals sign, which aren't looked at.
constexpr size_t KeyCharacters = 4;
// A shortcut is two lines. What is larger isn't one, and would only keep the menu waiting.
constexpr uintmax_t MostBytes = 1024 * 1024;

}  // namespace

std::string FavouritesModule::Folder() const { return main_.program.AppPath + "\\favourites"; }

std::string FavouritesModule::ReadShortcut(const std::string& path) {
  const std::string host = HostPath(path);
  std::error_code error;
  const uintmax_t bytes = std::filesystem::file_size(host, error);
  const auto fail = [&host](const std::string& why) {
    throw Failure("The favourite \"" + Text::Valid(host) + "\" can't be opened: " + why);
  };
  if (error) fail(error.message());
  if (bytes > MostBytes) fail("the file is too large for a shortcut");
  std::string line = main_.program.general.ReadIniKey(path, "internetshortcut");
  // A file that ends with its section's name would leave the slot taken.
  main_.program.slot.Abandon();
  if (Text::Length(line) < KeyCharacters)
    fail(
        "there is no address on the line behind \"[InternetShortcut]\". \"Organise Favourites...\" may put "
        "it right");
  return Text::Behind(line, KeyCharacters);
}

void FavouritesModule::AddToFavorites() { Tell("The window that adds a favourite isn't there yet."); }

void FavouritesModule::ShowOrgFavs() { Tell("The window that arranges the favourites isn't there yet."); }

void FavouritesModule::Tell(const std::string& fault) {
  main_.program.desktop.MsgBox(fault, Buttons::Ok, "Marlowick");
}
