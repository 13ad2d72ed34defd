#pragma once

#include <gio/gio.h>

#include <functional>
#include <string>

#include "gtk/base/Callbacks.h"
#include "gtk/base/GObjects.h"
#include "gtk/start/FolderLock.h"
#include "gtk/start/Request.h"

// Where other starts hand their requests over to the program that has the folder. Who comes before it is
// open waits.
class Door {
 public:
  using Receive = std::function<Reception(const Request&)>;

  // The lock is taken. A folder that can't have a socket has no door either: other starts wait in vain, and
  // say so.
  explicit Door(const FolderLock& lock);
  Door(const Door&) = delete;
  ~Door();

  // From now on requests come to `receive`, each until it is taken.
  void Open(Receive receive);

 private:
  void Welcome(GSocketConnection* connection);
  void Hear(const Owned<GSocketConnection>& connection, const Request& request);

  Owned<GSocket> socket_;
  Owned<GSocketService> service_;
  Receive receive_;
  Callbacks callbacks_;
};
