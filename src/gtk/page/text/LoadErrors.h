#pragma once

#include <gio/gio.h>

#include <string>

#include "gtk/page/text/ErrorPage.h"

// Why a load has come to nothing, in words that need no engine.
struct LoadFault {
  enum class Kind {
    Interrupted,  // no page to be shown: the user stopped the load, or it became a download
    NoSuchHost,
    NotSecure,  // no secure connection could be made
    Refused,    // by the host
    TimedOut,
    Connection,   // any other failure on the way
    UnknownKind,  // of address
    File,         // of this machine, missing or not to be read
    Other
  };

  Kind kind = Kind::Other;
  std::string message;  // of the engine or the system, for those kinds that tell it
};

// What went wrong with a load, told as a page.
namespace LoadErrors {

// There was no talking to the host by a secure connection, though it may answer an open one.
bool MayAnswerOpenly(const LoadFault& fault);

ErrorPage Failed(const std::string& uri, const LoadFault& fault);
ErrorPage BadCertificate(const std::string& uri, GTlsCertificateFlags flags);
ErrorPage WorksOffline(const std::string& uri);
// The engine doesn't ask for it at all.
ErrorPage Refused(const std::string& uri);
ErrorPage NoAddress(const std::string& typed);
ErrorPage Died(const std::string& uri, bool out_of_memory);
ErrorPage EmptyAnswer(const std::string& uri, unsigned status);
// Something of the program's own failed while it dealt with the page.
ErrorPage Broken(const std::string& uri, const std::string& what);

}  // namespace LoadErrors
