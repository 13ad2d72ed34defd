#pragma once

#include <gdk/gdk.h>

#include <functional>
#include <memory>
#include <vector>

// Waiting for something that ends by an event, in the middle of a handler. The pump is served meanwhile:
// pages load and windows are drawn. What the user does is held, and comes in order once the wait is over.
class Waiting {
 public:
  // Until it is done, or has taken so long that it never will be.
  void For(const std::function<bool()>& done);
  bool InCourse() const { return done_ && !passing_; }
  // One pass of the pump over what is there, `most` events at most. What the user does comes behind it, but
  // for what a dialog is answered with that comes up meanwhile.
  void Pass(int most);

  // Whether the event is to come later.
  bool Holds(const GdkEvent* event);

 private:
  struct FreeEvent {
    void operator()(GdkEvent* event) const { gdk_event_free(event); }
  };

  void LetGo();

  const std::function<bool()>* done_ = nullptr;  // of the innermost wait
  bool passing_ = false;                         // it is a pass
  std::vector<std::unique_ptr<GdkEvent, FreeEvent>> held_;
};
