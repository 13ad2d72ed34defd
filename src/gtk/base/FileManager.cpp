#include "gtk/base/FileManager.h"

#include <utility>

#include "gtk/base/GObjects.h"

namespace {

constexpr int Patience = 5000;  // milliseconds that a file manager has to answer

std::string UriOf(const std::string& path) {
  return TakeText(g_filename_to_uri(path.c_str(), nullptr, nullptr));
}

bool IsThere(const std::string& path, const FileManager::Failed& failed) {
  if (g_file_test(path.c_str(), G_FILE_TEST_EXISTS)) return true;
  failed("\"" + path + "\" isn't there any more.");
  return false;
}

void Launch(const std::string& path, const FileManager::Failed& failed) {
  GError* error = nullptr;
  if (g_app_info_launch_default_for_uri(UriOf(path).c_str(), nullptr, &error)) return;
  const OwnedError reason(error);
  failed("\"" + path + "\" can't be opened: " + reason->message);
}

}  // namespace

namespace FileManager {

void Open(const std::string& path, const Failed& failed) {
  if (IsThere(path, failed)) Launch(path, failed);
}

void Show(const std::string& path, Callbacks& callbacks, Failed failed) {
  if (!IsThere(path, failed)) return;
  const auto folder = [path, failed = std::move(failed)] { Launch(path.substr(0, path.rfind('/')), failed); };
  const Owned<GDBusConnection> bus(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
  if (!bus) return folder();
  const std::string uri = UriOf(path);
  const char* uris[] = {uri.c_str(), nullptr};
  g_dbus_connection_call(bus.get(), "org.freedesktop.FileManager1", "/org/freedesktop/FileManager1",
                         "org.freedesktop.FileManager1", "ShowItems", g_variant_new("(^ass)", uris, ""),
                         nullptr, G_DBUS_CALL_FLAGS_NONE, Patience, nullptr, Callbacks::Ended,
                         callbacks.Ending([folder](GObject* connection, GAsyncResult* result) {
                           GVariant* answer =
                               g_dbus_connection_call_finish(G_DBUS_CONNECTION(connection), result, nullptr);
                           if (!answer) return folder();
                           g_variant_unref(answer);
                         }));
}

}  // namespace FileManager
