#pragma once

#include <gio/gio.h>
#include <webkit2/webkit2.h>

#include <string>

#include "gtk/page/text/ErrorPage.h"

// What went wrong with a load, told as a page.
namespace LoadErrors {

// No page to be shown: the user stopped the load, or it became a download.
bool IsInterruption(const GError* error);
// There was no talking to the host by a secure connection, though it may answer an open one.
bool IsWithoutSecurity(const GError* error);

ErrorPage Failed(const std::string& uri, const GError* error);
ErrorPage BadCertificate(const std::string& uri, GTlsCertificateFlags flags,
                         const std::string& proceed_address);
ErrorPage WorksOffline(const std::string& uri);
// The engine doesn't ask for it at all.
ErrorPage Refused(const std::string& uri);
ErrorPage NoAddress(const std::string& typed);
ErrorPage Died(const std::string& uri, WebKitWebProcessTerminationReason reason);
ErrorPage EmptyAnswer(const std::string& uri, unsigned status);

}  // namespace LoadErrors
