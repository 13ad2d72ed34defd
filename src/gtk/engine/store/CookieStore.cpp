#include "gtk/engine/store/CookieStore.h"

#include <sqlite3.h>

#include <ctime>
#include <memory>
#include <string_view>

#include "gtk/engine/store/CookieName.h"
#include "platform/Failure.h"
#include "platform/Files.h"

namespace {

// How long another program may take with the store before it counts as locked, in milliseconds. The start
// waits for it.
constexpr int LockedAfter = 250;

constexpr const char* Query = "SELECT name, host, path FROM moz_cookies WHERE expiry > ?1";

struct CloseStore {
  void operator()(sqlite3* store) const { sqlite3_close(store); }
};
struct EndQuery {
  void operator()(sqlite3_stmt* query) const { sqlite3_finalize(query); }
};
using Store = std::unique_ptr<sqlite3, CloseStore>;
using Rows = std::unique_ptr<sqlite3_stmt, EndQuery>;

[[noreturn]] void Fail(const std::string& file, sqlite3* store) {
  throw Failure("The cookies in \"" + file + "\" can't be read: " + sqlite3_errmsg(store));
}

// As the engine reads it: up to a zero, nothing for no value.
std::string_view Column(sqlite3_stmt* rows, int index) {
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(rows, index));
  return text ? text : "";
}

}  // namespace

std::vector<std::string> CookiesOnDisk(const std::string& file) {
  if (!IsFile(file)) return {};
  sqlite3* handle = nullptr;
  // Not for reading only: a store that a killed program left in the middle of a change is put right first.
  const int opened = sqlite3_open_v2(file.c_str(), &handle, SQLITE_OPEN_READWRITE, nullptr);
  const Store store(handle);
  if (opened != SQLITE_OK) Fail(file, handle);
  sqlite3_busy_timeout(handle, LockedAfter);

  sqlite3_stmt* statement = nullptr;
  const int prepared = sqlite3_prepare_v2(handle, Query, -1, &statement, nullptr);
  const Rows rows(statement);
  if (prepared != SQLITE_OK) Fail(file, handle);
  sqlite3_bind_int64(statement, 1, std::time(nullptr));

  std::vector<std::string> names;
  int step;
  while ((step = sqlite3_step(statement)) == SQLITE_ROW)
    names.push_back(CookieName(Column(statement, 0), Column(statement, 1), Column(statement, 2)));
  if (step != SQLITE_DONE) Fail(file, handle);
  return names;
}
