#include "platform/favourites/Bookmarks.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <utility>

#include "platform/Failure.h"
#include "platform/Text.h"
#include "platform/favourites/FavouritesFolder.h"

namespace {

// A path with more bytes can't be opened; deeper folders are emptied into the last one that can.
constexpr size_t MostPathBytes = 3500;

// An address is one line: what browsers drop from one is dropped.
std::string OneLine(std::string_view address) {
  std::string line(address);
  std::erase_if(line, [](char c) { return static_cast<uint8_t>(c) < 0x20 || c == 0x7F; });
  return line;
}

bool HasScheme(std::string_view address, std::string_view scheme) {
  address.remove_prefix(std::min(address.find_first_not_of(' '), address.size()));
  return Text::SameWithoutCase(address.substr(0, scheme.size()), scheme);
}

void WritePlain(const std::string& path, const std::string& content) {
  const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0666);
  const bool written =
      file >= 0 && ::write(file, content.data(), content.size()) == static_cast<ssize_t>(content.size());
  const int error = written ? 0 : errno;
  const bool closed = file >= 0 && ::close(file) == 0;
  if (written && closed) return;
  throw Failure("Can't write the file \"" + path + "\": " + std::strerror(error != 0 ? error : errno));
}

// One sync for all that an import wrote, so that the folder never gets its name before its files.
void SyncDiskOf(const std::string& folder) {
  const int handle = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  const bool good = handle >= 0 && ::syncfs(handle) == 0;
  const int error = errno;
  if (handle >= 0) ::close(handle);
  if (!good) throw Failure("Can't write the folder \"" + folder + "\": " + std::strerror(error));
}

class FavouritesReader {
 public:
  FavouritesReader(Bookmarks& result, const std::function<std::string(const std::string&)>& address_of)
      : result_(result), address_of_(address_of) {}

  void Read(const std::string& folder, std::vector<Bookmark>& into) {
    struct stat status {};
    if (::stat(folder.c_str(), &status) != 0 || way_.size() > Bookmarks::MostDepth) return;
    const std::pair<dev_t, ino_t> self(status.st_dev, status.st_ino);
    if (std::find(way_.begin(), way_.end(), self) != way_.end()) return;
    way_.push_back(self);
    const Favourites::Listing listing = Favourites::List(folder);
    for (const std::string& name : listing.Folders) {
      Bookmark& below = into.emplace_back(Bookmark{true, Text::Valid(name), "", {}});
      Read(folder + "/" + name, below.Children);
    }
    for (const std::string& name : listing.Shortcuts) {
      const std::string address = address_of_(folder + "/" + name);
      if (address.empty())
        ++result_.Count(LeftOut::NoAddress);
      else
        into.push_back({false, Text::Valid(Favourites::WithoutExtension(name)), address, {}});
    }
    way_.pop_back();
  }

 private:
  Bookmarks& result_;
  const std::function<std::string(const std::string&)>& address_of_;
  std::vector<std::pair<dev_t, ino_t>> way_;  // the folders from the top down to this one
};

std::string Escaped(std::string_view text) {
  std::string escaped;
  for (const char c : text) switch (c) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '>':
        escaped += "&gt;";
        break;
      case '"':
        escaped += "&quot;";
        break;
      case '\'':
        escaped += "&#39;";
        break;
      default:
        escaped += c;
    }
  return escaped;
}

// The file is UTF-8: a byte that is part of no character goes as an address has it, by its number.
std::string InUtf8(std::string_view address) {
  std::string result;
  for (size_t at = 0; at < address.size();) {
    const std::string character = Text::Left(address.substr(at, 4), 1);
    constexpr char Digits[] = "0123456789ABCDEF";
    const auto byte = static_cast<uint8_t>(character[0]);
    if (character.size() == 1 && byte >= 0x80)
      result += {'%', Digits[byte >> 4], Digits[byte & 15]};
    else
      result += character;
    at += character.size();
  }
  return result;
}

void WriteHtml(const std::vector<Bookmark>& bookmarks, const std::string& indent, std::string& html) {
  html += indent + "<DL><p>\n";
  for (const Bookmark& bookmark : bookmarks) {
    html += indent + "    <DT>";
    if (bookmark.IsFolder) {
      html += "<H3>" + Escaped(bookmark.Name) + "</H3>\n";
      WriteHtml(bookmark.Children, indent + "    ", html);
    } else {
      html += "<A HREF=\"" + Escaped(InUtf8(bookmark.Address)) + "\">" + Escaped(bookmark.Name) + "</A>\n";
    }
  }
  html += indent + "</DL><p>\n";
}

}  // namespace

void Bookmarks::Add(std::vector<Bookmark>& into, std::string_view name, std::string_view address) {
  std::string line = OneLine(address);
  if (line.find_first_not_of(' ') == line.npos) return void(++Count(LeftOut::NoAddress));
  if (HasScheme(line, "javascript:")) return void(++Count(LeftOut::Script));
  if (HasScheme(line, "place:")) return void(++Count(LeftOut::Place));
  if (line.size() > MostAddressBytes) return void(++Count(LeftOut::TooLong));
  into.push_back({false, std::string(name), std::move(line), {}});
}

BookmarkImport::BookmarkImport(const std::string& favourites, const std::string& name,
                               const Bookmarks& bookmarks)
    : favourites_(favourites),
      name_(FileName::Legal(name, "Imported")),
      passing_(favourites + "/.importing-" + std::to_string(::getpid())) {
  FileName::TakenNames taken;
  Plan(bookmarks.Top, "", taken);
  if (Favourites::Stands(passing_)) Favourites::Remove(passing_);
  Favourites::MakeFolder(passing_);
}

BookmarkImport::~BookmarkImport() {
  if (!folder_.empty()) return;
  std::error_code ignored;
  std::filesystem::remove_all(passing_, ignored);
}

void BookmarkImport::Plan(const std::vector<Bookmark>& bookmarks, const std::string& path,
                          FileName::TakenNames& taken) {
  const size_t room = favourites_.size() + FileName::MostBytes + 20;
  for (const Bookmark& bookmark : bookmarks) {
    if (!bookmark.IsFolder) {
      const std::string name = FileName::Legal(bookmark.Name, "", Favourites::Extension.size());
      // A link without a name is called what it leads to.
      const std::string shown =
          name.empty() ? FileName::Legal(bookmark.Address, "Link", Favourites::Extension.size()) : name;
      jobs_.push_back({path + "/" + taken.Free(shown, Favourites::Extension), bookmark.Address, false});
      ++links_;
    } else if (path.size() + 2 * room > MostPathBytes) {
      Plan(bookmark.Children, path, taken);
    } else {
      const std::string below = path + "/" + taken.Free(FileName::Legal(bookmark.Name, "Folder"), "");
      FileName::TakenNames inside;
      jobs_.push_back({below, "", true});
      Plan(bookmark.Children, below, inside);
    }
  }
}

bool BookmarkImport::Step(size_t count) {
  for (; count > 0 && done_ < jobs_.size(); --count, ++done_) {
    const Job& job = jobs_[done_];
    if (job.IsFolder)
      Favourites::MakeFolder(passing_ + job.Path);
    else
      WritePlain(passing_ + job.Path, Favourites::ShortcutText(job.Address));
  }
  if (done_ < jobs_.size()) return true;
  if (folder_.empty()) PutInPlace();
  return false;
}

void BookmarkImport::PutInPlace() {
  SyncDiskOf(passing_);
  const std::string folder = favourites_ + "/" + Favourites::FreeName(favourites_, name_, "");
  Favourites::Rename(passing_, folder);
  folder_ = folder;
}

Bookmarks ReadFavourites(const std::string& folder,
                         const std::function<std::string(const std::string& path)>& address_of) {
  Bookmarks result;
  FavouritesReader(result, address_of).Read(folder, result.Top);
  return result;
}

std::string BookmarkHtml(const std::vector<Bookmark>& bookmarks) {
  std::string html =
      "<!DOCTYPE NETSCAPE-Bookmark-file-1>\n"
      "<!-- This is an automatically generated file.\n"
      "     It will be read and overwritten.\n"
      "     DO NOT EDIT! -->\n"
      "<META HTTP-EQUIV=\"Content-Type\" CONTENT=\"text/html; charset=UTF-8\">\n"
      "<TITLE>Bookmarks</TITLE>\n"
      "<H1>Bookmarks</H1>\n";
  WriteHtml(bookmarks, "", html);
  return html;
}
