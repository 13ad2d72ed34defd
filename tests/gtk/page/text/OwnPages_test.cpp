#include <gtest/gtest.h>

#include "fakes/FakeDesktop.h"
#include "gtk/page/text/ErrorPage.h"
#include "gtk/page/text/PageNames.h"
#include "gtk/page/text/SourcePage.h"

namespace {

size_t Count(const std::string& text, std::string_view what) {
  size_t count = 0;
  for (size_t at = text.find(what); at != text.npos; at = text.find(what, at + what.size())) ++count;
  return count;
}

// The text that a reader sees: the page without its tags and its head.
std::string Seen(const std::string& html) {
  std::string text;
  bool in_tag = false;
  for (const char c : html.substr(html.find("<body>"))) {
    if (c == '<') in_tag = true;
    if (!in_tag) text += c;
    if (c == '>') in_tag = false;
  }
  return text;
}

TEST(ErrorPage, EscapesEverythingThatCameFromOutside) {
  const std::string evil = "http://x/\"><script>alert('1')</script>&\xff";
  const ErrorPage page{evil, evil, evil, evil, {{evil, evil}}};
  const std::string html = page.Html();
  EXPECT_EQ(html.find("<script"), html.npos);
  EXPECT_EQ(Count(html, "&lt;script&gt;alert(&#39;1&#39;)&lt;/script&gt;&amp;\uFFFD"), 7u);
}

TEST(SourcePage, NumbersAndEscapesEachLine) {
  const std::string html = SourcePage("one\r\n<b>&amp; \"two\"\n\nfour", "http://x/?a&b");
  EXPECT_EQ(Count(html, "<li>"), 4u);
  EXPECT_NE(html.find("<title>Source of http://x/?a&amp;b</title>"), html.npos);
  EXPECT_NE(Seen(html).find("&lt;b&gt;&amp;amp; &quot;two&quot;"), std::string::npos);
  EXPECT_EQ(html.find('\r'), html.npos);
  EXPECT_EQ(Count(SourcePage("", ""), "<li>"), 1u);
}

TEST(SourcePage, ColoursAcrossLinesAndNeverLosesText) {
  // Each is cut short or misleading somewhere.
  for (const char* source : {"<p title=\"a > b\">x</p>", "<!-- a\n<b> -->c", "<!-- open", "<p title='open",
                             "<", "a < b", "<script>if (a<b) x=\"</p>\";\n</script><i>",
                             "<STYLE>a>b{}</STYLE>", "<!doctype html>", "<?xml?>", "<a href=x'y>", "</"}) {
    std::string text;
    for (const char c : std::string(source)) {
      if (c == '\n')
        text += '\n';
      else if (c == '<')
        text += "&lt;";
      else if (c == '>')
        text += "&gt;";
      else if (c == '"')
        text += "&quot;";
      else if (c == '\'')
        text += "&#39;";
      else
        text += c;
    }
    const std::string html = SourcePage(source, "");
    EXPECT_EQ(Seen(html), "\n" + text + "\n") << source;
    EXPECT_EQ(Count(html, "<span"), Count(html, "</span>")) << source;
  }
  const std::string html = SourcePage("<p>\n<!-- a\nb -->", "");
  EXPECT_NE(
      html.find(
          "<span class=\"c\">&lt;!-- a</span></code></li>\n<li><code><span class=\"c\">b --&gt;</span>"),
      html.npos);
}

TEST(SourcePage, TakesTheEncodingThatThePageNames) {
  EXPECT_EQ(NamedEncoding("<meta charset=\"ISO-8859-15\">"), "iso-8859-15");
  EXPECT_EQ(NamedEncoding("<meta content='text/html; charset=utf-8'>"), "utf-8");
  EXPECT_EQ(NamedEncoding(std::string(2000, ' ') + "charset=koi8-r"), "");
  EXPECT_EQ(NamedEncoding("charset="), "");
  EXPECT_EQ(NamedEncoding(""), "");
}

TEST(PageNames, AreNamesThatEveryFileSystemTakes) {
  EXPECT_EQ(PageNames::FromTitle("News: a/b \\ \"c\" <d> | what?"), "News a b c d what");
  EXPECT_EQ(PageNames::FromTitle("  .hidden. "), "hidden");
  EXPECT_EQ(PageNames::FromTitle("../../etc/passwd"), "etc passwd");
  EXPECT_EQ(PageNames::FromTitle("\n\t"), "page");
  EXPECT_EQ(PageNames::FromTitle(""), "page");
  EXPECT_EQ(PageNames::FromTitle(std::string(500, 'x')).size(), 120u);
  std::string wide;
  for (int i = 0; i < 300; ++i) wide += "\U0001F600";
  const std::string cut = PageNames::FromTitle(wide);
  EXPECT_LE(cut.size(), 230u);
  EXPECT_EQ(cut.size() % 4, 0u);
}

TEST(PageNames, NeverOverwrite) {
  const TemporaryFolder folder;
  EXPECT_EQ(PageNames::Unused(folder.path, "a.zip"), "a.zip");
  for (const char* name : {"a.zip", "a (1).zip", "b.tar.gz", "plain", ".rc"}) folder.Write(name, "");
  EXPECT_EQ(PageNames::Unused(folder.path, "a.zip"), "a (2).zip");
  EXPECT_EQ(PageNames::Unused(folder.path, "b.tar.gz"), "b (1).tar.gz");
  EXPECT_EQ(PageNames::Unused(folder.path, "plain"), "plain (1)");
  EXPECT_EQ(PageNames::Unused(folder.path, ".rc"), ".rc (1)");
}

}  // namespace
