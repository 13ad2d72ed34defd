#pragma once

#include <gio/gio.h>

#include <functional>
#include <string>

#include "gtk/base/Callbacks.h"
#include "gtk/base/GObjects.h"

// Hears of the end of the user's session: by the signals that a shut-down and a terminal send, by the
// desktop's session manager, which tells at a log-out while the screen is still there, and by the screen's
// own end.
class SessionEnd {
 public:
  // `ended` ends the process, at once or soon; it may be called more than once.
  SessionEnd(std::function<void()> ended, Callbacks::Runner runner);
  SessionEnd(const SessionEnd&) = delete;
  ~SessionEnd();

  // Tells once more when the pump is idle, for whoever couldn't end at that moment.
  void Later() { callbacks_.Later(ended_); }
  // From now on the signals end the process by themselves.
  static void LetSignalsKill();

 private:
  void HearOfTheScreen();
  void Register(GDBusConnection* bus);
  void Subscribe(const char* client);
  void Told(const std::string& signal);

  const std::function<void()> ended_;
  Owned<GDBusConnection> bus_;
  std::string client_;  // the program's object at the session manager
  guint subscription_ = 0;
  bool screen_gone_ = false;
  Callbacks callbacks_;
};
