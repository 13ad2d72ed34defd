#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/favourites/FileName.h"

// A link, or a folder of further ones.
struct Bookmark {
  bool IsFolder = false;
  std::string Name, Address;
  std::vector<Bookmark> Children;
};

// What another program's bookmarks had that is left out, and why.
enum class LeftOut { Script, Place, NoAddress, TooLong, TooDeep };

// Bookmarks as another program kept them.
struct Bookmarks {
  static constexpr size_t MostDepth = 64;  // folders in each other; the deepest takes what lies deeper
  static constexpr size_t MostAddressBytes = 64 * 1024;  // of one address

  std::vector<Bookmark> Top;
  std::array<size_t, 5> Left = {};  // how many, by LeftOut

  // Takes a link over, or counts it as left out.
  void Add(std::vector<Bookmark>& into, std::string_view name, std::string_view address);
  size_t& Count(LeftOut why) { return Left[static_cast<size_t>(why)]; }
};

// Writes bookmarks into a new folder of the favourites, a few files at a time. Nothing of it is seen before
// everything stands; what isn't finished goes with this object.
class BookmarkImport {
 public:
  // Fails where no folder can be made there. The new folder is named after `name`.
  BookmarkImport(const std::string& favourites, const std::string& name, const Bookmarks& bookmarks);
  BookmarkImport(const BookmarkImport&) = delete;
  ~BookmarkImport();

  size_t Done() const { return done_; }
  size_t Total() const { return jobs_.size(); }
  size_t Links() const { return links_; }
  // Writes up to so many further files and folders. False once everything is in its place. Fails, with the
  // file and the reason, where something can't be written.
  bool Step(size_t count);
  // The new folder's path, once everything is in its place.
  const std::string& Folder() const { return folder_; }

 private:
  struct Job {
    std::string Path;     // below the new folder
    std::string Address;  // of a link
    bool IsFolder;
  };
  void Plan(const std::vector<Bookmark>& bookmarks, const std::string& path, FileName::TakenNames& taken);
  void PutInPlace();

  std::string favourites_, name_, passing_, folder_;
  std::vector<Job> jobs_;
  size_t done_ = 0, links_ = 0;
};

// Everything below a folder of favourites, links followed, but none round in a ring. `address_of` reads a
// shortcut; what it gives nothing for is left out and counted.
Bookmarks ReadFavourites(const std::string& folder,
                         const std::function<std::string(const std::string& path)>& address_of);

// The file that every browser writes and reads.
std::string BookmarkHtml(const std::vector<Bookmark>& bookmarks);
