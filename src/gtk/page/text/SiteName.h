#pragma once

#include <string>

// What belongs together on the web.
namespace SiteName {

// Scheme and registrable domain: "https://example.co.uk" for every host below it, whatever the port. An IP
// address or a name without a domain stays whole, all local files are "file://", and an address without a
// host is nobody's site: empty.
std::string Of(const std::string& uri);

}  // namespace SiteName
