#include "gtk/page/LoadFaults.h"

#include <webkit2/webkit2.h>

#include <array>

#include "gtk/page/text/Address.h"

namespace {

using Kind = LoadFault::Kind;

constexpr int AnyCode = -1;
// By a rule of the content filter; the library has no name for it.
constexpr int KeptBack = 104;

struct Meaning {
  GQuark domain;
  int code;
  Kind kind;
};

// The first that fits counts.
const std::array<Meaning, 15>& Meanings() {
  static const std::array<Meaning, 15> meanings = {{
      {WEBKIT_NETWORK_ERROR, WEBKIT_NETWORK_ERROR_CANCELLED, Kind::Interrupted},
      {WEBKIT_POLICY_ERROR, WEBKIT_POLICY_ERROR_FRAME_LOAD_INTERRUPTED_BY_POLICY_CHANGE, Kind::Interrupted},
      {G_IO_ERROR, G_IO_ERROR_CANCELLED, Kind::Interrupted},
      {WEBKIT_PLUGIN_ERROR, AnyCode, Kind::Interrupted},
      {WEBKIT_NETWORK_ERROR, WEBKIT_NETWORK_ERROR_UNKNOWN_PROTOCOL, Kind::UnknownKind},
      {WEBKIT_POLICY_ERROR, KeptBack, Kind::Plain},
      {WEBKIT_POLICY_ERROR, AnyCode, Kind::UnknownKind},
      {G_RESOLVER_ERROR, AnyCode, Kind::NoSuchHost},
      {G_IO_ERROR, G_IO_ERROR_HOST_NOT_FOUND, Kind::NoSuchHost},
      {G_TLS_ERROR, AnyCode, Kind::NotSecure},
      {G_IO_ERROR, G_IO_ERROR_CONNECTION_REFUSED, Kind::Refused},
      {G_IO_ERROR, G_IO_ERROR_HOST_UNREACHABLE, Kind::Unreachable},
      {G_IO_ERROR, G_IO_ERROR_NETWORK_UNREACHABLE, Kind::Unreachable},
      {G_IO_ERROR, G_IO_ERROR_TIMED_OUT, Kind::TimedOut},
      {G_IO_ERROR, AnyCode, Kind::Connection},
  }};
  return meanings;
}

Kind KindOf(const GError* error) {
  for (const Meaning& one : Meanings())
    if (error->domain == one.domain && (one.code == AnyCode || error->code == one.code)) return one.kind;
  return Kind::Other;
}

}  // namespace

LoadFault FaultOf(const std::string& uri, const GError* error) {
  const Kind kind = KindOf(error);
  // All that can be wrong with a file is the same to who wanted it.
  const bool file = kind != Kind::Interrupted && Address::Scheme(uri) == "file";
  return {file ? Kind::File : kind, error->message};
}
