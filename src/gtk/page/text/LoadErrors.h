#pragma once

#include <gio/gio.h>

#include <string>

#include "gtk/page/text/ErrorPage.h"

// How a page's process came to its end.
enum class ProcessEnd { Failed, OutOfMemory, ByUser };

// Why a load has come to nothing, in words that need no engine.
struct LoadFault {
  enum class Kind {
    Interrupted,  // no page to be shown: the user stopped the load, or it became a download
    NoSuchHost,
    NotSecure,    // no secure connection could be made
    Refused,      // by the host
    Unreachable,  // no way leads there
    TimedOut,
    Connection,   // any other failure on the way
    UnknownKind,  // of address
    Plain,        // kept back, since it would come without encryption
    File,         // of this machine, missing or not to be read
    Other
  };

  Kind kind = Kind::Other;
  std::string message;  // of the engine or the system, for those kinds that tell it
};

// What went wrong with a load, told as a page.
namespace LoadErrors {

// Nothing at all speaks at this address, so nobody stands in the way of a secure connection there.
bool NothingSpeaks(const LoadFault& fault);
// The host was spoken with, or somebody on the way, and no secure connection came of it.
bool WasSpokenWith(const LoadFault& fault);

ErrorPage Failed(const std::string& uri, const LoadFault& fault);
// What is known of a site whose certificate is refused.
enum class Standing {
  Unknown,
  Accepted,  // the user has accepted another certificate of this host
  Promised   // the site has promised to be there by https: only, so there is no way past a bad certificate
};
ErrorPage BadCertificate(const std::string& uri, GTlsCertificateFlags flags, Standing standing);
// It would come without encryption, or be led to over one that does, which the user wants to be asked about.
ErrorPage Plain(const std::string& uri);
ErrorPage WorksOffline(const std::string& uri);
// No connection is made, since the proxy that was named by hand, `typed`, is none.
ErrorPage NoProxy(const std::string& uri, const std::string& typed);
// The engine doesn't ask for it at all.
ErrorPage Refused(const std::string& uri);
// `search`: the address that looks for the text; may be empty.
ErrorPage NoAddress(const std::string& typed, const std::string& search = {});
ErrorPage Died(const std::string& uri, ProcessEnd end);
ErrorPage EmptyAnswer(const std::string& uri, unsigned status);
// Something of the program's own failed while it dealt with the page.
ErrorPage Broken(const std::string& uri, const std::string& what);

}  // namespace LoadErrors
