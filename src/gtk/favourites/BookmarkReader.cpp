#include "gtk/favourites/BookmarkReader.h"

#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <utility>

#include "gtk/favourites/BookmarkHtmlParser.h"
#include "gtk/favourites/Encoding.h"
#include "platform/Failure.h"
#include "platform/Files.h"
#include "platform/Text.h"
#include "platform/favourites/FavouritesFolder.h"

namespace files = std::filesystem;

namespace {

constexpr uintmax_t MostHtmlBytes = 64 * 1024 * 1024, MostShortcutBytes = 1024 * 1024;

// Nothing for what is larger, or no file.
std::string ReadSmallFile(const std::string& path, uintmax_t most) {
  std::error_code error;
  if (!files::is_regular_file(path, error) || files::file_size(path, error) > most || error) return {};
  try {
    return ReadWholeFile(path);
  } catch (const Failure&) {
    return {};
  }
}

bool EndsWith(std::string_view name, std::string_view end) {
  return name.size() > end.size() && Text::SameWithoutCase(name.substr(name.size() - end.size()), end);
}

std::string_view Trimmed(std::string_view text) {
  const size_t first = text.find_first_not_of(" \t\r");
  if (first == text.npos) return {};
  return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

// The encoding that a page names in its head.
std::string DeclaredEncoding(const std::string& html) {
  const std::string head = Text::LowerCase(std::string_view(html).substr(0, 2048));
  const size_t key = head.find("charset=");
  if (key == head.npos) return {};
  const size_t start = head.find_first_not_of("\"' ", key + 8);
  if (start == head.npos) return {};
  return head.substr(start, head.find_first_of("\"' >/;", start) - start);
}

// The value of a key in a section of a text of lines "key=value".
std::string ValueIn(const std::string& text, std::string_view section, std::string_view key) {
  bool inside = false;
  std::string_view rest = text;
  while (!rest.empty()) {
    const size_t end = std::min(rest.find_first_of("\r\n"), rest.size());
    const std::string_view line = Trimmed(rest.substr(0, end));
    rest.remove_prefix(std::min(end + 1, rest.size()));
    if (line.starts_with('[')) inside = Text::SameWithoutCase(line, section);
    const size_t equals = line.find('=');
    if (inside && equals != line.npos && Text::SameWithoutCase(Trimmed(line.substr(0, equals)), key))
      return std::string(Trimmed(line.substr(equals + 1)));
  }
  return {};
}

class ShortcutFolder {
 public:
  explicit ShortcutFolder(Bookmarks& result) : result_(result) {}

  void Read(const files::path& folder, std::vector<Bookmark>& into, size_t depth) {
    std::error_code error;
    std::vector<files::path> entries;
    for (files::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error))
      entries.push_back(entry->path());
    std::sort(entries.begin(), entries.end());
    for (const files::path& path : entries) {
      const std::string name = path.filename().string();
      if (name.starts_with('.')) continue;
      // A link to a folder may lead round in a ring.
      if (files::is_directory(files::symlink_status(path, error))) {
        if (depth >= Bookmarks::MostDepth) {
          ++result_.Count(LeftOut::TooDeep);
          continue;
        }
        Bookmark below{true, ToUtf8(name), "", {}};
        Read(path, below.Children, depth + 1);
        into.push_back(std::move(below));
      } else {
        ReadFile(path.string(), name, into);
      }
    }
  }

 private:
  void ReadFile(const std::string& path, const std::string& name, std::vector<Bookmark>& into) {
    const bool url = EndsWith(name, ".url"), desktop = EndsWith(name, ".desktop");
    if (!url && !desktop) return;
    std::string shown = ToUtf8(name.substr(0, name.rfind('.')));
    if (desktop) {
      const std::string text = ToUtf8(ReadSmallFile(path, MostShortcutBytes));
      // A program's entry isn't a bookmark at all.
      if (ValueIn(text, "[desktop entry]", "type") != "Link") return;
      const std::string own = ValueIn(text, "[desktop entry]", "name");
      if (!own.empty()) shown = own;
    }
    result_.Add(into, shown, AddressInShortcut(path));
  }

  Bookmarks& result_;
};

}  // namespace

Bookmarks ReadBookmarks(const std::string& path) {
  std::error_code error;
  if (files::is_directory(path, error)) {
    Bookmarks result;
    ShortcutFolder(result).Read(path, result.Top, 0);
    return result;
  }
  if (files::file_size(path, error) > MostHtmlBytes && !error)
    throw Failure("Can't read the file \"" + path + "\": it is larger than 64 MiB");
  const std::string content = ReadWholeFile(path);
  bool found = false;
  try {
    Bookmarks result = ParseBookmarkHtml(ToUtf8(content, DeclaredEncoding(content)), found);
    if (found) return result;
  } catch (const Failure& failure) {
    throw Failure("Can't read the file \"" + path + "\": " + failure.what());
  }
  throw Failure("Can't read the file \"" + path + "\": there is no list of bookmarks in it");
}

std::string AddressInShortcut(const std::string& path) {
  const std::string text = ToUtf8(ReadSmallFile(path, MostShortcutBytes));
  if (!EndsWith(path, ".desktop")) return ValueIn(text, "[internetshortcut]", "url");
  if (ValueIn(text, "[desktop entry]", "type") != "Link") return {};
  return ValueIn(text, "[desktop entry]", "url");
}
