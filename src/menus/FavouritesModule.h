#pragma once

#include <cstddef>
#include <string>

class frmMain;

// What the favourites windows and their dialogs share: the folder, the shortcuts in it, and the ways in.
class FavouritesModule {
 public:
  static constexpr size_t TipCharacters = 500;  // of an address in a tool tip

  explicit FavouritesModule(frmMain& main) : main_(main) {}

  // The folder of favourites, which need not be there; as the program joins paths.
  std::string Folder() const;

  // The address in a shortcut: what follows the first four characters of the line behind its section's name.
  // Fails for a file that can't be read, and for a line with fewer characters.
  std::string ReadShortcut(const std::string& path);
  // The address of a shortcut in our own form, with the key in its place; empty for any other. Fails for a
  // file that can't be read.
  std::string OwnAddress(const std::string& path);

  // Opens the dialog that adds the page on show.
  void AddToFavorites();
  // Opens the window in which the favourites are arranged.
  void ShowOrgFavs();

  // Tells the user of something that failed.
  void Tell(const std::string& fault);

 private:
  // The line behind the section's name; empty where there is none.
  std::string AddressLine(const std::string& path);

  frmMain& main_;
};
