#pragma once

#include <gtk/gtk.h>
#include <webkit2/webkit2.h>

#include "gtk/base/GObjects.h"

class Page;

// The bar below a page that finds text in it. It must go before the view that it was made for.
class FindBar {
 public:
  explicit FindBar(Page& page);
  FindBar(const FindBar&) = delete;
  ~FindBar();

  void Show();
  void Hide();
  // The page has changed.
  void Renew();

 private:
  GtkWidget* AddButton(const char* icon, const char* name, GCallback pressed);
  void Search();
  void Step(bool forward);
  void Tell(const char* text, bool found);

  static void OnTyped(GtkEntry*, gpointer self);
  static void OnNext(GtkWidget*, gpointer self);
  static void OnPrevious(GtkWidget*, gpointer self);
  static void OnCase(GtkWidget*, gpointer self);
  static void OnClose(GtkWidget*, gpointer self);
  static gboolean OnKey(GtkWidget*, GdkEventKey* event, gpointer self);
  static void OnCounted(WebKitFindController*, guint matches, gpointer self);
  static void OnMissed(WebKitFindController*, gpointer self);

  Page& page_;
  WebKitFindController* finder_;
  // Kept past its end: the window around it may go first.
  Owned<GtkWidget> bar_;
  GtkWidget *entry_, *match_case_, *result_;
};
