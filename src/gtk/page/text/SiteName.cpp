#include "gtk/page/text/SiteName.h"

#include <libsoup/soup.h>

#include "gtk/base/GObjects.h"
#include "gtk/page/text/Address.h"

std::string SiteName::Of(const std::string& uri) {
  const std::string scheme = Address::Scheme(uri);
  if (scheme == "file") return "file://";
  const std::string host = Address::Host(uri);
  if (host.empty() || (scheme != "http" && scheme != "https")) return {};
  GError* error = nullptr;
  const char* domain =
      g_hostname_is_ip_address(host.c_str()) ? nullptr : soup_tld_get_base_domain(host.c_str(), &error);
  const OwnedError none(error);
  return scheme + "://" + (domain ? std::string(domain) : host);
}
