#pragma once

#include <gtk/gtk.h>
#include <webkit2/webkit2.h>

#include <set>
#include <string>
#include <vector>

#include "gtk/base/Callbacks.h"
#include "gtk/base/GObjects.h"

// A server that wants a name and a password before it answers: asked in a bar above the page, which names the
// server as the engine knows it. What the server says of itself stands apart from that.
class LogIn {
 public:
  // The bar is made in `place`, a box.
  LogIn(GtkWidget* place, Callbacks::Runner runner);
  LogIn(const LogIn&) = delete;
  ~LogIn() { Dismiss(); }

  // False: it is none that a name and a password answer. `page_site` is the page's that wants something of
  // another server; empty where the server's own page does. Equal requests share one answer, of others the
  // newest stands, and what was refused isn't asked again before the next page.
  bool Ask(WebKitAuthenticationRequest* request, const std::string& page_site);
  bool Asking() const { return bar_ != nullptr; }
  // Answers no, as the user: the server's page for that comes. False: there is no question.
  bool Refuse();
  // The user goes elsewhere.
  void Dismiss();
  // The page is left: the next one may ask anew.
  void Forget();

 private:
  void MakeBar(WebKitAuthenticationRequest* request, const std::string& page_site);
  void TakeKeyboard();
  void LogOn();
  std::vector<Owned<WebKitAuthenticationRequest>> End();

  Owned<GtkWidget> place_, bar_, name_, password_, remember_;
  std::string asked_;  // what all that wait ask for
  std::vector<Owned<WebKitAuthenticationRequest>> waiting_;
  std::set<std::string> refused_;
  Callbacks callbacks_;
};
