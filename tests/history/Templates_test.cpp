#include <glib.h>
#include <gtest/gtest.h>

#include "core/General.h"
#include "platform/Text.h"

namespace {

std::string Between(const std::string& text, const std::string& from, const std::string& to) {
  const size_t start = text.find(from) + from.size();
  return text.substr(start, text.find(to, start) - start);
}

// As a policy names a text: the base64 form of its SHA-256.
std::string Hash(const std::string& text) {
  guint8 digest[32];
  gsize size = sizeof digest;
  GChecksum* checksum = g_checksum_new(G_CHECKSUM_SHA256);
  g_checksum_update(checksum, reinterpret_cast<const guchar*>(text.data()), static_cast<gssize>(text.size()));
  g_checksum_get_digest(checksum, digest, &size);
  g_checksum_free(checksum);
  gchar* base64 = g_base64_encode(digest, size);
  const std::string hash = base64;
  g_free(base64);
  return hash;
}

TEST(HistoryTemplates, AllowTheirOwnStyleAndNothingThatATitleBrings) {
  FileSlot slot;
  General general(slot);
  const std::string file = std::string(MARLOWICK_DATA_DIR) + "/history.dat";
  for (const char* key : {"date", "history", "contents"}) {
    const std::string page = general.ReadSectionText(file, key);
    const std::string policy = Between(page, "Content-Security-Policy\" content=\"", "\">");
    // The engine hashes a style with plain line ends.
    const std::string style = Text::Replace(Between(page, "<style>", "</style>"), "\r\n", "\n");
    EXPECT_EQ(Between(policy, "style-src 'sha256-", "'"), Hash(style)) << key;
    EXPECT_TRUE(policy.starts_with("default-src 'none'; ")) << key;
    EXPECT_EQ(policy.find("unsafe"), policy.npos) << key;
    // The policy holds only for what stands behind it.
    EXPECT_LT(page.find("Content-Security-Policy"), page.find("#date#")) << key;
  }
  const std::string frames = general.ReadSectionText(file, "history");
  const std::string frame = Between(frames, "<iframe name=\"date\"", ">");
  EXPECT_NE(frame.find(" src=\"#main#\""), frame.npos);
  EXPECT_NE(frame.find(" sandbox=\""), frame.npos);
  EXPECT_EQ(frame.find("allow-scripts"), frame.npos);
  EXPECT_NE(frames.find(" src=\"contents.htm\""), frames.npos);
}

}  // namespace
