#include "gtk/page/text/HistoryBytes.h"

#include <glib.h>
#include <gtest/gtest.h>

namespace {

using enum KeptPage::Where;
constexpr const char* Type = "(qa(s(ssssasmayxx(ii)dm(sa(uaysxmxmds))av)u)mu)";

std::string BytesOf(const std::string& text) {
  GError* error = nullptr;
  GVariant* value = g_variant_parse(G_VARIANT_TYPE(Type), text.c_str(), nullptr, nullptr, &error);
  if (!value) throw std::runtime_error(error->message);
  std::string bytes(static_cast<const char*>(g_variant_get_data(value)), g_variant_get_size(value));
  g_variant_unref(value);
  return bytes;
}

std::string TextOf(const std::string& bytes) {
  GBytes* copy = g_bytes_new(bytes.data(), bytes.size());
  GVariant* value = g_variant_ref_sink(g_variant_new_from_bytes(G_VARIANT_TYPE(Type), copy, FALSE));
  char* printed = g_variant_print(value, FALSE);
  std::string text = g_variant_is_normal_form(value) ? printed : "not normal";
  g_free(printed);
  g_variant_unref(value);
  g_bytes_unref(copy);
  return text;
}

const char* const NoBody = "@m(sa(uaysxmxmds)) nothing";

std::string Frame(const std::string& uri, const std::string& inner = "@av []",
                  const std::string& body = NoBody, const std::string& referrer = "",
                  const std::string& fields = "@as []") {
  return "('" + uri + "', '" + uri + "', '" + referrer + "', '', " + fields +
         ", @may nothing, @x 7, @x 8, (0, 70), 1.0, " + body + ", " + inner + ")";
}
std::string Entry(const std::string& frame) { return "('Title', " + frame + ", 1)"; }
std::string All(const std::string& entries, int shown) {
  return "(2, [" + entries + "], " + std::to_string(shown) + ")";
}
std::string Cleaned(const std::string& text, KeptPage::Where where = OnDisk) {
  const std::string clean = HistoryBytes::Clean(BytesOf(text), "http://a.test/", where);
  return clean.empty() ? "" : TextOf(clean);
}

const std::string A = Entry(Frame("http://a.test/")), B = Entry(Frame("http://b.test/"));

TEST(HistoryBytes, StayAsTheyAreWithTheirPlaces) {
  const std::string inner =
      "[<" + Frame("http://inner.test/", "[<" + Frame("http://deep.test/") + ">]") + ">]";
  const std::string all = All(A + ", " + Entry(Frame("http://b.test/", inner)), 1);
  EXPECT_EQ(Cleaned(all), TextOf(BytesOf(all)));
}

TEST(HistoryBytes, LoseWhatWasSentWithAForm) {
  const std::string body = "('text/plain', [(0, [0x70, 0x77], '', 0, nothing, nothing, '')])";
  const std::string inner = "[<" + Frame("http://inner.test/", "@av []", "@m(sa(uaysxmxmds)) " + body) + ">]";
  for (const auto where : {OnDisk, InMemory}) {
    EXPECT_EQ(Cleaned(All(Entry(Frame("http://a.test/", "@av []", body)), 0), where),
              TextOf(BytesOf(All(A, 0))));
    EXPECT_EQ(Cleaned(All(Entry(Frame("http://a.test/", inner)), 0), where).find("0x70"), std::string::npos);
  }
}

TEST(HistoryBytes, HaveNoPasswordOnDisk) {
  const std::string secret = "http://me:pw@c.test/";
  const std::string inner = "[<" + Frame("http://d.test/", "[<" + Frame(secret) + ">]") + ">]";
  const std::string all = All(A + ", " + Entry(Frame(secret)) + ", " + Entry(Frame("http://d.test/", inner)) +
                                  ", " + Entry(Frame("http://e.test/", "@av []", NoBody, secret)) + ", " +
                                  Entry(Frame("view-source:" + secret)) + ", " + B,
                              5);
  EXPECT_EQ(Cleaned(all).find("me:pw"), std::string::npos);
  EXPECT_NE(Cleaned(all).find("d.test"), std::string::npos) << "the page around the frame stays";
  EXPECT_EQ(Cleaned(all, InMemory), TextOf(BytesOf(all)));
  // The entry before takes its place as the one on show.
  EXPECT_EQ(Cleaned(All(A + ", " + Entry(Frame(secret)) + ", " + B, 1)),
            TextOf(BytesOf(All(A + ", " + B, 0))));
}

TEST(HistoryBytes, AreNothingWhereTheAddressTellsAll) {
  const std::string bare =
      "('T', ('http://a.test/', 'http://a.test/', '', '', [], nothing, 7, 8, (0, 0), 1.0, "
      "nothing, []), 1)";
  EXPECT_EQ(Cleaned(All(bare, 0)), "");
  EXPECT_NE(Cleaned(All(A, 0)), "") << "it has a place";
  EXPECT_NE(Cleaned(All(B, 0)), "") << "it is another address";
  EXPECT_EQ(Cleaned(All(Entry(Frame("marlowick:own")) + ", " + Entry(Frame("javascript:alert(1)")), 1)), "");
}

TEST(HistoryBytes, AreBounded) {
  std::string many = A;
  for (int i = 0; i < 300; ++i) many += ", " + Entry(Frame("http://" + std::to_string(i) + ".test/"));
  const std::string clean = Cleaned(All(many, 250));
  EXPECT_EQ(clean.find("http://199."), std::string::npos);
  EXPECT_NE(clean.find("http://249."), std::string::npos);
  EXPECT_NE(clean.find("], 49)"), std::string::npos) << "the one on show";

  const std::string typed = "['" + std::string(300 * 1024, 'x') + "']";
  const std::string fat = Entry(Frame("http://b.test/", "@av []", NoBody, "", typed));
  EXPECT_EQ(Cleaned(All(A + ", " + fat, 1)), TextOf(BytesOf(All(A + ", " + B, 1))))
      << "without what was typed";
  EXPECT_EQ(Cleaned(All(Entry(Frame("data:," + std::string(1100 * 1024, 'x'))), 0)), "");
}

TEST(HistoryBytes, AreRefusedWhereTheyArentTheEngines) {
  const std::string wrong[] = {"",
                               "x",
                               std::string(100, '\0'),
                               std::string(100, '\xFF'),
                               BytesOf("(1, [], nothing)"),
                               BytesOf("(3, [" + A + "], 0)"),
                               BytesOf("(2, [], 0)")};
  for (const std::string& bytes : wrong) EXPECT_EQ(HistoryBytes::Clean(bytes, "", OnDisk), "");
  EXPECT_EQ(Cleaned(All(A + ", " + B, 99)), TextOf(BytesOf(All(A + ", " + B, 1)))) << "an index out of range";
  EXPECT_EQ(
      Cleaned(All(Entry(Frame("http://b.test/", "[<'no frame'>, <" + Frame("http://d.test/") + ">]")), 0)),
      TextOf(BytesOf(All(Entry(Frame("http://b.test/", "[<" + Frame("http://d.test/") + ">]")), 0))));
}

}  // namespace
