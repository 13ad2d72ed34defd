#include "gtk/start/Request.h"

namespace {

// Three texts, a zero behind each.
constexpr const char *Tab = "tab", *Window = "window";

bool Take(const std::string& bytes, size_t& at, std::string& text) {
  const size_t end = bytes.find('\0', at);
  if (end == bytes.npos) return false;
  text = bytes.substr(at, end - at);
  at = end + 1;
  return true;
}

}  // namespace

std::string Request::Packed() const {
  const std::string zero(1, '\0');
  return (what == What::Tab ? Tab : Window) + zero + address + zero + startup_id + zero;
}

std::optional<Request> Request::Unpack(const std::string& bytes) {
  Request request;
  std::string what;
  size_t at = 0;
  if (!Take(bytes, at, what) || !Take(bytes, at, request.address) || !Take(bytes, at, request.startup_id) ||
      at != bytes.size() || (what != Tab && what != Window))
    return std::nullopt;
  request.what = what == Tab ? What::Tab : What::PlainWindow;
  return request;
}
