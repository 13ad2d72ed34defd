// How the favourites come from other programs and go to them.

#include <filesystem>
#include <iterator>

#include "core/Program.h"
#include "core/frmMain.h"
#include "dialogs/OrganizeFav.h"
#include "platform/Files.h"
#include "platform/Text.h"
#include "platform/favourites/FavouritesFolder.h"

namespace {

// Few enough that the windows answer in between.
constexpr size_t FilesInASlice = 50;

struct Reason {
  LeftOut Why;
  const char* One;
  const char* Many;
};
constexpr Reason Reasons[] = {
    {LeftOut::Script, "script that is no page", "scripts that are no pages"},
    {LeftOut::Place, "query of the other browser's own", "queries of the other browser's own"},
    {LeftOut::NoAddress, "link without an address", "links without an address"},
    {LeftOut::TooLong, "address that is too long", "addresses that are too long"},
    {LeftOut::TooDeep, "folder that lies too deep", "folders that lie too deep"},
};

std::string TellLeftOut(Bookmarks& bookmarks) {
  std::string told;
  for (const Reason& reason : Reasons) {
    const size_t count = bookmarks.Count(reason.Why);
    if (count == 0) continue;
    told += (told.empty() ? " Left out: " : ", ") + std::to_string(count) + " " +
            (count == 1 ? reason.One : reason.Many);
  }
  return told.empty() ? "" : told + ".";
}

}  // namespace

void OrganizeFav::Import(bool folder) {
  std::string path;
  try {
    path = folder ? program_.desktop.ShowFolder("Import a Folder of Shortcuts")
                  : program_.desktop.ShowOpen(
                        "Import Bookmarks", "Bookmark files (*.html;*.htm)|*.html;*.htm|All files (*.*)|*.*");
  } catch (const Failure&) {
    return;
  }
  const bool begun = Telling([&] {
    bookmarks_ = program_.desktop.ReadBookmarks(path);
    if (!Favourites::Stands(root_)) Favourites::MakeFolder(root_);
    const std::filesystem::path named(path);
    const std::string name = (folder ? named.filename() : named.stem()).string();
    import_ = std::make_unique<BookmarkImport>(root_, name, bookmarks_);
  });
  if (!begun) return;
  barImport.Value = 0;
  Say("Importing " + std::to_string(import_->Links()) + " favourites...");
  timer_.Enabled = true;
  UpdateButtons();
}

void OrganizeFav::ContinueImport() {
  if (!import_) return;
  bool more = false;
  const bool good = Telling([&] { more = import_->Step(FilesInASlice); });
  if (!good) {
    Say("The import was broken off. Nothing of it has come into the favourites.");
    return EndImport();
  }
  if (more) {
    barImport.Value = static_cast<double>(import_->Done()) / static_cast<double>(import_->Total());
    return;
  }
  const std::string folder = import_->Folder();
  const size_t links = import_->Links();
  EndImport();
  ChangeAddress();
  Reload({folder});
  Say("Imported " + std::to_string(links) + (links == 1 ? " link" : " links") + " into \"" +
      folder.substr(folder.rfind('/') + 1) + "\"." + TellLeftOut(bookmarks_));
  bookmarks_ = {};
}

void OrganizeFav::EndImport() {
  timer_.Enabled = false;
  import_.reset();
  UpdateButtons();
}

void OrganizeFav::Export() {
  std::string path;
  try {
    path = program_.desktop.ShowSave("Export Favourites", "Bookmark files (*.html)|*.html");
  } catch (const Failure&) {
    return;
  }
  if (Favourites::Stands(path) &&
      program_.desktop.MsgBox("There is a file \"" + Text::Valid(path) + "\" already. Replace it?",
                              Buttons::YesNo, "Export Favourites") != Answer::Yes)
    return;
  ChangeAddress();
  Bookmarks bookmarks = ReadFavourites(root_, [this](const std::string& link) { return Read(link).Address; });
  const bool written = Telling([&] {
    FileSlot file;
    file.OpenExactly(path, FileSlot::Mode::Output);
    file.Print(BookmarkHtml(bookmarks.Top));
    file.Close();
  });
  if (written) Say("The favourites are written to \"" + path + "\"." + TellLeftOut(bookmarks));
}
