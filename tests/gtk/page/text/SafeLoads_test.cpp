// What a load does for the user's safety.

#include "gtk/page/text/LoadRig.h"

namespace {

// Of "a.test", by itself, for a hundred years.
constexpr const char* Certificate = R"(-----BEGIN CERTIFICATE-----
MIIBejCCAR+gAwIBAgIUL8cCdKW6kGUsvZnv1e/X+GdIc1EwCgYIKoZIzj0EAwIw
ETEPMA0GA1UEAwwGYS50ZXN0MCAXDTI2MTEyMzAzMDAyNloYDzIxMjYxMDMwMDMw
MDI2WjARMQ8wDQYDVQQDDAZhLnRlc3QwWTATBgcqhkjOPQIBBggqhkjOPQMBBwNC
AAQ88liJPHqoqcFWZEbWqId2llfZTBvZGOUJIx6X9jMELGUVIAETb6EKZF4hy2uM
6+bGLJDILx+p5JtUng6rI7F6o1MwUTAdBgNVHQ4EFgQU2HOCxYhC/+/m8ZM63tJT
ruZfPWYwHwYDVR0jBBgwFoAU2HOCxYhC/+/m8ZM63tJTruZfPWYwDwYDVR0TAQH/
BAUwAwEB/zAKBggqhkjOPQQDAgNJADBGAiEAgBbwFKnsTso+3qrj+NdEpjLm6Jkt
uxtbp59ZmrfHEKICIQCmgfjSwHWHyJnPEZsjPHUf0Tn71H7fiPeJd4hkuz5DJA==
-----END CERTIFICATE-----
)";

TEST_F(Loads, AHostWithoutSecurityIsAskedOpenlyOnce) {
  Want("https://a.test/", "http://a.test/");
  Begin("https://a.test/");
  Fail(Kind::Refused);
  EXPECT_EQ(asked.back(), "http://a.test/");
  Begin("http://a.test/");
  Fail(Kind::Refused);
  EXPECT_EQ(asked.back(), "own http://a.test/");
  Complete("http://a.test/");
  ExpectCounts(1);
}

TEST_F(Loads, WhoeverSpeaksIsAskedOpenlyOnlyByTheUsersPress) {
  for (const Kind kind : {Kind::NotSecure, Kind::Connection, Kind::Other}) {
    Want("https://a.test/", "http://a.test/");
    Begin("https://a.test/");
    Fail(kind);
    EXPECT_EQ(asked.back(), "own https://a.test/");
    EXPECT_NE(shown.find("without encryption"), std::string::npos);
    Complete("https://a.test/");
    load.Press(Button(1));
    EXPECT_EQ(asked.back(), "http://a.test/");
  }
  for (const Kind kind : {Kind::NoSuchHost, Kind::UnknownKind}) {
    Want("https://a.test/", "http://a.test/");
    Begin("https://a.test/");
    Fail(kind);
    EXPECT_EQ(asked.back(), "own https://a.test/");
    EXPECT_EQ(shown.find("without encryption"), std::string::npos);
  }
  // Not at all where that would break a promise, nor where a whole address was wanted.
  for (const Kind kind : {Kind::NotSecure, Kind::Refused, Kind::Unreachable, Kind::TimedOut}) {
    promised = !promised;
    Want("https://a.test/", promised ? "http://a.test/" : "");
    Begin("https://a.test/");
    Fail(kind);
    EXPECT_EQ(asked.back(), "own https://a.test/");
    EXPECT_EQ(shown.find("without encryption"), std::string::npos);
  }
}

TEST_F(Loads, APageWithoutEncryptionIsAskedAboutWhereTheUserWantsThat) {
  asks_before_plain = true;
  for (const char* uri : {"http://a.test/", "view-source:http://s.test/"}) {
    Want(uri);
    EXPECT_EQ(asked.back(), std::string("own ") + uri);
    Complete(uri);
    load.Press(Button(1));
    EXPECT_EQ(asked.back(), uri[0] == 'v' ? "source http://s.test/" : uri);
    EXPECT_TRUE(plain_through);
    if (uri[0] == 'v') source_done("");
    Complete(uri);
    EXPECT_FALSE(plain_through) << "for that page alone";
  }
  // One that the page itself leads to, and one that is fallen back to.
  Begin("http://b.test/");
  Fail(Kind::Plain);
  EXPECT_EQ(asked.back(), "own http://b.test/");
  Complete("http://b.test/");
  Want("https://a.test/", "http://a.test/");
  Begin("https://a.test/");
  Fail(Kind::Refused);
  EXPECT_EQ(asked.back(), "own http://a.test/");
  Complete("http://a.test/");
  load.Press(Button(0));
  EXPECT_EQ(asked.back(), "https://a.test/");
  EXPECT_FALSE(plain_through);
  // Given up, it isn't let through any more.
  Want("http://a.test/");
  Complete("http://a.test/");
  load.Press(Button(1));
  EXPECT_TRUE(plain_through);
  Want("https://c.test/");
  EXPECT_FALSE(plain_through);
}

TEST_F(Loads, AProxyThatIsNoneIsNamed) {
  bad_proxy = "http:nonsense";
  Want("https://a.test/", "http://a.test/");
  Begin("https://a.test/");
  Fail(Kind::Refused);
  EXPECT_EQ(asked.back(), "own https://a.test/");
  EXPECT_NE(shown.find("http:nonsense"), std::string::npos);
}

TEST_F(Loads, OfflineNoNetworkIsAsked) {
  offline = true;
  Want("https://a.test/", "http://a.test/");
  Begin("https://a.test/");
  Fail(Kind::Connection);
  EXPECT_NE(shown.find("works offline"), std::string::npos);
  Want("file:///missing");
  Begin("file:///missing");
  Fail(Kind::File);
  EXPECT_NE(shown.find("file can&#39;t be opened"), std::string::npos);
}

TEST_F(Loads, ABadCertificateIsTakenOnlyFromItsOwnPage) {
  const Owned<GTlsCertificate> certificate(g_tls_certificate_new_from_pem(Certificate, -1, nullptr));
  if (!certificate) GTEST_SKIP() << "GLib has no TLS on this machine";
  Want("https://a.test/x");
  Begin("https://a.test/x");
  load.OnBadCertificate("https://a.test/x", certificate.get(), G_TLS_CERTIFICATE_EXPIRED);
  load.OnFinished();
  const std::string early = Button(1);
  load.Press(early);
  EXPECT_EQ(asked.back(), "own https://a.test/x") << "pressed before it was on show";
  Complete("https://a.test/x");
  for (const std::string& guess :
       {std::string("marlowick-press:"), std::string("marlowick-press:/1"), early + "1"})
    load.Press(guess);
  EXPECT_EQ(asked.back(), "own https://a.test/x");
  load.Press(Button(1));
  EXPECT_EQ(asked[asked.size() - 2], "trust a.test");
  EXPECT_EQ(asked.back(), "https://a.test/x");
  const size_t so_far = asked.size();
  Complete("https://a.test/x");
  load.Press(early);
  EXPECT_EQ(asked.size(), so_far) << "used twice";
}

TEST_F(Loads, AnOwnPageIsCutOffFromTheOpener) {
  opened = true;
  Want("http://a.test/");
  Begin("http://a.test/");
  load.OnFailed(address, false, {Kind::Refused, "why"});
  // The old view doesn't tell its end any more.
  Complete("http://a.test/");
  ExpectCounts(1);
  EXPECT_TRUE(load.ShowsOwnPage());
}

TEST_F(Loads, OnlyTheUsersWishIsShownBeforeItHasCome) {
  EXPECT_TRUE(load.AddressHasCome());
  Want("http://bank.test/");
  EXPECT_EQ(load.Address(), "http://bank.test/");
  EXPECT_FALSE(load.AddressHasCome());
  Begin("http://bank.test/");
  EXPECT_EQ(load.Address(), "http://bank.test/");
  EXPECT_FALSE(load.AddressHasCome());
  Commit();
  EXPECT_TRUE(load.AddressHasCome());
  load.OnFinished();
  load.OnTitle();
  Complete("http://bank.test/");
  Begin("http://evil.test/");
  EXPECT_EQ(load.Address(), "http://bank.test/") << "what the page itself wishes for";
  EXPECT_TRUE(load.AddressHasCome());
  Commit();
  EXPECT_EQ(load.Address(), "http://evil.test/");
}

}  // namespace
