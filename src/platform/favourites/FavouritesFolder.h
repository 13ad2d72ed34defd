#pragma once

#include <string>
#include <string_view>
#include <vector>

// The user's favourites are a folder of the disk: its sub-folders, and shortcuts, one file for each address.
// Paths here are the host's, as they are spelt; names are the disk's own, and may be no UTF-8.
namespace Favourites {

constexpr std::string_view Extension = ".url";

// What stands in one folder, each list by name as the user's language has it, without regard to case. What
// begins with a full stop is left out; a link counts as what it leads to, and a broken one not at all. No
// file is opened. Both are empty where the folder can't be read.
struct Listing {
  std::vector<std::string> Folders;    // names
  std::vector<std::string> Shortcuts;  // names of files that end in ".url", in letters of any case
};
Listing List(const std::string& folder);

// Without ".url". Not for people's eyes yet: see Text::Valid.
std::string WithoutExtension(const std::string& file_name);

// Writes a shortcut to an address, whole or not at all. Fails, with the file and the reason, where that can't
// be done, or where there is a file of that name already and it isn't to be replaced.
enum class Taken { Refuse, Replace };
void WriteShortcut(const std::string& path, const std::string& address, Taken taken);
// The file's content.
std::string ShortcutText(std::string_view address);

// Each of these fails, with the path and the reason, where it can't be done; none replaces anything.
void MakeFolder(const std::string& path);
void Rename(const std::string& from, const std::string& to);
// Also onto another disk.
void Move(const std::string& from, const std::string& to);
// A folder goes with everything in it; of a link only the link.
void Remove(const std::string& path);

// A name that nothing in the folder has yet, whatever the letter case: the name, or with a number behind it.
std::string FreeName(const std::string& folder, const std::string& name, std::string_view extension);

// Whether something stands there, a broken link included.
bool Stands(const std::string& path);

// Whether `path` is `folder` or lies in it, links followed.
bool LiesIn(const std::string& path, const std::string& folder);

}  // namespace Favourites
