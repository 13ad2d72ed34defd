#include "gtk/page/DownloadsList.h"

#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include "gtk/base/FileManager.h"
#include "gtk/dialog/Notice.h"
#include "gtk/dialog/OwnDialog.h"
#include "gtk/engine/DownloadLog.h"
#include "gtk/page/BrowserWorld.h"
#include "platform/dialog/Controls.h"

namespace {

constexpr const char* OpenKey = "downloads-list";
constexpr unsigned Beat = 500;  // milliseconds between two looks at what runs

std::string Size(double bytes) { return TakeText(g_format_size(static_cast<guint64>(bytes))); }

std::string TimeLeft(double seconds) {
  const long whole = std::lround(seconds);
  if (whole < 60) return std::to_string(whole) + " s left";
  if (whole < 3600) return std::to_string((whole + 59) / 60) + " min left";
  return std::to_string((whole + 3599) / 3600) + " h left";
}

std::string Progress(const Download& download) {
  const auto received = static_cast<double>(download.Received());
  const auto length = static_cast<double>(download.Length());
  std::string text = Size(received);
  if (length > 0) text += " of " + Size(length);
  if (const double speed = download.Speed(); speed > 0) {
    text += ", " + Size(speed) + "/s";
    if (length > received) text += ", " + TimeLeft((length - received) / speed);
  }
  return text;
}

bool Runs(const DownloadLog::Entry& entry) {
  const auto live = entry.live.lock();
  return live && live->Running();
}

// -1 where it isn't running, or nobody knows its length.
double ShareOf(const DownloadLog::Entry& entry) {
  return Runs(entry) && entry.live.lock()->Length() > 0 ? entry.live.lock()->Share() : -1;
}

std::string NameOf(const DownloadLog::Entry& entry) {
  return entry.path.empty() ? entry.address : entry.path.substr(entry.path.rfind('/') + 1);
}

std::string RowOf(const DownloadLog::Entry& entry) {
  if (Runs(entry)) return NameOf(entry) + " — " + Progress(*entry.live.lock());
  if (entry.state == "saved") return NameOf(entry) + " — " + Size(static_cast<double>(entry.bytes));
  return NameOf(entry) + " — not downloaded: " + (entry.reason.empty() ? "the program ended" : entry.reason);
}

class ListDialog : public OwnDialog {
 public:
  explicit ListDialog(BrowserWorld& world)
      : OwnDialog(world.MainWindow(), "Downloads"),
        world_(world),
        callbacks_([&gate = world.Gate()](const std::function<void()>& handler) { gate.Run(handler); }) {
    list.Click = [this] {
      if (list.ListIndex() >= 0) chosen_ = rows_.at(static_cast<size_t>(list.ListIndex())).number;
      Update();
    };
    list.Share = [this](int index) { return rows_.at(static_cast<size_t>(index)).share; };
    list.DblClick = open.Click = [this] {
      if (const std::string path = SavedPath(); !path.empty()) FileManager::Open(path, Failed());
    };
    folder.Click = [this] {
      if (const std::string path = SavedPath(); !path.empty()) FileManager::Show(path, callbacks_, Failed());
    };
    cancel.Click = [this] {
      if (const auto live = Chosen() ? Chosen()->live.lock() : nullptr) live->Cancel();
      Update();
    };
    again.Click = [this] {
      world_.Log().Again(chosen_);
      Update();
    };
    clear.Click = [this] {
      world_.Log().Clear();
      Update();
    };
    close.Click = QueryUnload = [this] { End(); };
    callbacks_.Every(Beat, [this] { Update(); });
    Update();
  }

  Controls::ListBox list{*this, "list"};
  Controls::CommandButton open{*this, "open"}, folder{*this, "folder"}, cancel{*this, "cancel"},
      again{*this, "again"}, clear{*this, "clear"}, close{*this, "close"};

 private:
  struct Row {
    unsigned number;  // of the entry
    std::string text;
    double share;  // of a running one's length; -1 where nobody knows it
    bool operator==(const Row&) const = default;
  };

  const DownloadLog::Entry* Chosen() const { return world_.Log().Find(chosen_); }

  void Update() {
    std::vector<Row> rows;
    for (const auto& entry : world_.Log().All()) rows.push_back({entry.number, RowOf(entry), ShareOf(entry)});
    if (rows != rows_) {
      rows_ = rows;
      // What has gone leaves the choice to the newest.
      if (!Chosen() && !rows_.empty()) chosen_ = rows_.front().number;
      Fill();
    }
    const DownloadLog::Entry* entry = Chosen();
    const bool runs = entry && Runs(*entry);
    const bool saved = entry && entry->state == "saved";
    open.Enabled = folder.Enabled = saved;
    cancel.Enabled = runs;
    again.Enabled = entry && !runs && !saved;
  }

  void Fill() {
    std::vector<std::string> texts;
    int index = -1;
    for (const Row& row : rows_) {
      if (row.number == chosen_) index = static_cast<int>(texts.size());
      texts.push_back(row.text);
    }
    list.Fill(texts);
    list.SetListIndex(index);
  }

  std::string SavedPath() const {
    const DownloadLog::Entry* entry = Chosen();
    return entry && entry->state == "saved" ? entry->path : "";
  }

  FileManager::Failed Failed() {
    return
        [this](const std::string& reason) { Notice::Show(world_.MainWindow(), "It can't be shown", reason); };
  }

  void End() {
    g_object_set_data(G_OBJECT(world_.Base().Context()), OpenKey, nullptr);
    Close();
  }

  BrowserWorld& world_;
  std::vector<Row> rows_;
  unsigned chosen_ = 0;  // the entry's number
  Callbacks callbacks_;
};

}  // namespace

namespace DownloadsList {

void Show(BrowserWorld& world) {
  auto* context = G_OBJECT(world.Base().Context());
  if (auto* open = static_cast<ListDialog*>(g_object_get_data(context, OpenKey))) return open->SetFocus();
  const auto dialog = std::make_shared<ListDialog>(world);
  g_object_set_data(context, OpenKey, dialog.get());
  OwnDialog::Open(dialog);
}

}  // namespace DownloadsList
