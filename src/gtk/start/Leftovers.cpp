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
#include <string_view>

#include "gtk/base/GObjects.h"

namespace files = std::filesystem;

namespace {

// Each with the number of its process behind it.
constexpr std::string_view Marks[] = {".new-", ".importing-", ".moving-"};
// What a library's own writing leaves: a point and six letters behind the name.
constexpr std::string_view LibraryWrites[] = {"engine.ini.", "frame-error.html.", "sandbox."};
constexpr size_t LibraryLetters = 6;

constexpr std::string_view Magic("SQLite format 3\0", 16);
constexpr std::string_view Beside[] = {"-wal", "-shm", "-journal"};

bool HasDied(std::string_view number) {
  if (number.empty() || number.size() > 9 ||
      !std::all_of(number.begin(), number.end(), [](unsigned char c) { return std::isdigit(c); }))
    return false;
  return ::kill(std::stoi(std::string(number)), 0) != 0 && errno == ESRCH;
}

bool IsLeft(const std::string& name) {
  for (const std::string_view mark : Marks)
    if (const size_t at = name.rfind(mark); at != name.npos)
      return HasDied(std::string_view(name).substr(at + mark.size()));
  return std::any_of(std::begin(LibraryWrites), std::end(LibraryWrites), [&name](std::string_view begin) {
    return name.starts_with(begin) && name.size() == begin.size() + LibraryLetters;
  });
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

void ClearIn(const files::path& folder) {
  std::error_code ignored;
  for (const files::path& path : Below<files::directory_iterator>(folder))
    if (IsLeft(path.filename().string())) files::remove_all(path, ignored);
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
  for (const char* part : {"", "history", "engine", "favourites"}) ClearIn(folder / part);
  for (const files::path& path : Below<files::recursive_directory_iterator>(folder / "favourites"))
    if (std::error_code unknown; files::is_directory(path, unknown)) ClearIn(path);
  // First starts that didn't come to their end.
  const std::string begin = folder.filename().string() + std::string(Marks[0]);
  std::error_code ignored;
  for (const files::path& path : Below<files::directory_iterator>(folder.parent_path()))
    if (const std::string name = path.filename().string(); name.starts_with(begin) && IsLeft(name))
      files::remove_all(path, ignored);
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
