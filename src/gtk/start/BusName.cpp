#include "gtk/start/BusName.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace {

constexpr const char* Path = "/org/marlowick/Marlowick";
// Until a request is offered again that came at a bad moment, in ms.
constexpr unsigned Pause = 50;

constexpr const char* Interface =
    "<node><interface name='org.freedesktop.Application'>"
    "<method name='Activate'><arg type='a{sv}' direction='in'/></method>"
    "<method name='Open'><arg type='as' direction='in'/><arg type='a{sv}' direction='in'/></method>"
    "<method name='ActivateAction'><arg type='s' direction='in'/><arg type='av' direction='in'/>"
    "<arg type='a{sv}' direction='in'/></method>"
    "</interface></node>";

struct FreeNode {
  void operator()(GDBusNodeInfo* node) const { g_dbus_node_info_unref(node); }
};

struct FreeVariant {
  void operator()(GVariant* value) const { g_variant_unref(value); }
};
using Variant = std::unique_ptr<GVariant, FreeVariant>;

std::string StartupId(GVariant* platform_data) {
  const char* id = nullptr;
  return g_variant_lookup(platform_data, "desktop-startup-id", "&s", &id) ? TextOf(id) : "";
}

}  // namespace

std::string BusName::Usual() { return "org.marlowick.Marlowick"; }

std::string BusName::Of(const std::filesystem::path& folder) {
  std::error_code unknown;
  const std::string real = std::filesystem::weakly_canonical(folder, unknown).string();
  const std::string sum = TakeText(g_compute_checksum_for_string(G_CHECKSUM_SHA256, real.c_str(), -1));
  return Usual() + ".folder_" + sum.substr(0, 16);
}

BusName::BusName(std::string name) : name_(std::move(name)) {
  const auto with_bus = +[](GDBusConnection* bus, const char*, gpointer self) {
    auto* own = static_cast<BusName*>(self);
    own->callbacks_.Run([own, bus] { own->Export(bus); });
  };
  const auto lost = +[](GDBusConnection* bus, const char*, gpointer self) {
    static_cast<BusName*>(self)->has_bus_ = bus != nullptr;
  };
  owner_ = g_bus_own_name(G_BUS_TYPE_SESSION, name_.c_str(), G_BUS_NAME_OWNER_FLAGS_NONE, with_bus, nullptr,
                          lost, this, nullptr);
}

BusName::~BusName() {
  if (owner_) g_bus_unown_name(owner_);
  if (object_) g_dbus_connection_unregister_object(bus_.get(), object_);
}

void BusName::Export(GDBusConnection* bus) {
  const std::unique_ptr<GDBusNodeInfo, FreeNode> node(g_dbus_node_info_new_for_xml(Interface, nullptr));
  static constexpr GDBusInterfaceVTable table = {&BusName::Call, nullptr, nullptr, {}};
  bus_ = Share(bus);
  object_ = g_dbus_connection_register_object(bus, Path, node->interfaces[0], &table, this, nullptr, nullptr);
}

void BusName::Call(GDBusConnection*, const char*, const char*, const char*, const char* method,
                   GVariant* arguments, GDBusMethodInvocation* invocation, gpointer self) {
  auto* own = static_cast<BusName*>(self);
  own->callbacks_.Run([&] { own->Heard(method, arguments); });
  g_dbus_method_invocation_return_value(invocation, nullptr);
}

void BusName::Heard(const std::string& method, GVariant* arguments) {
  const auto last = g_variant_n_children(arguments) - 1;
  const Variant platform_data(g_variant_get_child_value(arguments, last));
  Request request;
  request.startup_id = StartupId(platform_data.get());
  if (method == "Open") {
    const Variant addresses(g_variant_get_child_value(arguments, 0));
    for (gsize i = 0; i < g_variant_n_children(addresses.get()); ++i) {
      const char* address = nullptr;
      g_variant_get_child(addresses.get(), i, "&s", &address);
      request.address = address;
      waiting_.push_back(request);
    }
  } else {
    const char* action = "";
    if (method == "ActivateAction") {
      g_variant_get_child(arguments, 0, "&s", &action);
      if (std::string(action) != "new-window") return;
      request.what = Request::What::PlainWindow;
    }
    waiting_.push_back(request);
  }
  Serve();
}

void BusName::Open(Door::Receive receive, const std::vector<Request>& kept) {
  waiting_.insert(waiting_.begin(), kept.begin(), kept.end());
  receive_ = std::move(receive);
  Serve();
}

std::vector<Request> BusName::TakeAll() { return std::exchange(waiting_, {}); }

void BusName::Serve() {
  if (!receive_) return;
  // The handler may come back here.
  for (const Request& request : std::exchange(waiting_, {}))
    if (receive_(request) != Reception::Taken) waiting_.push_back(request);
  if (!waiting_.empty()) callbacks_.After(Pause, [this] { Serve(); });
}

void BusName::GiveUp() {
  if (owner_) g_bus_unown_name(std::exchange(owner_, 0));
  // What the bus sent before it took the name away lies in the pump.
  while (g_main_context_iteration(nullptr, FALSE)) {
  }
}
