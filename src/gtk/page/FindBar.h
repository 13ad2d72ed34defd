#pragma once

#include <gtk/gtk.h>
#include <webkit2/webkit2.h>

#include <functional>
#include <string>

#include "gtk/base/Callbacks.h"
#include "gtk/base/GObjects.h"

// The bar that finds text in the page of a view. It must go before the view.
class FindBar {
 public:
  // `closed`: the user has put the bar away.
  FindBar(WebKitWebView* view, std::function<void()> closed, Callbacks::Runner runner);
  FindBar(const FindBar&) = delete;
  ~FindBar() { gtk_widget_destroy(bar_.get()); }

  GtkWidget* Widget() { return bar_.get(); }
  void Show();
  // To the next or the previous match of the text in the bar, which comes up; asks for one where there is
  // none.
  void Again(bool forward);
  bool Shown() const { return gtk_widget_get_visible(bar_.get()); }
  void Hide();
  // The page has changed.
  void Renew();

 private:
  void Listen();
  void AddButton(const char* icon, const char* name, std::function<void()> pressed);
  void Search(bool forward = true);
  void Step(bool forward);
  void Tell(const std::string& text, bool found);
  void TellCount(guint matches);
  bool TakeKey(const GdkEventKey& event);

  std::function<void()> closed_;
  WebKitFindController* finder_;
  // Kept past its end: the window around it may go first.
  Owned<GtkWidget> bar_;
  GtkWidget *entry_, *match_case_, *result_;
  Callbacks callbacks_;
};
