#pragma once

#include <string>
#include <string_view>

// The proxies that the network can be asked through.
namespace Proxy {

// "host:port" or a full address, as the full address; empty where no proxy can have it.
std::string FromTyped(std::string_view typed);

}  // namespace Proxy
