#pragma once

#include <gtk/gtk.h>

#include <functional>
#include <memory>
#include <string>

#include "gtk/base/GObjects.h"
#include "gtk/page/Page.h"
#include "gtk/window/FieldMark.h"
#include "platform/scene/KeyPress.h"

// A window of the element's own outside the program: a page with its title, its address, the way back and
// forth, a status line, and the keys of the program's own window as far as they are a page's. It ends with
// its page, or when the user closes it.
class PlainWindow : private PageOwner {
 public:
  explicit PlainWindow(BrowserWorld& world);
  PlainWindow(const PlainWindow&) = delete;
  ~PlainWindow() override;

  Page& Shown() { return *page_; }
  // Loads an address and comes up.
  void Show(const std::string& uri);
  // Gives the keyboard to the address field, with the whole address selected.
  void AskForAddress();
  // Goes where people would by typing this, home where it is empty. The window hasn't come up by then.
  GtkWindow* Open(const std::string& typed);

 private:
  void LoadBegan() override { Update(); }
  void Progressed(long, long) override {}
  void StatusChanged(const std::string& text) override;
  void NameChanged() override { Update(); }
  void LoadEnded() override { Update(); }
  void Wanted() override { gtk_window_present(GTK_WINDOW(window_)); }
  void ProcessDied() override {}
  void CloseWanted() override { End(); }
  void WindowWanted(const std::string& asker, Page*& taker, bool& cancel) override;
  bool KeyPressed(const GdkEventKey& event) override { return TakeKey(event); }
  void QuestionUp() override { gtk_window_present(GTK_WINDOW(window_)); }
  void LinkChosen(const std::string& address, bool in_front) override;
  void ReadyToShow() override;

  struct Binding;
  static const Binding Bindings[];

  GtkWidget* AddButton(const char* icon, const char* name, void (PlainWindow::*pressed)());
  void AddButtons();
  void ListenToKeys();
  bool TakeKey(const GdkEventKey& event);
  void FocusPage();
  void GoToTyped();
  void Update();
  void ShowAddress();
  void ShowMark(Safety safety);
  // The user closes it: the page may have a question.
  void Close();
  void End();

  void SwitchFullScreen() { page_->SwitchFullScreen(); }
  void Back();
  void Forward();
  void Refresh();
  void RefreshPastCache();
  void Stop();
  void GoHome();
  bool Escape();
  void Find();
  void FindNext();
  void FindPrevious();
  void Print();
  void SaveAs();
  void Source();
  void Inspect();
  void SwitchCaret();
  void ZoomIn();
  void ZoomOut();
  void ZoomNone();
  void OpenAnother();
  void AskForSearch();
  void ShowDownloads();

  BrowserWorld& world_;
  GtkWidget *window_, *address_, *bar_, *status_;
  GtkWidget *back_ = nullptr, *forward_ = nullptr, *refresh_ = nullptr, *stop_ = nullptr;
  std::shared_ptr<Page> page_;
  FieldMark mark_;
  bool ended_ = false;
  bool setting_ = false;  // the address field's text is ours, not the user's
  bool typing_ = false;   // the user has begun to change it
  Owned<GtkGesture> side_buttons_;
  Callbacks callbacks_;
};
