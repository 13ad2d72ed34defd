#include "gtk/page/text/HostName.h"

#include <glib.h>
#include <gtest/gtest.h>

namespace {

std::string Ascii(const std::string& host) {
  char* text = g_hostname_to_ascii(host.c_str());
  const std::string result = text ? text : "";
  g_free(text);
  return result;
}

TEST(HostName, NamesOfOneScriptAreShownInIt) {
  for (const char* host : {"bücher.test", "пример.test", "παράδειγμα.test", "例え.test", "ラーメン.test",
                           "한국.test", "việtnam.test", "उदाहरण.test", "mañana.пример", "דוגמה.test",
                           "www.דוגמה.co.test", "مثال.test", "例子.中国", "łódź.test"})
    EXPECT_EQ(HostName::Shown("https://" + Ascii(host) + ":8080/x?y#z"),
              std::string("https://") + host + ":8080/x?y#z");
}

TEST(HostName, WhatMayBeMistakenIsShownInAscii) {
  for (const char* host : {
           "pаypal.test",         // a Cyrillic letter among Latin ones
           "аррӏе.test",          // nothing but look-alikes
           "οτιν.test",           // the same in Greek
           "bank例.test",         // two scripts
           "googıe.test",         // a letter without its point
           "exaɱple.test",        // one that no language writes
           "ノlatin.test",        // a stroke of Japanese
           "aー.test",            // its dash
           "ᎪᏢᏢ.test",            // a script that isn't in use
           "e\u0323\u0308x.test"  // loose accents
       }) {
    const std::string ascii = Ascii(host);
    ASSERT_NE(ascii.find("xn--"), std::string::npos) << host;
    EXPECT_EQ(HostName::Shown("https://" + ascii + "/"), "https://" + ascii + "/") << host;
    EXPECT_EQ(HostName::Shown(std::string("https://") + host + "/"), "https://" + ascii + "/")
        << "as it was typed";
  }
}

TEST(HostName, NoPartLeavesItsPlace) {
  // Between a name from the right and what would be drawn as its own, nothing tells them apart.
  EXPECT_EQ(HostName::Shown("https://" + Ascii("דוגמה.קום") + "/1"), "https://דוגמה." + Ascii("קום") + "/1");
  EXPECT_EQ(HostName::Shown("https://" + Ascii("דוגמה.1a.test")), "https://" + Ascii("דוגמה.1a.test"));
  EXPECT_EQ(HostName::Shown("https://" + Ascii("דוגמה.אחר.test")), "https://" + Ascii("דוגמה") + ".אחר.test");
}

TEST(HostName, AnythingElseStays) {
  for (const char* address :
       {"", "https://a.test/xn--x", "https://xn--/", "https://xn--a-/", "https://xn--ab\u00e4.test/\xff",
        "file:///xn--a", "about:blank", "https://[::1]:80/", "no address ä", "https:", "mailto:ä@ö"})
    EXPECT_EQ(HostName::Shown(address).substr(0, 6), std::string(address).substr(0, 6)) << address;
  EXPECT_EQ(HostName::Shown("https://a.test/\u05d0"), "https://a.test/\u05d0");
  EXPECT_EQ(HostName::Shown("view-source:http://" + Ascii("bücher.test")), "view-source:http://bücher.test");
}

}  // namespace
