#include "gtk/page/text/LoadErrors.h"

#include "gtk/page/text/Address.h"

namespace {

struct Reason {
  std::string title, reason, advice;
};

constexpr const char* CheckAddress = "Look whether the address is spelt right.";
constexpr const char* CheckConnection =
    "Look whether this computer is connected to the network, and try again in a moment.";

Reason ForFile(const std::string& uri) {
  const std::string prefix = "file://";
  const std::string path = Address::Unescape(uri.starts_with(prefix) ? uri.substr(prefix.size()) : uri);
  return {"The file can't be opened", "There is no such file or folder, or you may not read it: " + path,
          "Look whether the path is spelt right and the file hasn't been moved."};
}

Reason ForFault(const std::string& uri, const LoadFault& fault) {
  using Kind = LoadFault::Kind;
  const std::string host = Address::Host(uri);
  switch (fault.kind) {
    case Kind::File:
      return ForFile(uri);
    case Kind::UnknownKind:
      return {"This kind of address can't be opened",
              "Nothing here knows how to open addresses that begin with \"" + Address::Scheme(uri) + ":\".",
              CheckAddress};
    case Kind::NoSuchHost:
      return {"The site can't be found", "No computer of the name \"" + host + "\" could be found.",
              std::string(CheckAddress) + " " + CheckConnection};
    case Kind::NotSecure:
      return {
          "No secure connection",
          "A secure connection to " + host + " could not be made: " + fault.message + ".",
          "The site may be set up wrongly, or something between you and the site changes the connection."};
    case Kind::Refused:
      return {"The site refuses the connection", host + " is there, but nothing answers at this address.",
              std::string(CheckAddress) + " The site may be down: try again in a moment."};
    case Kind::Unreachable:
      return {"The site can't be reached", "No way leads to " + host + " from here.", CheckConnection};
    case Kind::TimedOut:
      return {"The site doesn't answer", host + " took too long to answer.", CheckConnection};
    case Kind::Connection:
      return {"The connection failed", "The connection to " + host + " failed: " + fault.message + ".",
              CheckConnection};
    case Kind::Plain:
    case Kind::Interrupted:
    case Kind::Other:
      break;
  }
  return {"The page can't be shown", "Loading it failed: " + fault.message + ".",
          std::string(CheckAddress) + " " + CheckConnection};
}

std::string Problem(GTlsCertificateFlags flags, const std::string& host) {
  if (flags & G_TLS_CERTIFICATE_REVOKED) return "Its certificate has been revoked.";
  if (flags & G_TLS_CERTIFICATE_BAD_IDENTITY)
    return "Its certificate belongs to another site than " + host + ".";
  if (flags & G_TLS_CERTIFICATE_EXPIRED) return "Its certificate has expired.";
  if (flags & G_TLS_CERTIFICATE_NOT_ACTIVATED)
    return "Its certificate isn't valid yet. Is the clock of this computer right?";
  if (flags & G_TLS_CERTIFICATE_UNKNOWN_CA)
    return "Its certificate comes from someone whom this computer doesn't know.";
  if (flags & G_TLS_CERTIFICATE_INSECURE) return "Its certificate uses a method that is no longer safe.";
  return "Its certificate can't be checked.";
}

}  // namespace

namespace LoadErrors {

bool NothingSpeaks(const LoadFault& fault) {
  using Kind = LoadFault::Kind;
  return fault.kind == Kind::Refused || fault.kind == Kind::Unreachable || fault.kind == Kind::TimedOut;
}

bool WasSpokenWith(const LoadFault& fault) {
  using Kind = LoadFault::Kind;
  return fault.kind == Kind::NotSecure || fault.kind == Kind::Connection || fault.kind == Kind::Other;
}

ErrorPage Failed(const std::string& uri, const LoadFault& fault) {
  const Reason why = ForFault(uri, fault);
  return {why.title, uri, why.reason, why.advice, {{"Try again", uri}}};
}

ErrorPage BadCertificate(const std::string& uri, GTlsCertificateFlags flags, Standing standing) {
  const std::string host = Address::Host(uri);
  const std::string problem =
      host + " can't prove that it is the site it claims to be. " + Problem(flags, host);
  const ErrorPage::Action again = {"Try again", uri};
  const ErrorPage::Action go_on = {"Go on in spite of it, for this session", uri,
                                   ErrorPage::Action::Kind::GoOn};
  switch (standing) {
    case Standing::Promised:
      return {"This connection isn't safe",
              uri,
              problem + " The site has promised earlier that it can always be reached safely.",
              "Someone may be listening in, or the site is set up wrongly. So there is no way to go on: try "
              "again later, or from another network.",
              {again}};
    case Standing::Accepted:
      return {
          "This site's certificate has changed",
          uri,
          problem + " It isn't the certificate either that you went on with before.",
          "The site may have got a new one, or someone has come between you and it since then. Go on only "
          "if you know why, and give no passwords to it.",
          {again, go_on}};
    case Standing::Unknown:
      break;
  }
  return {
      "This connection isn't safe",
      uri,
      problem,
      "Someone may be listening in, or the site is set up wrongly. Go on only if you know why, and give no "
      "passwords to it.",
      {again, go_on}};
}

ErrorPage Plain(const std::string& uri) {
  const std::string plain = "http:";
  const bool itself = uri.starts_with(plain);
  const ErrorPage::Action without = {"Open it without encryption", uri, ErrorPage::Action::Kind::Openly};
  const ErrorPage::Action with =
      itself ? ErrorPage::Action{"Try with encryption", "https:" + uri.substr(plain.size())}
             : ErrorPage::Action{"Try again", uri};
  return {"This page comes without encryption",
          uri,
          (itself ? Address::Host(uri) + " is to be asked without encryption"
                  : std::string("The way to this page leads over one without encryption")) +
              ": anyone in between can read and change what comes and goes.",
          "You have chosen in Internet Options to be asked before each such page.",
          {with, without}};
}

ErrorPage WorksOffline(const std::string& uri) {
  return {"The program works offline",
          uri,
          "While it works offline, no page is loaded from the network. Pages on this computer can be opened.",
          "Choose \"Work Online\" in the File menu, and try again.",
          {{"Try again", uri}}};
}

ErrorPage NoProxy(const std::string& uri, const std::string& typed) {
  const std::string named = typed.empty() ? "None is named." : "\"" + typed + "\" is none.";
  return {"The proxy can't be used",
          uri,
          "Pages are to come by a proxy that was named by hand, and it can't be understood: " + named +
              " Nothing is asked without it.",
          "Choose \"Internet Options\" in the View menu, mend the proxy's address or choose another kind of "
          "connection, and try again.",
          {{"Try again", uri}}};
}

ErrorPage NoAddress(const std::string& typed, const std::string& search) {
  ErrorPage error{"This is no address",
                  typed,
                  "No page can have this address.",
                  "Type the address of a page, such as example.org, or a path that begins with \"/\".",
                  {}};
  if (!search.empty()) error.actions.push_back({"Search for it", search});
  return error;
}

ErrorPage Refused(const std::string& uri) {
  return {
      "This address isn't asked", uri, "Its port belongs to another service than the web.", CheckAddress, {}};
}

ErrorPage Died(const std::string& uri, ProcessEnd end) {
  if (end == ProcessEnd::ByUser)
    return {"This page was ended",
            uri,
            "It didn't answer any more.",
            "The rest of the program isn't affected. What was typed into the page is lost.",
            {{"Load it again", uri}}};
  return {"This page has come to a sudden end",
          uri,
          end == ProcessEnd::OutOfMemory ? "It used more memory than it may."
                                         : "The process that showed it has failed.",
          "The rest of the program isn't affected. What was typed into the page is lost.",
          {{"Load it again", uri}}};
}

ErrorPage EmptyAnswer(const std::string& uri, unsigned status) {
  const std::string host = Address::Host(uri);
  return {"The site has no page for this address",
          uri,
          host + " answered with the error " + std::to_string(status) + " and no page.",
          status == 404 || status == 410 ? "Look whether the address is spelt right."
                                         : "The site has a problem of its own: try again in a moment.",
          {{"Try again", uri}}};
}

ErrorPage Broken(const std::string& uri, const std::string& what) {
  return {"Something failed while this page was shown",
          uri,
          "The program could not go on with the page: " + what + ".",
          "The rest of the program isn't affected. What was typed into the page is lost.",
          {{"Load it again", uri}}};
}

}  // namespace LoadErrors
