#include "gtk/page/text/Search.h"

#include <gtest/gtest.h>

namespace {

const Search::Engines Delivered = {"https://find.test/?q=%s&x=1",
                                   "w https://wiki.test/%s\nd  http://dict.test/?%s"};

Address::Target Typed(std::string_view text) { return Search::FromTyped(text, Delivered); }

TEST(Search, WordsThatAreNoAddressAreLookedFor) {
  const std::pair<const char*, const char*> cases[] = {
      {"foo bar", "foo%20bar"},
      {"  c++ ", "c%2B%2B"},
      {"na\u00efve id\u00e9e", "na%C3%AFve%20id%C3%A9e"},
      {"a b.org/x", "a%20b.org%2Fx"},
      {"what is 100% & more?", "what%20is%20100%25%20%26%20more%3F"},
      {"? example.org", "example.org"},
      {"?x", "x"},
      {"note: buy milk", "note%3A%20buy%20milk"},
      {"x y z", "x%20y%20z"}};
  for (const auto& [typed, words] : cases) {
    EXPECT_EQ(Typed(typed).uri, "https://find.test/?q=" + std::string(words) + "&x=1") << typed;
    EXPECT_TRUE(Typed(typed).valid) << typed;
  }
  EXPECT_EQ(Typed("W  the weather").uri, "https://wiki.test/the%20weather");
  EXPECT_EQ(Typed("d wort").uri, "http://dict.test/?wort");
}

TEST(Search, AddressesStayAddresses) {
  for (const char* typed : {"example.org", "example.org/a b", "http://example.org/a b", "/tmp/a b",
                            "localhost", "localhost:80", "10.0.0.1", "about:blank", "data:text/html,<b> hi",
                            "file:///tmp/x y", "mailto:me@example.org", "", "nas:8080", "[::1]"}) {
    const Address::Target plain = Address::FromTyped(typed), target = Typed(typed);
    EXPECT_EQ(target.uri, plain.uri);
    EXPECT_EQ(target.fallback, plain.fallback) << typed;
    EXPECT_EQ(target.search, "") << typed;
    EXPECT_TRUE(target.valid) << typed;
  }
}

TEST(Search, ANameMayBeAHostOrAWordAndWhatIsNeitherIsOffered) {
  EXPECT_EQ(Typed("weather").uri, "https://weather/");
  EXPECT_EQ(Typed("weather").search, "https://find.test/?q=weather&x=1");
  EXPECT_EQ(Typed("w").search, "https://find.test/?q=w&x=1");
  for (const char* typed : {"foo..bar", "javascript:alert(1)", "10.0.0.1:port", "javascript: x y"}) {
    EXPECT_FALSE(Typed(typed).valid) << typed;
    EXPECT_FALSE(Typed(typed).search.empty()) << typed;
  }
  // Without an address that searches, words are no address.
  EXPECT_FALSE(Search::FromTyped("foo bar", {}).valid);
  EXPECT_EQ(Search::FromTyped("foo bar", {}).search, "");
  EXPECT_EQ(Search::FromTyped("foo", {"https://find.test/", ""}).search, "");
}

TEST(Search, TellsWhatCantBeSearchedBy) {
  std::string wrong;
  EXPECT_TRUE(Search::Fit(Delivered, wrong));
  EXPECT_TRUE(Search::Fit({}, wrong));
  for (const auto& [engines, part] :
       {std::pair<Search::Engines, std::string>{{"https://find.test/", ""}, "https://find.test/"},
        {{"file:///%s", ""}, "file:///%s"},
        {{"", "w https://wiki.test/%s d"}, "d"},
        {{"", "w wiki"}, "wiki"}}) {
    EXPECT_FALSE(Search::Fit(engines, wrong));
    EXPECT_EQ(wrong, part);
  }
}

}  // namespace
