#include <gio/gio.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "core/Program.h"
#include "core/frmMain.h"
#include "fakes/FakeDesktop.h"
#include "tabs/frmPopup.h"

namespace {

class Popups : public testing::Test {
 protected:
  Popups() {
    program.Start();
    desktop.Gate.Run([this] { tabs().AddTab("http://behind.test/"); });
    tabs().CurrentTab = 0;
  }

  struct Outcome {
    Browser* taker = nullptr;
    bool cancel = false;
  };

  // A page's request, as the element raises it.
  using Handler = std::function<void(const std::string&, Browser*&, bool&)>;
  Outcome RequestOf(const Handler& handler, const std::string& asker = "page.test") {
    Outcome outcome;
    desktop.Gate.Run([&] { handler(asker, outcome.taker, outcome.cancel); });
    return outcome;
  }
  Outcome Request() { return RequestOf(tabs().WebBrowser1(1).NewWindow2); }
  Outcome Request(int16_t policy) {
    program.preferences.PopupPolicy = policy;
    return Request();
  }
  TabSet& tabs() { return program.main().tabs; }

  const ProgramFolder folder;
  FakeDesktop desktop{folder.path};
  Program program{desktop};
};

TEST_F(Popups, FollowThePolicy) {
  EXPECT_TRUE(Request(0).cancel);
  for (const int16_t own_window : {1, 7, -1}) {
    const Outcome outcome = Request(own_window);
    EXPECT_FALSE(outcome.cancel);
    EXPECT_EQ(outcome.taker, nullptr);
  }
  EXPECT_EQ(tabs().WebBrowser1.UBound(), 1);
  const Outcome taken = Request(2);
  EXPECT_FALSE(taken.cancel);
  EXPECT_EQ(tabs().CurrentTab, 2);
  EXPECT_EQ(taken.taker, &tabs().WebBrowser1(2));
  EXPECT_TRUE(std::count(desktop.log.begin(), desktop.log.end(), "Navigate about:blank"));
}

TEST(PopupQuestion, SaysWhatItAsks) {
  GBytes* look = g_resources_lookup_data("/marlowick/ui/frmPopup.ui", G_RESOURCE_LOOKUP_FLAGS_NONE, nullptr);
  ASSERT_TRUE(look);
  std::string text(static_cast<const char*>(g_bytes_get_data(look, nullptr)), g_bytes_get_size(look));
  g_bytes_unref(look);
  std::erase(text, '_');  // marks the keys of the buttons
  for (const char* said : {"Open Popup?", "This website is attempting to open a pop-up window.",
                           "How do you wish to open it?", "In new tab", "In new browser", "Do not open"})
    EXPECT_NE(text.find(">" + std::string(said) + "<"), text.npos) << said;
}

TEST_F(Popups, AskAndDoAsAnswered) {
  desktop.acts = {Press("CancelButton"), Press("Command1"), Press("OKButton")};
  const Outcome browser = Request(3);
  EXPECT_FALSE(browser.cancel);
  EXPECT_EQ(browser.taker, nullptr);
  EXPECT_TRUE(Request(3).cancel);
  // A refusal holds for what comes on its heels, as in a page's loop, and isn't prolonged by it.
  desktop.Advance(600);
  EXPECT_TRUE(Request(3).cancel);
  EXPECT_EQ(tabs().WebBrowser1.UBound(), 1);
  desktop.Advance(500);
  const Outcome tab = Request(3);
  EXPECT_EQ(tab.taker, &tabs().WebBrowser1(2));
  EXPECT_FALSE(program.main().popups.popup.Loaded());
}

TEST_F(Popups, ARefusalSilencesOnlyThePageThatWasRefused) {
  program.preferences.PopupPolicy = 3;
  desktop.acts = {Press("Command1"), Press("CancelButton"), Press("Command1"), Press("CancelButton")};
  EXPECT_TRUE(Request().cancel);
  EXPECT_FALSE(RequestOf(tabs().WebBrowser1(0).NewWindow2).cancel);
  EXPECT_EQ(desktop.acts.size(), 2u);
  // Windows outside the program are asked about in the same way, and apart from every tab.
  EXPECT_TRUE(RequestOf(desktop.NewWindow2).cancel);
  EXPECT_FALSE(RequestOf(tabs().WebBrowser1(0).NewWindow2).cancel);
  EXPECT_TRUE(desktop.acts.empty());
  EXPECT_TRUE(RequestOf(desktop.NewWindow2).cancel);
}

TEST_F(Popups, FailSilentlyWithTheFlagsAsTheyStand) {
  desktop.during_events = [] { throw Failure("the pump"); };
  const Outcome outcome = Request(2);
  EXPECT_FALSE(outcome.cancel);
  EXPECT_EQ(outcome.taker, nullptr);
}

TEST_F(Popups, ShareOneQuestionAndItsAnswer) {
  Outcome second;
  desktop.acts = {[&](Dialog&) { second = Request(3); }, Press("Command1")};
  EXPECT_TRUE(Request(3).cancel);
  EXPECT_TRUE(second.cancel);
  EXPECT_TRUE(desktop.acts.empty());
  // A later request is a question of its own.
  desktop.Advance(1100);
  desktop.acts = {Press("CancelButton")};
  EXPECT_FALSE(Request(3).cancel);
}

TEST_F(Popups, NameTheSiteThatWantsThem) {
  program.preferences.PopupPolicy = 3;
  Outcome other;
  std::string named;
  desktop.acts = {[&](Dialog& question) {
    named = static_cast<frmPopup&>(question).Site.Caption;
    other = RequestOf(tabs().WebBrowser1(0).NewWindow2, "other.test");
    Press("OKButton")(question);
  }};
  EXPECT_NE(Request().taker, nullptr);
  EXPECT_EQ(named, "page.test");
  // The answer that one site was given is nobody else's.
  EXPECT_TRUE(other.cancel);
  EXPECT_EQ(other.taker, nullptr);
}

TEST_F(Popups, KeepAHundredRequestsWithinBounds) {
  // Each waits inside the one before it, until the most at once do; the user then answers once.
  int made = 0, taken = 0, refused = 0;
  const std::function<void(Dialog&)> flood = [&](Dialog& question) {
    if (made == 100) return Press("OKButton")(question);
    ++made;
    desktop.acts = {flood};
    const Outcome outcome = Request(3);
    taken += outcome.taker != nullptr;
    refused += outcome.cancel;
  };
  desktop.acts = {flood};
  EXPECT_NE(Request(3).taker, nullptr);
  EXPECT_EQ(taken, 7);
  EXPECT_EQ(refused, 93);
  EXPECT_EQ(tabs().WebBrowser1.UBound(), 9);

  // One that comes while the answer is acted on takes that answer, and the pages' turn comes to an end.
  desktop.acts = {Press("OKButton")};
  desktop.during_events = [&] { Request(3); };
  EXPECT_NE(Request(3).taker, nullptr);
  EXPECT_EQ(tabs().WebBrowser1.UBound(), 17);
}

}  // namespace
