#pragma once

#include <gtk/gtk.h>
#include <webkit2/webkit2.h>

class Page;

// The bar below a page that finds text in it.
class FindBar {
 public:
  explicit FindBar(Page& page);
  FindBar(const FindBar&) = delete;
  ~FindBar();

  void Show();
  void Hide();

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
  GtkWidget *bar_, *entry_, *match_case_, *result_;
};
