#include "tabs/TabLayouts.h"

#include "core/Conversions.h"
#include "core/Program.h"
#include "core/frmMain.h"
#include "platform/Text.h"

namespace {

constexpr const char* Header = "<Tab Layout File>";

}  // namespace

void TabLayouts::SaveTabLayout(const std::string& Path) {
  Program& program = main_.program;
  if (IsFile(Path) && program.desktop.MsgBox("The File already exists.\n\nOverwrite?", Buttons::YesNo,
                                             "Overwrite file?") != Answer::Yes)
    return;
  lstTabList.clear();
  auto& browsers = main_.tabs.WebBrowser1;
  for (int i = 0; i <= browsers.UBound(); ++i)
    Skipping([&] { lstTabList.push_back(browsers(i).LocationURL()); });
  Skipping([&] {
    program.slot.OpenExactly(Path, FileSlot::Mode::Output);
    program.slot.Print(Header);
    for (const std::string& address : lstTabList) program.slot.Print(address);
    program.slot.Close();
  });
}

void TabLayouts::RestoreTabLayout(const std::string& Path) {
  if (!ReadLayout(Path)) return;
  TabSet& tabs = main_.tabs;
  if (tabs.WebBrowser1.UBound() != 0) {
    for (int i = 1, last = tabs.WebBrowser1.UBound(); i <= last; ++i) {
      tabs.CurrentTab = ToInt16(i);
      tabs.DelTab();
    }
  }
  tabs.CurrentTab = 0;
  for (size_t i = 1; i < lstTabList.size(); ++i) tabs.AddTab("about:blank");
  for (size_t i = 0; i < lstTabList.size(); ++i)
    // The user may have closed a tab while the later ones were made.
    Skipping([&] { tabs.WebBrowser1(static_cast<int>(i)).Navigate(lstTabList[i]); });
  tabs.CurrentTab = 0;
  main_.strip.UpdateTabs();
  tabs.UpdateBrowsers();
}

// Fills the list from a file; false where it is no layout. A failure behind the opening leaves the file open.
bool TabLayouts::ReadLayout(const std::string& Path) {
  FileSlot& slot = main_.program.slot;
  lstTabList.clear();
  bool read = false;
  Skipping([&] {
    slot.OpenExactly(Path, FileSlot::Mode::Input);
    if (!Text::SameWithoutCase(slot.LineInput(), Header)) {
      slot.Close();
      return;
    }
    while (!slot.EndOfFile()) lstTabList.push_back(slot.LineInput());
    slot.Close();
    read = true;
  });
  return read;
}
