#include "tabs/Recovery.h"

#include <filesystem>
#include <utility>

#include "core/Conversions.h"
#include "core/Program.h"
#include "core/frmMain.h"
#include "platform/Files.h"

namespace {

constexpr int Soon = 1000, Pause = 10000;          // ms
constexpr uintmax_t MostBytes = 64 * 1024 * 1024;  // of a file that is looked into
constexpr const char* Name = "tabs.dat";

void Replace(const std::string& path, const std::string& content) {
  using enum std::filesystem::perms;
  std::error_code ignored;
  std::filesystem::permissions(path, owner_read | owner_write, ignored);
  FileSlot slot;
  slot.OpenExactly(path, FileSlot::Mode::Output);
  slot.Print(content);
  slot.Close();
}

}  // namespace

Recovery::Recovery(frmMain& main) : main_(main), Timer1(main.program.desktop, Soon, false) {
  Timer1.Tick = [this] { Timer1_Timer(); };
}

std::string Recovery::Path() const { return HostPath(main_.program.AppPath + "\\" + Name); }

void Recovery::Begin() {
  Skipping([this] {
    // What a run that was cut off had begun to write.
    for (const std::string& name : FileNames(main_.program.AppPath))
      if (name.starts_with(std::string(Name) + ".new-"))
        RemoveFile(HostPath(main_.program.AppPath) + "/" + name);
  });
  Skipping([this] {
    std::error_code unknown;
    if (!IsFile(Path()) || std::filesystem::file_size(Path(), unknown) > MostBytes) return;
    offered_ = KeptTabs::Unpack(ReadWholeFile(Path()));
    const size_t count = offered_.Pages.size();
    if (count == 1 && offered_.Pages[0].History.empty() && StartsAlike()) offered_ = {};
    if (offered_.Pages.empty()) return;
    const std::string open = count == 1 ? "One tab was open." : std::to_string(count) + " tabs were open.";
    main_.tabs.WebBrowser1(0).Offer("Marlowick was cut off last time. " + open, "_Restore", "_Forget",
                                    [this](bool yes) {
                                      if (over_) return;
                                      if (yes) BringBack();
                                      offered_ = {};
                                      Changed();
                                    });
  });
}

bool Recovery::StartsAlike() const {
  return !offered_.Pages.empty() && main_.tabs.WebBrowser1(0).LocationURL() == offered_.Pages[0].Address;
}

void Recovery::BringBack() {
  TabSet& tabs = main_.tabs;
  bool alike = false;
  Skipping([&] { alike = StartsAlike(); });
  const KeptTabs kept = std::exchange(offered_, {});
  int16_t shown = tabs.CurrentTab;
  for (size_t i = 0; i < kept.Pages.size(); ++i)
    Skipping([&] {
      const bool first = i == 0 && alike;
      first ? tabs.WebBrowser1(0).Restore(kept.Pages[i]) : tabs.AddKeptTab(kept.Pages[i]);
      if (i == kept.Shown) shown = first ? int16_t(0) : ToInt16(tabs.WebBrowser1.UBound());
    });
  tabs.ShowTab(shown);
  tabs.FocusPage();
}

void Recovery::Changed() {
  if (over_) return;
  changed_ = true;
  if (Timer1.Enabled) return;
  Timer1.Interval = Soon;
  Timer1.Enabled = true;
}

void Recovery::Timer1_Timer() {
  Timer1.Enabled = false;
  if (!std::exchange(changed_, false)) return;
  Skipping([this] { Write(); });
  Timer1.Interval = Pause;
  Timer1.Enabled = true;
}

// The tabs there are, and those that are still offered: a run that is cut off in turn loses none of them.
KeptTabs Recovery::Tabs() {
  KeptTabs tabs;
  bool alike = false;
  Skipping([&] { alike = StartsAlike(); });
  for (const int16_t i : main_.tabs.ListLiveTabs()) {
    if (i == main_.tabs.CurrentTab) tabs.Shown = tabs.Pages.size();
    if (i == 0 && alike) continue;
    Skipping([&] { tabs.Pages.push_back(main_.tabs.WebBrowser1(i).Keep(KeptPage::Where::OnDisk)); });
  }
  if (offered_.Pages.empty()) return tabs;
  tabs.Pages.insert(tabs.Pages.begin(), offered_.Pages.begin(), offered_.Pages.end());
  tabs.Shown = offered_.Shown;
  return tabs;
}

void Recovery::Write() {
  Settle();
  std::string content = Tabs().Pack();
  if (content == written_) return;
  written_ = std::move(content);
  // Beside the program: the disk may take its time.
  writing_ = std::async(std::launch::async, Replace, Path(), written_);
}

void Recovery::Settle() {
  try {
    if (writing_.valid()) writing_.get();
  } catch (const std::exception& failure) {
    written_.clear();
    main_.frame.StatusBar1.Caption = std::string("The tabs can't be kept: ") + failure.what();
  }
}

void Recovery::End(bool wished) {
  if (std::exchange(over_, true)) return;
  Timer1.Enabled = false;
  Skipping([&] {
    if (!wished) Write();
  });
  Settle();
  if (wished) Skipping([&] { RemoveFile(Path()); });
}
