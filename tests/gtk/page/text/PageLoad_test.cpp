#include "gtk/page/text/PageLoad.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace {

using Kind = LoadFault::Kind;

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

// The engine's part is played by hand: what it would tell is told by the test.
class Loads : public testing::Test, protected LoadView, protected LoadListener {
 protected:
  bool Gone() const override { return gone; }
  std::string EngineAddress() const override { return address; }
  std::string EngineTitle() const override { return title; }
  bool EngineLoads() const override { return engine_loads; }
  bool WorksOffline() const override { return offline; }
  std::optional<std::string> BadProxy() const override { return bad_proxy; }
  bool PromisedHttps(const std::string&) const override { return promised; }
  bool AsksBeforePlain() const override { return asks_before_plain; }
  void LetPlainThrough(bool through) override { plain_through = through; }
  void LoadAddress(const std::string& uri) override { asked.push_back(uri); }
  void LoadHtml(const std::string& html, const std::string& uri) override {
    shown = html;
    asked.push_back("own " + uri);
  }
  bool Isolate() override { return std::exchange(opened, false); }
  void Reload() override { asked.push_back("again"); }
  void StopLoading() override {}
  void Trust(GTlsCertificate*, const std::string& host) override { asked.push_back("trust " + host); }
  bool Trusts(const std::string& host) const override {
    return std::find(asked.begin(), asked.end(), "trust " + host) != asked.end();
  }
  std::shared_ptr<void> ReadSource(const std::string& uri, bool, std::function<void(const std::string&)> done,
                                   std::function<void(const ErrorPage&)> failed) override {
    asked.push_back("source " + uri);
    source_done = std::move(done);
    source_failed = std::move(failed);
    auto reading = std::make_shared<int>();
    source = reading;
    return reading;
  }

  void LoadWanted() override {}
  void LoadBegan() override {
    ++began;
    if (within_began) within_began();
  }
  void LoadCommitted() override {}
  void LoadArrived() override {}
  void LoadEnded() override { ++ended; }
  void Progressed(long progress, long) override { last_progress = progress; }
  void LoadStatusChanged(const std::string& text) override { status = text; }
  void ProcessDied() override { ++died; }

  void Want(const std::string& uri, const std::string& fallback = {}) { load.Start({uri, fallback, true}); }
  // The engine's reports of a load that comes through.
  void Begin(const std::string& uri) {
    address = uri;
    load.OnStarted();
  }
  void Commit() { load.OnCommitted(); }
  void Complete(const std::string& uri, const std::string& of_title = "Title") {
    Begin(uri);
    Commit();
    title = of_title;
    load.OnFinished();
  }
  // Of one that doesn't.
  void Fail(Kind kind) {
    load.OnFailed(address, false, {kind, "why"});
    load.OnFinished();
  }
  void ExpectCounts(int all) {
    EXPECT_EQ(began, all);
    EXPECT_EQ(ended, all);
    EXPECT_FALSE(load.Busy());
    EXPECT_EQ(status, "");
  }
  static void Pump(const std::function<bool()>& until) {
    while (!until()) g_main_context_iteration(nullptr, TRUE);
  }
  void PumpUntilEnded(int all) {
    Pump([&] { return ended == all; });
  }

  // The address behind a button of the own page on show.
  std::string Button(size_t n) const {
    size_t at = 0;
    for (size_t i = 0; i <= n; ++i) at = shown.find("href=\"", at + 1);
    return shown.substr(at + 6, shown.find('"', at + 6) - at - 6);
  }

  bool opened = false;  // by another page
  bool gone = false, engine_loads = false, offline = false, promised = false;
  bool asks_before_plain = false, plain_through = false;
  std::optional<std::string> bad_proxy;
  std::string address, title, shown, status;
  std::vector<std::string> asked;
  std::function<void(const std::string&)> source_done;
  std::function<void(const ErrorPage&)> source_failed;
  std::weak_ptr<void> source;
  std::function<void()> within_began;
  int began = 0, ended = 0, died = 0;
  long last_progress = 0;
  PageLoad load{*this, *this, [](const std::function<void()>& handler) { handler(); }};
};

TEST_F(Loads, EachBeginsOnceAndEndsOnce) {
  Want("http://a.test/");
  EXPECT_TRUE(load.Busy());
  EXPECT_EQ(began, 0);
  Begin("http://a.test/");
  EXPECT_EQ(status, "Opening http://a.test/");
  load.OnProgress(0);
  EXPECT_EQ(last_progress, 1) << "none is shown as no progress";
  load.OnProgress(0.5);
  EXPECT_EQ(last_progress, 5000);
  Commit();
  title = "A";
  load.OnFinished();
  EXPECT_EQ(last_progress, -1);
  ExpectCounts(1);
  EXPECT_EQ(load.Address(), "http://a.test/");
}

TEST_F(Loads, ATitleIsWaitedForButNotLong) {
  Complete("http://a.test/", "");
  EXPECT_TRUE(load.Busy());
  load.OnTitle();
  ExpectCounts(1);
  Complete("http://b.test/", "");
  PumpUntilEnded(2);
  ExpectCounts(2);
  // The next load ends the wait, and its own end isn't taken for the first one's.
  Complete("http://c.test/", "");
  Begin("http://d.test/");
  EXPECT_EQ(began, 4);
  EXPECT_EQ(ended, 3);
  Commit();
  title = "D";
  load.OnFinished();
  ExpectCounts(4);
}

TEST_F(Loads, AnUnusedViewIsBlankWithoutAskingTheEngine) {
  Want("about:blank");
  EXPECT_TRUE(asked.empty());
  PumpUntilEnded(1);
  ExpectCounts(1);
  EXPECT_EQ(load.Address(), "about:blank");
  // A tab that goes on elsewhere at once reports only that.
  load.Reset();
  Want("about:blank");
  Want("http://a.test/");
  Complete("http://a.test/");
  ExpectCounts(2);
  EXPECT_EQ(load.Address(), "http://a.test/");
  // So does one that the program sends on within the report of the blank page's beginning.
  load.Reset();
  address = {};
  Want("about:blank");
  within_began = [&] {
    within_began = nullptr;
    Want("http://b.test/");
  };
  Pump([&] { return began == 3; });
  Complete("http://b.test/");
  ExpectCounts(3);
}

TEST_F(Loads, OneThatIsGivenUpForAnotherIsOneLoad) {
  Want("http://a.test/");
  Begin("http://a.test/");
  Want("http://b.test/");
  // The engine reports the end of the first before the second begins.
  load.OnFailed("http://a.test/", false, {Kind::Interrupted, ""});
  load.OnFinished();
  EXPECT_TRUE(load.Busy());
  Complete("http://b.test/");
  ExpectCounts(1);
}

TEST_F(Loads, AWordWithoutAHostIsSearchedFor) {
  load.Start({"https://word/", "http://word/", true, "https://find.test/?word"});
  Begin("https://word/");
  Fail(Kind::NoSuchHost);
  EXPECT_EQ(asked.back(), "https://find.test/?word");
  EXPECT_EQ(load.Address(), "https://find.test/?word");
  Complete("https://find.test/?word");
  ExpectCounts(1);
  // The search itself may fail, once.
  load.Start({"https://word/", "http://word/", true, "https://find.test/?word"});
  Begin("https://word/");
  Fail(Kind::NoSuchHost);
  Fail(Kind::NoSuchHost);
  EXPECT_EQ(asked.back().substr(0, 4), "own ");
}

TEST_F(Loads, AFailedOneEndsWithItsErrorPage) {
  Want("https://a.test/");
  Begin("https://a.test/");
  Fail(Kind::NoSuchHost);
  EXPECT_EQ(asked.back(), "own https://a.test/");
  EXPECT_NE(shown.find("can&#39;t be found"), std::string::npos);
  EXPECT_TRUE(load.Busy());
  Complete("https://a.test/");
  ExpectCounts(1);
  EXPECT_TRUE(load.ShowsOwnPage());
  // Once more means the address, not the error page.
  load.Again();
  EXPECT_EQ(asked.back(), "https://a.test/");
  Complete("https://a.test/");
  EXPECT_FALSE(load.ShowsOwnPage());
  load.Again();
  EXPECT_EQ(asked.back(), "again");
}

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

TEST_F(Loads, WhatCantBeAskedForIsToldAtOnce) {
  load.Start({"no address", {}, false});
  EXPECT_EQ(asked.back(), "own no address");
  Want("http://a.test:25/");
  EXPECT_EQ(asked.back(), "own http://a.test:25/");
  EXPECT_EQ(load.Address(), "http://a.test:25/");
}

TEST_F(Loads, ATurnedDownRequestLeavesTheOldPagesAddress) {
  Complete("http://a.test/");
  Want("mailto:someone");
  address = "mailto:someone";
  load.Denied("mailto:somebody");
  EXPECT_TRUE(load.Busy()) << "another's request isn't what the user waits for";
  load.Denied("mailto:someone");
  EXPECT_FALSE(load.Busy());
  EXPECT_EQ(load.Address(), "http://a.test/");
  EXPECT_EQ(ended, 2) << "a wish that came to nothing ends too";
  // Not one that the page itself made while nothing was wanted.
  load.Denied("mailto:someone");
  EXPECT_EQ(ended, 2);
  // An answer that is turned down in favour of a page of our own.
  Want("http://b.test/");
  Begin("http://b.test/");
  load.ShowErrorInstead(LoadErrors::EmptyAnswer("http://b.test/", 404));
  Fail(Kind::Interrupted);
  EXPECT_EQ(asked.back(), "own http://b.test/");
  Complete("http://b.test/");
  EXPECT_EQ(began, 2);
  EXPECT_EQ(ended, 3);
}

TEST_F(Loads, WhoeverStaysHasThePageOnShow) {
  Complete("http://a.test/first");
  // As far as the page itself goes, without a load.
  address = "http://a.test/moved";
  load.OnAddress();
  // The history's: the engine takes it for its own from the wish on.
  address = "https://b.test/";
  load.OnAddress();
  EXPECT_EQ(load.DocumentAddress(), "http://a.test/moved");
  EXPECT_FALSE(load.AddressHasCome());
  load.Stay();
  EXPECT_EQ(load.Address(), "http://a.test/moved");
  EXPECT_TRUE(load.AddressHasCome());
  // What a load that comes to nothing was about isn't on show either.
  Begin("https://b.test/nothing");
  address = "http://a.test/moved";
  Fail(Kind::Interrupted);
  EXPECT_EQ(load.DocumentAddress(), "http://a.test/moved");
  EXPECT_EQ(load.Address(), "http://a.test/moved");
}

TEST_F(Loads, ARedirectedLoadGoesNoOtherWay) {
  Want("https://a.test/", "http://a.test/");
  Begin("https://a.test/");
  address = "https://b.test/";
  load.OnRedirected();
  Fail(Kind::Connection);
  EXPECT_EQ(asked.back(), "own https://b.test/");
  load.Start({"https://word/", "http://word/", true, "https://search.test/?q=word"});
  Begin("https://word/");
  address = "https://gone.test/";
  load.OnRedirected();
  Fail(Kind::NoSuchHost);
  EXPECT_EQ(asked.back(), "own https://gone.test/");
}

TEST_F(Loads, AnotherPlaceOfThePageIsNoLoad) {
  Complete("http://a.test/x");
  Want("http://a.test/x#there");
  EXPECT_EQ(asked.back(), "http://a.test/x#there");
  ExpectCounts(1);
}

TEST_F(Loads, StopEndsWhatTheEngineDoesntKnowOf) {
  Want("http://a.test/");
  load.Stop();
  EXPECT_FALSE(load.Busy());
  EXPECT_EQ(ended, 1);
  Want("http://a.test/");
  Begin("http://a.test/");
  engine_loads = true;
  load.Stop();
  EXPECT_EQ(ended, 1) << "the engine reports that one";
  Fail(Kind::Interrupted);
  EXPECT_EQ(ended, 2);
  // A page that only its title is waited for.
  engine_loads = false;
  Complete("http://b.test/", "");
  load.Stop();
  EXPECT_EQ(ended, 3);
  while (g_main_context_iteration(nullptr, FALSE)) {
  }
  EXPECT_EQ(ended, 3);
}

TEST_F(Loads, ASourceIsShownUnderItsAddress) {
  Want("view-source:http://a.test/");
  EXPECT_EQ(asked.back(), "source http://a.test/");
  source_done("<html>");
  EXPECT_TRUE(source.expired());
  Complete("view-source:http://a.test/");
  ExpectCounts(1);
  EXPECT_EQ(load.Address(), "view-source:http://a.test/");
  Want("view-source:file:");
  source_failed(LoadErrors::Failed("file:", {Kind::File, ""}));
  Complete("file:");
  ExpectCounts(2);
  // One that is left for another page tells nothing any more.
  Want("view-source:http://b.test/");
  Want("http://c.test/");
  EXPECT_TRUE(source.expired());
}

TEST_F(Loads, ADeadProcessIsToldOnceAndNotStartedAgainAndAgain) {
  Complete("http://a.test/", "");
  EXPECT_TRUE(load.Busy()) << "for the title";
  load.OnDied(ProcessEnd::Failed);
  EXPECT_EQ(asked.back(), "own http://a.test/");
  Complete("http://a.test/");
  ExpectCounts(1);
  EXPECT_TRUE(load.ShowsOwnPage());
  load.OnDied(ProcessEnd::Failed);
  EXPECT_EQ(died, 1);
  EXPECT_EQ(asked.size(), 1u);
  EXPECT_FALSE(load.Busy());
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

TEST_F(Loads, AFaultInAHandlerBecomesAnErrorPageAndNothingOfItIsLeft) {
  Want("https://a.test/", "http://a.test/");
  Begin("https://a.test/");
  load.Break("the hover text");
  EXPECT_EQ(asked.back(), "own https://a.test/");
  EXPECT_NE(shown.find("the hover text"), std::string::npos);
  // What the engine still tells of the page that failed.
  Fail(Kind::Interrupted);
  EXPECT_TRUE(load.Busy());
  Complete("https://a.test/");
  ExpectCounts(1);
  Want("http://b.test/");
  Complete("http://b.test/");
  ExpectCounts(2);
  EXPECT_FALSE(load.ShowsOwnPage());
  gone = true;
  const size_t count = asked.size();
  load.Break("anything");
  EXPECT_EQ(asked.size(), count);
}

}  // namespace
