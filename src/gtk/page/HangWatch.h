#pragma once

#include <webkit2/webkit2.h>

#include <functional>
#include <utility>

#include "gtk/base/Callbacks.h"
#include "gtk/base/GObjects.h"

class Page;

// Whether the process behind a page answers. It is asked whenever the user does something with the page; one
// that doesn't answer for some seconds is offered to be ended, in a bar; and what the user wants of the page
// meanwhile never waits for it.
class HangWatch {
 public:
  // The bar is made in `place`, a box.
  HangWatch(Page& page, GtkWidget* place);
  HangWatch(const HangWatch&) = delete;

  // A view of the page's has come; it has gone.
  void Attach(WebKitWebView* view);
  void Detach();

  // The user does something with the page.
  void Watch();
  // The user wants another page: `load` asks the engine for it, and again where the process that has the page
  // on show had to be ended first.
  void Leave(std::function<void()> load);
  // The process has taken the wish, or asks something about it.
  void Taken() { calls_.Cancel(std::exchange(leaving_, 0)); }
  // The user wants the page to stop: it is ended where it doesn't answer soon.
  void Stop();

  // It hasn't answered for some seconds.
  bool Hung() const;
  // True for the end of a process that was ended to make way: nothing is to be told of it.
  bool MakesWay() const { return makes_way_; }

 private:
  void Ask();
  void Answered();
  void Offer();
  void TakeBack();
  void End();
  void MakeWay();
  void EndPage();

  Page& page_;
  Owned<GtkWidget> place_, bar_;
  WebKitWebView* view_ = nullptr;
  bool asked_ = false;  // and not answered yet
  bool hung_ = false;
  bool makes_way_ = false;
  // What runs until the process counts as hung, has to take a wish, has to stop.
  unsigned silent_ = 0, leaving_ = 0, stopping_ = 0;
  Callbacks calls_;
};
