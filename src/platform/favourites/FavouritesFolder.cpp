#include "platform/favourites/FavouritesFolder.h"

#include <dirent.h>
#include <fcntl.h>
#include <stdio.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <memory>
#include <system_error>
#include <utility>

#include "platform/Failure.h"
#include "platform/Files.h"
#include "platform/Text.h"
#include "platform/favourites/FileName.h"

namespace files = std::filesystem;

namespace {

[[noreturn]] void Fail(const std::string& what, const std::string& path, const std::string& why) {
  throw Failure(what + " \"" + path + "\": " + why);
}

[[noreturn]] void Fail(const std::string& what, const std::string& path, int error) {
  Fail(what, path, std::string(std::strerror(error)));
}

struct CloseFolder {
  void operator()(DIR* stream) const { ::closedir(stream); }
};

bool IsShortcut(std::string_view name) {
  return name.size() > Favourites::Extension.size() &&
         Text::SameWithoutCase(name.substr(name.size() - Favourites::Extension.size()),
                               Favourites::Extension);
}

// Only links, and what a file system doesn't tell of at once, cost a further question.
mode_t KindOf(const std::string& folder, const dirent& entry) {
  if (entry.d_type == DT_DIR) return S_IFDIR;
  if (entry.d_type == DT_REG) return S_IFREG;
  if (entry.d_type != DT_LNK && entry.d_type != DT_UNKNOWN) return 0;
  struct stat status {};
  if (::stat((folder + "/" + entry.d_name).c_str(), &status) != 0) return 0;
  return status.st_mode & S_IFMT;
}

void Sort(std::vector<std::string>& names) {
  std::vector<std::pair<std::string, std::string>> keyed;
  keyed.reserve(names.size());
  for (std::string& name : names) {
    std::string key = Text::CollationKey(name);
    keyed.emplace_back(std::move(key), std::move(name));
  }
  std::sort(keyed.begin(), keyed.end());
  for (size_t i = 0; i < names.size(); ++i) names[i] = std::move(keyed[i].second);
}

// Names a file or folder anew, over nothing. False, with errno, where that fails.
bool RenameOverNothing(const std::string& from, const std::string& to) {
  if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return true;
  if (errno != EINVAL && errno != ENOSYS) return false;
  // A file system that knows no such renaming.
  if (Favourites::Stands(to)) {
    errno = EEXIST;
    return false;
  }
  return ::rename(from.c_str(), to.c_str()) == 0;
}

}  // namespace

namespace Favourites {

Listing List(const std::string& folder) {
  Listing listing;
  const std::unique_ptr<DIR, CloseFolder> stream(::opendir(folder.c_str()));
  if (!stream) return listing;
  while (const dirent* entry = ::readdir(stream.get())) {
    const std::string_view name = entry->d_name;
    if (name.starts_with('.')) continue;
    const mode_t kind = KindOf(folder, *entry);
    if (kind == S_IFDIR) listing.Folders.emplace_back(name);
    if (kind == S_IFREG && IsShortcut(name)) listing.Shortcuts.emplace_back(name);
  }
  Sort(listing.Folders);
  Sort(listing.Shortcuts);
  return listing;
}

std::string WithoutExtension(const std::string& file_name) {
  return file_name.substr(0, file_name.size() - std::min(file_name.size(), Extension.size()));
}

std::string ShortcutText(std::string_view address) {
  return "[InternetShortcut]\r\nURL=" + std::string(address) + "\r\n";
}

void WriteShortcut(const std::string& path, const std::string& address, Taken taken) {
  if (address.find_first_of("\r\n") != address.npos)
    Fail("Can't write the file", path, "an address can't have more than one line");
  if (taken == Taken::Refuse && Stands(path)) Fail("Can't write the file", path, EEXIST);
  FileSlot file;
  file.OpenExactly(path, taken == Taken::Refuse ? FileSlot::Mode::Create : FileSlot::Mode::Output);
  file.Print("[InternetShortcut]");
  file.Print("URL=" + address);
  file.Close();
}

void MakeFolder(const std::string& path) {
  if (::mkdir(path.c_str(), 0777) != 0) Fail("Can't create the folder", path, errno);
}

void Rename(const std::string& from, const std::string& to) {
  if (!RenameOverNothing(from, to)) Fail("Can't rename \"" + from + "\" to", to, errno);
}

void Move(const std::string& from, const std::string& to) {
  std::error_code error;
  if (files::is_directory(from, error) && LiesIn(files::path(to).parent_path(), from))
    Fail("Can't move \"" + from + "\" to", to, "a folder can't be moved into itself");
  if (RenameOverNothing(from, to)) return;
  if (errno != EXDEV) Fail("Can't move \"" + from + "\" to", to, errno);
  // Another disk: whole under a passing name first, so that nothing is ever there by half.
  const std::string passing =
      (files::path(to).parent_path() / (".moving-" + std::to_string(::getpid()))).string();
  files::copy(from, passing, files::copy_options::recursive | files::copy_options::copy_symlinks, error);
  if (!error && !RenameOverNothing(passing, to)) error = {errno, std::generic_category()};
  if (error) {
    std::error_code ignored;
    files::remove_all(passing, ignored);
    Fail("Can't move \"" + from + "\" to", to, error.message());
  }
  Remove(from);
}

void Remove(const std::string& path) {
  std::error_code error;
  files::remove_all(path, error);
  if (error) Fail("Can't delete", path, error.message());
}

std::string FreeName(const std::string& folder, const std::string& name, std::string_view extension) {
  FileName::TakenNames taken;
  std::error_code error;
  for (files::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error))
    taken.Take(entry->path().filename().string());
  return taken.Free(name, extension);
}

bool Stands(const std::string& path) {
  struct stat status {};
  return ::lstat(path.c_str(), &status) == 0;
}

bool LiesIn(const std::string& path, const std::string& folder) {
  std::error_code error;
  const files::path inner = files::weakly_canonical(path, error),
                    outer = files::weakly_canonical(folder, error);
  return !error && std::mismatch(outer.begin(), outer.end(), inner.begin(), inner.end()).first == outer.end();
}

}  // namespace Favourites
