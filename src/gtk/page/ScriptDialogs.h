#pragma once

#include <gtk/gtk.h>
#include <webkit2/webkit2.h>

#include <functional>
#include <memory>
#include <string>

#include "gtk/base/Callbacks.h"
#include "gtk/base/GObjects.h"

// What a page's scripts ask the user, in one bar above the page. The page waits for the answer, the rest of
// the program doesn't; and a page that asks again and again can be told to stop.
class ScriptDialogs {
 public:
  enum class Outcome { Answered, StaysOnPage };
  // The user has answered. Nothing of this object is used after it.
  using Answered = std::function<void(Outcome outcome)>;

  // The bar is made in `place`, a box, when the first question comes.
  ScriptDialogs(GtkWidget* place, Answered answered, Callbacks::Runner runner);
  ScriptDialogs(const ScriptDialogs&) = delete;
  ~ScriptDialogs() { Dismiss(); }

  // Puts a question; one that is up is taken back. `asker` names the site, empty for none.
  void Ask(WebKitScriptDialog* dialog, const std::string& asker);
  bool Up() const { return dialog_ != nullptr; }
  // Answers no, as the user. False: there is no question.
  bool Refuse();
  // The user goes elsewhere: takes back the question that is up, as if refused, and the page asks no more.
  void Dismiss();
  // A question is up, and the page waits.
  bool Asking() const { return dialog_ != nullptr; }
  // The questions of the next page count anew.
  void Forget();

 private:
  struct Close {
    void operator()(WebKitScriptDialog* dialog) const {
      webkit_script_dialog_close(dialog);
      webkit_script_dialog_unref(dialog);
    }
  };

  void MakeBar();
  void Fill(const std::string& asker);
  void TakeKeyboard();
  void Respond(bool accepted);
  Outcome Answer(bool accepted);

  Answered answered_;
  std::unique_ptr<WebKitScriptDialog, Close> dialog_;  // the question that is up
  // All of them kept past their end: the window around them may go first.
  Owned<GtkWidget> place_, bar_, heading_, message_, scroller_, entry_, enough_, yes_, no_;
  int asked_ = 0;
  bool silenced_ = false;
  Callbacks callbacks_;
};
