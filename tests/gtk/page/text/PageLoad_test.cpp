#include "gtk/page/text/LoadRig.h"

namespace {

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
