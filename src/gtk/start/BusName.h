#pragma once

#include <gio/gio.h>

#include <filesystem>
#include <string>
#include <vector>

#include "gtk/base/Callbacks.h"
#include "gtk/base/GObjects.h"
#include "gtk/start/Door.h"
#include "gtk/start/Request.h"

// The program on the session's bus, as `org.freedesktop.Application`: so the desktop starts it by its entry,
// and asks the one that runs for more. Which process has a folder isn't decided here, since another session
// has another bus, and some have none: see FolderLock.
class BusName {
 public:
  // The name for the folder that is nobody's choice; `folder` has one of its own.
  static std::string Usual();
  static std::string Of(const std::filesystem::path& folder);

  // Where another process has the name, this one gets it after that. Requests are kept until there is
  // somebody to receive them. Without a bus nothing happens.
  explicit BusName(std::string name);
  BusName(const BusName&) = delete;
  ~BusName();

  // From now on each request comes to `receive` until it is taken; first those that others have kept.
  void Open(Door::Receive receive, const std::vector<Request>& kept);
  // For who has nobody to receive: what has come by now.
  std::vector<Request> TakeAll();
  bool HasBus() const { return has_bus_; }
  // Gives the name up; what was asked before has come then.
  void GiveUp();

 private:
  static void Call(GDBusConnection* bus, const char* sender, const char* path, const char* interface,
                   const char* method, GVariant* arguments, GDBusMethodInvocation* invocation, gpointer self);
  void Export(GDBusConnection* bus);
  void Heard(const std::string& method, GVariant* arguments);
  void Serve();

  const std::string name_;
  Owned<GDBusConnection> bus_;
  guint owner_ = 0, object_ = 0;
  bool has_bus_ = true;  // until it turns out that there is none
  std::vector<Request> waiting_;
  Door::Receive receive_;
  Callbacks callbacks_;
};
