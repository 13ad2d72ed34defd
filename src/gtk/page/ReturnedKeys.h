#pragma once

#include <webkit2/webkit2.h>

#include <deque>

#include "gtk/base/Callbacks.h"

// A key that a page has no use for comes back from its process to the window, a while later, and the view
// counts on being given it once more: it passes over the next key that it is given. Where the keyboard has
// gone elsewhere meanwhile, the key would act there, and the view would swallow the next one that the user
// types into the page. So what comes back goes to its own view.
class ReturnedKeys {
 public:
  explicit ReturnedKeys(Callbacks::Runner runner);
  ReturnedKeys(const ReturnedKeys&) = delete;
  ~ReturnedKeys();

  // A view of the page's has come; it has gone.
  void Attach(WebKitWebView* view);
  void Detach();

  // The view has been given this key before: the user has pressed nothing.
  bool IsBack() const { return is_back_; }

 private:
  struct Key {
    GdkEventType Type;
    guint16 Code;  // of the keyboard
    guint32 Time;  // milliseconds of the screen's clock
    bool operator==(const Key&) const = default;
  };

  using Keys = std::deque<Key>;

  Keys::iterator Find(const GdkEvent& event);
  void Give(const GdkEvent& event);
  bool Take(GdkEvent& event);

  WebKitWebView* view_ = nullptr;
  Keys given_;            // to the view, and not back yet
  bool is_back_ = false;  // the key that the view is being given
  unsigned snooper_;
  Callbacks calls_;
};
