#pragma once

#include <gtk/gtk.h>
#include <webkit2/webkit2.h>

class Page;

// What a page's scripts ask the user, above the page. The page waits for the answer, the rest of the program
// doesn't; and a page that asks again and again can be told to stop.
class ScriptDialogs {
 public:
  explicit ScriptDialogs(Page& page) : page_(page) {}
  ScriptDialogs(const ScriptDialogs&) = delete;
  ~ScriptDialogs() { Dismiss(); }

  void Attach(WebKitWebView* view);
  // The user goes elsewhere: takes back the question that is up, as if refused, and the page asks no more.
  void Dismiss();
  // The questions of the next page count anew.
  void Forget();

 private:
  void Ask(WebKitScriptDialog* dialog);
  void Answer(bool accepted);
  GtkWidget* MakeBar(WebKitScriptDialogType type);

  static gboolean OnDialog(WebKitWebView*, WebKitScriptDialog* dialog, gpointer self);
  static void OnResponse(GtkInfoBar*, int response, gpointer self);
  static void OnActivate(GtkEntry*, gpointer self);

  Page& page_;
  WebKitScriptDialog* dialog_ = nullptr;  // the question that is up
  GtkWidget *bar_ = nullptr, *first_button_ = nullptr, *entry_ = nullptr, *enough_ = nullptr;
  int asked_ = 0;
  bool silenced_ = false;
};
