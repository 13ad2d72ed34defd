#include "gtk/page/DownloadsList.h"

#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include "gtk/dialog/Notice.h"
#include "gtk/dialog/OwnDialog.h"
#include "gtk/engine/DownloadLog.h"
#include "gtk/page/BrowserWorld.h"
#include "gtk/page/text/Address.h"
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
    list.Click = [this] { Update(); };
    list.DblClick = [this] { ShowFile(""); };
    open.Click = [this] { ShowFile(""); };
    folder.Click = [this] { ShowFile("folder"); };
    cancel.Click = [this] {
      if (const auto live = Chosen() ? Chosen()->live.lock() : nullptr) live->Cancel();
      Update();
    };
    again.Click = [this] {
      if (Chosen()) world_.Log().Again(static_cast<size_t>(list.ListIndex()));
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
  Controls::ProgressBar progress{*this, "progress"};
  Controls::CommandButton open{*this, "open"}, folder{*this, "folder"}, cancel{*this, "cancel"},
      again{*this, "again"}, clear{*this, "clear"}, close{*this, "close"};

 private:
  const DownloadLog::Entry* Chosen() const {
    const auto& all = world_.Log().All();
    const int index = list.ListIndex();
    return index >= 0 && static_cast<size_t>(index) < all.size() ? &all[static_cast<size_t>(index)] : nullptr;
  }

  void Update() {
    std::vector<std::string> rows;
    for (const auto& entry : world_.Log().All()) rows.push_back(RowOf(entry));
    if (rows != rows_) {
      // One that begins pushes the others down.
      const int added = rows.size() > rows_.size() ? static_cast<int>(rows.size() - rows_.size()) : 0;
      const int index = list.ListIndex() < 0 ? 0 : list.ListIndex() + (rows_.empty() ? 0 : added);
      rows_ = rows;
      list.Fill(rows);
      if (index < list.ListCount()) list.SetListIndex(index);
    }
    const DownloadLog::Entry* entry = Chosen();
    const bool runs = entry && Runs(*entry);
    const bool saved = entry && entry->state == "saved";
    open.Enabled = folder.Enabled = saved;
    cancel.Enabled = runs;
    again.Enabled = entry && !runs && !saved;
    progress.Value = runs ? entry->live.lock()->Share() : saved ? 1 : 0;
    progress.Caption = entry ? NameOf(*entry) : "";
  }

  void ShowFile(const std::string& what) {
    const DownloadLog::Entry* entry = Chosen();
    if (!entry || entry->state != "saved") return;
    const std::string path = what.empty() ? entry->path : entry->path.substr(0, entry->path.rfind('/'));
    GError* error = nullptr;
    if (g_app_info_launch_default_for_uri(Address::FromPath(path).c_str(), nullptr, &error)) return;
    const OwnedError reason(error);
    Notice::Show(world_.MainWindow(), "It can't be shown",
                 "\"" + path + "\" can't be opened: " + reason->message);
  }

  void End() {
    g_object_set_data(G_OBJECT(world_.Base().Context()), OpenKey, nullptr);
    Close();
  }

  BrowserWorld& world_;
  std::vector<std::string> rows_;
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
