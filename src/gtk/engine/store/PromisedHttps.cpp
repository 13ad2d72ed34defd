#include "gtk/engine/store/PromisedHttps.h"

#include <sqlite3.h>

#include <ctime>
#include <memory>

#include "platform/Files.h"

namespace {

// How long the engine may take with the store, in milliseconds.
constexpr int LockedAfter = 250;

constexpr const char* Query =
    "SELECT 1 FROM soup_hsts_policies WHERE expiry > ?1 AND (host = ?2 OR include_subdomains AND "
    "substr(?2, -length(host) - 1) = '.' || host) LIMIT 1";

struct CloseStore {
  void operator()(sqlite3* store) const { sqlite3_close(store); }
};
struct EndQuery {
  void operator()(sqlite3_stmt* query) const { sqlite3_finalize(query); }
};

}  // namespace

bool PromisedHttps(const std::string& file, const std::string& host) {
  if (!IsFile(file)) return false;
  sqlite3* handle = nullptr;
  const int opened = sqlite3_open_v2(file.c_str(), &handle, SQLITE_OPEN_READWRITE, nullptr);
  const std::unique_ptr<sqlite3, CloseStore> store(handle);
  if (opened != SQLITE_OK) return false;
  sqlite3_busy_timeout(handle, LockedAfter);
  sqlite3_stmt* statement = nullptr;
  const int prepared = sqlite3_prepare_v2(handle, Query, -1, &statement, nullptr);
  const std::unique_ptr<sqlite3_stmt, EndQuery> rows(statement);
  if (prepared != SQLITE_OK) return false;
  sqlite3_bind_int64(statement, 1, std::time(nullptr));
  sqlite3_bind_text(statement, 2, host.c_str(), -1, SQLITE_TRANSIENT);
  return sqlite3_step(statement) == SQLITE_ROW;
}
