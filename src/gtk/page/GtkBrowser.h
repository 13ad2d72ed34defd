#pragma once

#include <memory>
#include <optional>
#include <string>

#include "gtk/page/Page.h"
#include "gtk/window/HasWidget.h"
#include "platform/Browser.h"
#include "platform/Failure.h"

// The browser element of the program: a page that fills the place of a control.
class GtkBrowser : public Browser, public HasWidget, private PageOwner {
 public:
  GtkBrowser(Control& parent, BrowserWorld& world);
  ~GtkBrowser() override;

  GtkWidget* Widget() override { return page_->Widget(); }

  void Navigate(const std::string& address) override;
  void GoHome() override;
  void GoBack() override;
  void GoForward() override;
  bool CanGoBack() const override;
  bool CanGoForward() const override;
  void Stop() override;
  void Refresh() override;
  void RefreshPastCache() override;
  bool Busy() const override;
  std::string LocationName() const override;
  std::string LocationURL() const override;
  std::string ShownURL() const override;
  Safety PageSafety() const override { return page_->Security(); }
  bool OutsideSandbox() const override;
  bool Offline() const override;
  void SetOffline(bool offline) override;
  void ExecWB(long command, long option) override;
  KeptPage Keep(KeptPage::Where where) const override;
  void Restore(const KeptPage& page) override;
  void Wake() override;
  void Offer(const std::string& text, const std::string& yes, const std::string& no,
             std::function<void(bool yes)> answered) override;
  void SetFocus() override;
  void OpenWindow() override;
  void ShowFind() override;
  void FindAgain(bool forward) override;
  void ShowPrint() override;
  void ShowProperties() override;
  void ShowInspector() override;
  void SwitchCaret() override;
  bool CloseTopBar() override { return page_->CloseTopBar(); }
  void Zoom(int step) override;

 private:
  void LoadBegan() override;
  void Progressed(long progress, long maximum) override;
  void StatusChanged(const std::string& text) override;
  void NameChanged() override;
  void LoadEnded() override;
  void UserActed() override;
  void Wanted() override;
  void ProcessDied() override;
  void CloseWanted() override;
  void WindowWanted(const std::string& asker, Page*& taker, bool& cancel) override;
  void AskToClose(std::function<void(bool agreed)> answered) override;
  void SwitchFullScreen() override { page_->SwitchFullScreen(); }
  void LeaveFullScreen() override { page_->LeaveFullScreen(); }
  bool KeyPressed(const GdkEventKey& event) override;
  void QuestionUp() override;
  void LinkChosen(const std::string& address, bool in_front) override;
  void ReadyToShow() override {}
  const Browser* Element() const override { return this; }

  // Fails while the end of the page's process hasn't been told.
  void FailIfDead() const;
  Failure Died() const;
  template <class... Values>
  void Raise(const std::function<void(Values...)>& event, Values... values);

  BrowserWorld& world_;
  std::shared_ptr<Page> page_;
  std::unique_ptr<Questions> offers_;
  std::optional<KeptPage> asleep_;  // what is shown of a page that isn't loaded yet
  // The program reads Busy until it is false. A process that dies in between is told by failing reads, up to
  // and with the next of Busy.
  mutable bool watched_ = false, dead_ = false;
};
