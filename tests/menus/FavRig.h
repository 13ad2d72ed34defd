#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "menus/MenuRig.h"
#include "menus/frmFavMenu.h"
#include "platform/favourites/FavouritesFolder.h"

// A started program with a folder of favourites, and the user's hand on the windows that show it.
struct FavRig : MenuRig {
  std::string Source(const std::string& below = "") const { return folder.path + "\\favourites" + below; }
  void Link(const std::string& name, const std::string& address = "https://page.test/") const {
    folder.Write("favourites/" + name + ".url", Favourites::ShortcutText(address));
  }
  void Folder(const std::string& name) const {
    std::filesystem::create_directories(folder.path + "/favourites/" + name);
  }

  void OpenFavourites() { Open(bar().labFavs); }
  frmFavMenu& top() { return program.fav_menu(); }
  // The deeper windows, by their folders.
  frmFavMenu* Window(const std::string& below) {
    for (const auto& window : program.fav_cascade.All())
      if (window->labSource == Source(below)) return window.get();
    return nullptr;
  }
  size_t Windows() const { return (program.fav_menu.Loaded() ? 1 : 0) + program.fav_cascade.All().size(); }

  // A window of its own, filled as a deeper one or as the top one.
  frmFavMenu& Fill(const std::string& below, bool as_top, Twips at = 0) {
    frmFavMenu& window = program.fav_cascade.Add();
    window.labOpen = as_top ? "first" : "";
    window.labSource = Source(below);
    window.Top = at;
    desktop.Gate.Run([&] { window.GetMenuItems(window.labSource); });
    return window;
  }
  static std::string Captions(ControlArray<Label>& rows) {
    std::string captions;
    for (int i = 0; i <= rows.UBound(); ++i)
      if (rows(i).Visible) captions += (captions.empty() ? "" : ",") + rows(i).Caption();
    return captions;
  }
  // Each row that is highlighted, of all kinds.
  static std::string Highlights(frmFavMenu& window) {
    std::string found;
    for (ControlArray<Label>* rows : {&window.labFolder, &window.labMenuItem})
      for (int i = 0; i <= rows->UBound(); ++i)
        if ((*rows)(i).Opaque) found += (*rows)(i).Caption();
    if (window.labAdd.Opaque) found += "add";
    if (window.labOrganise.Opaque) found += "organise";
    return found;
  }
};
