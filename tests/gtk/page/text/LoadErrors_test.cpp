#include "gtk/page/text/LoadErrors.h"

#include <gtest/gtest.h>

namespace {

using Kind = LoadFault::Kind;

TEST(LoadErrors, NameTheSiteTheReasonAndAWayOn) {
  struct Case {
    Kind kind;
    const char *uri, *title, *part;
  };
  const std::string message = "the reason of the system";
  for (const Case& one : {
           Case{Kind::NoSuchHost, "https://bank.test/x", "The site can't be found", "bank.test"},
           Case{Kind::NotSecure, "https://bank.test/", "No secure connection", "the reason of the system"},
           Case{Kind::Refused, "http://bank.test:99/", "The site refuses the connection", "bank.test"},
           Case{Kind::Unreachable, "http://bank.test/", "The site can't be reached", "bank.test"},
           Case{Kind::TimedOut, "http://bank.test/", "The site doesn't answer", "bank.test"},
           Case{Kind::Connection, "http://bank.test/", "The connection failed", "the reason of the system"},
           Case{Kind::UnknownKind, "gopher:x", "This kind of address can't be opened", "gopher:"},
           Case{Kind::File, "file:///a%20b", "The file can't be opened", "/a b"},
           Case{Kind::Other, "http://bank.test/", "The page can't be shown", "the reason of the system"},
       }) {
    const ErrorPage page = LoadErrors::Failed(one.uri, {one.kind, message});
    EXPECT_EQ(page.title, one.title);
    EXPECT_EQ(page.address, one.uri);
    EXPECT_NE(page.reason.find(one.part), std::string::npos) << page.reason;
    EXPECT_FALSE(page.advice.empty());
    ASSERT_EQ(page.actions.size(), 1u);
    EXPECT_EQ(page.actions[0].address, one.uri);
  }
}

TEST(LoadErrors, TakeAddressesThatAreHardlyAny) {
  for (const char* uri : {"", "file:", "file:/", "file://", "view-source:file:", "x"})
    for (const Kind kind : {Kind::File, Kind::NoSuchHost, Kind::UnknownKind, Kind::Other})
      EXPECT_FALSE(LoadErrors::Failed(uri, {kind, ""}).Html().empty());
}

TEST(LoadErrors, ACertificatesPageNamesTheGravestProblemAndOffersBothWays) {
  const auto flags =
      static_cast<GTlsCertificateFlags>(G_TLS_CERTIFICATE_UNKNOWN_CA | G_TLS_CERTIFICATE_REVOKED);
  using enum LoadErrors::Standing;
  ErrorPage page = LoadErrors::BadCertificate("https://bank.test/a", flags, Unknown);
  EXPECT_NE(page.reason.find("has been revoked"), std::string::npos);
  ASSERT_EQ(page.actions.size(), 2u);
  EXPECT_EQ(page.actions[0].address, "https://bank.test/a");
  EXPECT_EQ(page.actions[1].kind, ErrorPage::Action::Kind::GoOn);
  page = LoadErrors::BadCertificate("https://bank.test/a", flags, Accepted);
  EXPECT_NE(page.title.find("changed"), std::string::npos);
  EXPECT_EQ(page.actions.size(), 2u);
  page = LoadErrors::BadCertificate("https://bank.test/a", flags, Promised);
  ASSERT_EQ(page.actions.size(), 1u);
  EXPECT_EQ(page.actions[0].kind, ErrorPage::Action::Kind::Open);
}

}  // namespace
