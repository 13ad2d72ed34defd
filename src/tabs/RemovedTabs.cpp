#include "tabs/RemovedTabs.h"

#include <utility>

#include "core/Conversions.h"
#include "core/frmMain.h"

namespace {

constexpr size_t MostPages = 20;

}  // namespace

void RemovedTabs::Keep(int index) {
  Skipping([&] {
    pages_.push_back(main_.tabs.WebBrowser1(index).Keep(KeptPage::Where::InMemory));
    if (pages_.size() > MostPages) pages_.pop_front();
  });
}

void RemovedTabs::Reopen() {
  if (pages_.empty()) {
    main_.frame.StatusBar1.Caption = "There is no removed tab to reopen";
    return;
  }
  Skipping([&] {
    TabSet& tabs = main_.tabs;
    tabs.AddKeptTab(pages_.back());
    pages_.pop_back();
    tabs.ShowTab(ToInt16(tabs.WebBrowser1.UBound()));
    tabs.FocusPage();
  });
}
