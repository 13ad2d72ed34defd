#include "gtk/start/Leftovers.h"

#include <fcntl.h>
#include <glib.h>
#include <signal.h>
#include <sqlite3.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <memory>
#include <optional>
#include <string_view>

#include "gtk/base/GObjects.h"

namespace files = std::filesystem;

namespace {

// What stands before the number of the process that wrote something anew, imported or moved it.
constexpr std::string_view New = ".new-", Importing = ".importing-", Moving = ".moving-";
// The program's own files, and those that a library writes: with a point and six letters behind the name.
constexpr std::string_view Written[] = {"autocomplete.dat", "browser.ini", "contents.htm", "filter.dat",
                                        "history.dat",      "history.htm", "launch.dat",   "tabs.dat"};
constexpr std::string_view WrittenByLibrary[] = {"downloads.dat.", "engine.ini.", "frame-error.html.",
                                                 "sandbox."};
constexpr size_t LibraryLetters = 6;
// Of a source that was being fetched; a UUID is behind it.
constexpr std::string_view Source = "source-";

constexpr std::string_view Magic("SQLite format 3\0", 16);
constexpr std::string_view Beside[] = {"-wal", "-shm", "-journal"};

bool HasDied(std::string_view number) {
  if (number.empty() || number.size() > 9 ||
      !std::all_of(number.begin(), number.end(), [](unsigned char c) { return std::isdigit(c); }))
    return false;
  return ::kill(std::stoi(std::string(number)), 0) != 0 && errno == ESRCH;
}

// The name before the mark and the number of a process that there is no more.
std::optional<std::string> Before(std::string_view mark, const std::string& name) {
  const size_t at = name.rfind(mark);
  if (at == name.npos || !HasDied(std::string_view(name).substr(at + mark.size()))) return std::nullopt;
  return name.substr(0, at);
}

bool IsWritten(const std::string& name) {
  const std::optional<std::string> file = Before(New, name);
  return file && std::any_of(std::begin(Written), std::end(Written), [&file](std::string_view one) {
           return g_ascii_strcasecmp(file->c_str(), one.data()) == 0;
         });
}

bool IsWrittenByLibrary(const std::string& name) {
  return std::any_of(std::begin(WrittenByLibrary), std::end(WrittenByLibrary), [&name](std::string_view one) {
    return name.starts_with(one) && name.size() == one.size() + LibraryLetters;
  });
}

bool IsSource(const std::string& name) {
  return name.starts_with(Source) && g_uuid_string_is_valid(name.c_str() + Source.size());
}

bool IsWrittenAs(std::string_view extension, const std::string& name) {
  const std::optional<std::string> file = Before(New, name);
  return file && file->ends_with(extension);
}

// A link is neither.
bool IsFile(const files::path& path) {
  std::error_code unknown;
  return files::symlink_status(path, unknown).type() == files::file_type::regular;
}
bool IsFolder(const files::path& path) {
  std::error_code unknown;
  return files::symlink_status(path, unknown).type() == files::file_type::directory;
}

// All that a folder has by the time of the call, with no failure.
template <class Iterator>
std::vector<files::path> Below(const files::path& folder) {
  std::vector<files::path> all;
  std::error_code error;
  for (Iterator entry(folder, error), end; !error && entry != end; entry.increment(error))
    all.push_back(entry->path());
  return all;
}

// What in a folder is the program's own; a link to a folder is somebody's else.
template <class IsOurs>
void ClearIn(const files::path& folder, IsOurs is_ours) {
  std::error_code ignored;
  if (!IsFolder(folder)) return;
  for (const files::path& path : Below<files::directory_iterator>(folder))
    if (is_ours(path, path.filename().string())) files::remove_all(path, ignored);
}

void ClearFavourites(const files::path& favourites) {
  const auto is_ours = [&](const files::path& path, const std::string& name) {
    if (IsFile(path) && IsWrittenAs(".url", name)) return true;
    if (!IsFile(path) && !IsFolder(path)) return false;
    return Before(Moving, name) == "" || (path.parent_path() == favourites && Before(Importing, name) == "");
  };
  ClearIn(favourites, is_ours);
  if (!IsFolder(favourites)) return;
  for (const files::path& path : Below<files::recursive_directory_iterator>(favourites))
    ClearIn(path, is_ours);
}

// First starts that didn't come to their end: what they have made bears the mark of one.
void ClearInstalls(const files::path& folder) {
  const auto is_ours = [&](const files::path& path, const std::string& name) {
    std::error_code unknown;
    return IsFolder(path) && Before(New, name) == folder.filename() &&
           (IsFile(path / Leftovers::InstallMark) || files::is_empty(path, unknown));
  };
  ClearIn(folder.parent_path(), is_ours);
}

bool IsWhole(const files::path& path) {
  sqlite3* handle = nullptr;
  // What a killed program left in the middle of a change is put right first.
  const int opened = sqlite3_open_v2(path.c_str(), &handle, SQLITE_OPEN_READWRITE, nullptr);
  const std::unique_ptr<sqlite3, decltype(&sqlite3_close)> store(handle, &sqlite3_close);
  if (opened != SQLITE_OK) return opened != SQLITE_NOTADB && opened != SQLITE_CORRUPT;
  bool whole = true;
  const auto look = +[](void* result, int, char** values, char**) {
    *static_cast<bool*>(result) = values[0] && std::string_view(values[0]) == "ok";
    return 0;
  };
  const int looked = sqlite3_exec(handle, "PRAGMA quick_check(1)", look, &whole, nullptr);
  return whole && looked != SQLITE_NOTADB && looked != SQLITE_CORRUPT;
}

// Whether a file that should be a database, or nothing yet, is something else.
bool IsNoDatabase(const files::path& path) {
  const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (file < 0) return false;
  char head[Magic.size()];
  const ssize_t got = ::read(file, head, sizeof head);
  ::close(file);
  return got > 0 && std::string_view(head, static_cast<size_t>(got)) != Magic;
}

bool IsNamedAsDatabase(const files::path& path) {
  const std::string kind = path.extension().string();
  return kind == ".db" || kind == ".sqlite" || kind == ".sqlite3";
}

void Move(const files::path& path, std::vector<Leftovers::Damaged>& damaged) {
  GDateTime* now = g_date_time_new_now_local();
  const std::string base = path.string() + ".damaged-" + TakeText(g_date_time_format(now, "%Y-%m-%d"));
  g_date_time_unref(now);
  files::path aside = base;
  std::error_code error;
  for (int i = 2; files::exists(aside, error); ++i) aside = base + "-" + std::to_string(i);
  files::rename(path, aside, error);
  if (error) return;
  for (const std::string_view part : Beside)
    files::rename(path.string() + std::string(part), aside.string() + std::string(part), error);
  damaged.push_back({path, aside});
}

}  // namespace

namespace Leftovers {

void Clear(const files::path& folder) {
  std::error_code unknown;
  const files::path home = files::canonical(folder, unknown);
  if (unknown) return;
  ClearIn(home, [](const files::path& path, const std::string& name) {
    if (IsFile(path)) return IsWritten(name) || IsWrittenByLibrary(name);
    return IsFolder(path) && Before(New, name) == "skins";
  });
  ClearIn(home / "history", [](const files::path& path, const std::string& name) {
    return IsFile(path) && IsWrittenAs(".htm", name);
  });
  ClearIn(home / "engine", [](const files::path& path, const std::string& name) {
    return IsFile(path) && (IsWrittenByLibrary(name) || IsSource(name));
  });
  ClearFavourites(home / "favourites");
  ClearInstalls(folder);
}

void ClearOldCache(const files::path& engine) {
  std::error_code ignored;
  const files::path cache = engine / "cache";
  if (IsFolder(engine) && IsFolder(cache) && IsFolder(cache / "WebKitCache"))
    files::remove_all(cache / "WebKitCache", ignored);
}

std::vector<Damaged> PutAside(const files::path& engine) {
  std::vector<Damaged> damaged;
  std::error_code unknown;
  const files::path cookies = engine / "cookies.sqlite", data = engine / "data";
  if (files::exists(cookies, unknown) && (!files::is_regular_file(cookies, unknown) || !IsWhole(cookies)))
    Move(cookies, damaged);
  if (files::exists(data, unknown) && !files::is_directory(data, unknown)) Move(data, damaged);
  for (const files::path& path : Below<files::recursive_directory_iterator>(data))
    if (IsNamedAsDatabase(path) && IsNoDatabase(path)) Move(path, damaged);
  return damaged;
}

}  // namespace Leftovers
