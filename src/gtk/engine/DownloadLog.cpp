#include "gtk/engine/DownloadLog.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "gtk/base/GObjects.h"
#include "platform/WebAddress.h"

namespace {

constexpr size_t MostEntries = 100;

struct FreeKeyFile {
  void operator()(GKeyFile* file) const { g_key_file_free(file); }
};
using KeyFile = std::unique_ptr<GKeyFile, FreeKeyFile>;

std::string Read(GKeyFile* file, const char* group, const char* key) {
  return TakeText(g_key_file_get_string(file, group, key, nullptr));
}

const char* NameOf(Download::State state) {
  return state == Download::State::Saved ? "saved" : state == Download::State::Failed ? "failed" : "running";
}

}  // namespace

DownloadLog::DownloadLog(Downloads& downloads, std::string file)
    : downloads_(downloads), file_(std::move(file)) {
  Load();
  downloads_.Listen(*this);
}

void DownloadLog::Load() {
  const KeyFile file(g_key_file_new());
  if (!g_file_test(file_.c_str(), G_FILE_TEST_EXISTS)) return;
  if (!g_key_file_load_from_file(file.get(), file_.c_str(), G_KEY_FILE_NONE, nullptr)) {
    std::rename(file_.c_str(), (file_ + ".damaged").c_str());
    return;
  }
  char** groups = g_key_file_get_groups(file.get(), nullptr);
  for (char** group = groups; *group && entries_.size() < MostEntries; ++group)
    entries_.push_back({++last_number_, Read(file.get(), *group, "address"), Read(file.get(), *group, "file"),
                        Read(file.get(), *group, "state"), Read(file.get(), *group, "reason"),
                        g_key_file_get_uint64(file.get(), *group, "bytes", nullptr)});
  g_strfreev(groups);
}

// Whole or not at all; where it can't be written, the list holds for this run.
void DownloadLog::Save() const {
  const KeyFile file(g_key_file_new());
  for (size_t n = 0; n < entries_.size(); ++n) {
    const Entry& entry = entries_[n];
    const std::string group = std::to_string(n + 1);
    g_key_file_set_string(file.get(), group.c_str(), "address", entry.address.c_str());
    g_key_file_set_string(file.get(), group.c_str(), "file", entry.path.c_str());
    g_key_file_set_string(file.get(), group.c_str(), "state", entry.state.c_str());
    g_key_file_set_string(file.get(), group.c_str(), "reason", entry.reason.c_str());
    g_key_file_set_uint64(file.get(), group.c_str(), "bytes", entry.bytes);
  }
  const std::string data = TakeText(g_key_file_to_data(file.get(), nullptr, nullptr));
  g_file_set_contents_full(file_.c_str(), data.data(), static_cast<gssize>(data.size()),
                           G_FILE_SET_CONTENTS_CONSISTENT, 0600, nullptr);
}

void DownloadLog::Begun(Download& download, WebKitWebView*) {
  if (!download.Held()) Add(download);
}

void DownloadLog::Add(Download& download) {
  entries_.insert(entries_.begin(), {.number = ++last_number_,
                                     .address = WebAddress::WithoutUser(download.Uri()),
                                     .state = "running",
                                     .live = download.weak_from_this()});
  if (entries_.size() > MostEntries) entries_.pop_back();
  Save();
}

void DownloadLog::Changed(Download& download) {
  if (download.Held()) return;
  const auto of_it = [&download](const Entry& entry) { return entry.live.lock().get() == &download; };
  auto found = std::find_if(entries_.begin(), entries_.end(), of_it);
  if (found == entries_.end() && download.Running() && download.Received() == 0) {
    Add(download);
    found = entries_.begin();
  }
  if (found == entries_.end()) return;
  found->path = download.Path();
  found->bytes = download.Received();
  found->reason = download.Reason();
  if (std::exchange(found->state, NameOf(download.Now())) != found->state) Save();
}

const DownloadLog::Entry* DownloadLog::Find(unsigned number) const {
  const auto found = std::find_if(entries_.begin(), entries_.end(),
                                  [number](const Entry& entry) { return entry.number == number; });
  return found == entries_.end() ? nullptr : &*found;
}

void DownloadLog::Again(unsigned number) {
  const Entry* entry = Find(number);
  if (!entry) return;
  const std::string address = entry->address;
  entries_.erase(entries_.begin() + (entry - entries_.data()));
  downloads_.Fetch(address);
}

void DownloadLog::Clear() {
  std::erase_if(entries_, [](const Entry& entry) {
    const auto live = entry.live.lock();
    return !live || !live->Running();
  });
  Save();
}
