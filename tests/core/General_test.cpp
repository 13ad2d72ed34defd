#include "core/General.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cmath>
#include <limits>

#include "core/Conversions.h"
#include "fakes/FakeDesktop.h"
#include "platform/Failure.h"

namespace {

class GeneralTest : public testing::Test {
 protected:
  std::string Key(const std::string& content, const std::string& key = "key") {
    folder.Write("file.ini", content);
    return general.ReadIniKey(Path(), key);
  }
  std::string Section(const std::string& content) {
    folder.Write("file.ini", content);
    return general.ReadSectionText(Path(), "Part");
  }
  std::string Path() const { return folder.path + "\\file.ini"; }

  const TemporaryFolder folder;
  FileSlot slot;
  General general{slot};
};

TEST_F(GeneralTest, AKeyIsAWholeLineAndTheLastOneCounts) {
  EXPECT_EQ(Key("[KEY]\r\nvalue\r\n"), "value");
  EXPECT_EQ(Key("[Key]\nvalue"), "value");
  EXPECT_EQ(Key("[key]\r\n one \r\n[key]\r\n two \r\n"), " two ");
  EXPECT_EQ(Key("[key]\r\n\r\nvalue\r\n"), "");
  EXPECT_EQ(Key(" [key]\r\n1\r\n[key] \r\n2\r\n[ key ]\r\n3\r\nkey\r\n4\r\n[key\r\n5\r\n"), "");
  EXPECT_EQ(Key("[other]\r\n[key]\r\nvalue\r\n", "other"), "[key]");
  EXPECT_EQ(Key("[key]\r\n[key]\r\nvalue\r\n"), "[key]") << "a value is no header";
  EXPECT_EQ(Key("[\u00C4RGER]\r\nvalue\r\n", "\u00E4rger"), "value");
  EXPECT_EQ(Key("\xFF\xFE\x01[\r\n[key]\r\n\xC3(\xFF\r\n"), "\xC3(\xFF");
  EXPECT_EQ(Key(""), "");
  EXPECT_FALSE(slot.IsOpen());
  EXPECT_EQ(general.ReadIniKey(folder.path + "\\missing.ini", "key"), "");
  EXPECT_EQ(general.ReadIniKey(folder.path, "key"), "");
  EXPECT_FALSE(slot.IsOpen());
}

TEST_F(GeneralTest, AHeaderOnTheLastLineLeavesTheSlotTaken) {
  for (const char* content : {"[key]\r\n1\r\n[key]", "[key]\r\n1\r\n[key]\r\n"}) {
    EXPECT_EQ(Key(content), "");
    EXPECT_TRUE(slot.IsOpen());
    EXPECT_EQ(Key("[key]\r\nvalue\r\n"), "") << "every later read fails at its opening";
    slot.Abandon();
  }
  EXPECT_EQ(Key("[key]\r\nvalue\r\n"), "value");
}

TEST_F(GeneralTest, LargeFilesAndPipesDoNoHarm) {
  std::string content = "[key]\r\nearly\r\n";
  while (content.size() < 10 * 1024 * 1024) content += "[other]\r\nsome line of text or other\r\n";
  EXPECT_EQ(Key(content + "[key]\r\nlate"), "late");
  EXPECT_EQ(Key("[key]\r\n" + std::string(10 * 1024 * 1024, 'x')).size(), 10u * 1024 * 1024);
  ASSERT_EQ(::mkfifo((folder.path + "/pipe").c_str(), 0666), 0);
  EXPECT_EQ(general.ReadIniKey(folder.path + "\\pipe", "key"), "");
}

TEST_F(GeneralTest, ASectionEndsAtItsEnd) {
  EXPECT_EQ(Section("[part]\r\none\r\n\r\n[other]\r\n[END]\r\nrest\r\n"), "one\r\n\r\n[other]");
  EXPECT_EQ(Section("[part]\n[end]\ntwo\n[end]"), "[end]\r\ntwo") << "the first line is taken as it stands";
  EXPECT_EQ(Section("[part]\r\n1\r\n[end]\r\n[part]\r\n2\r\n[end]\r\n"), "2");
  EXPECT_EQ(Section("nothing"), "");
  EXPECT_THROW(Section("[part]\r\none\r\n"), Failure);
  slot.Abandon();
  EXPECT_THROW(general.ReadSectionText(folder.path + "\\missing", "part"), Failure);
}

TEST_F(GeneralTest, PathsAndNames) {
  EXPECT_EQ(ReverseString("a\u00E4\U0001F600"), "\U0001F600\u00E4a");
  EXPECT_EQ(LastFolderName("C:\\skins\\St\u00E4hl"), "St\u00E4hl");
  EXPECT_EQ(LastFolderName("skins\\"), "");
  EXPECT_THROW(LastFolderName("skins"), Failure);
  folder.Write("Sub/File.txt", "");
  EXPECT_TRUE(general.FileExists(folder.path + "\\sub\\FILE.TXT"));
  EXPECT_FALSE(general.FileExists(folder.path + "\\Sub"));
  EXPECT_TRUE(general.FolderExists(folder.path + "\\SUB"));
  EXPECT_FALSE(general.FolderExists(folder.path + "\\Sub\\File.txt"));
  EXPECT_EQ(MonthName(12), "December");
  EXPECT_EQ(MonthName(0), "January");
  EXPECT_EQ(MonthName(13), "January");
}

TEST(Conversions, LeadingNumbersNeverFail) {
  const std::pair<const char*, double> values[] = {
      {"", 0},        {"abc", 0}, {" 12abc", 12},     {"\t-3.5x", -3.5}, {".5", 0.5},
      {"5.", 5},      {"-", 0},   {".", 0},           {"--1", 0},        {"+-1", 0},
      {"&hFFg", 255}, {"&H", 0},  {"&hFFFFFFFF", -1}, {"inf", 0},        {"nan", 0},
      {"-inf", 0},    {"1,5", 1}, {"0x10", 0},        {"1e3", 1},        {"150e9", 150},
      {"2.5E1", 2.5}};
  for (const auto& [text, number] : values) EXPECT_EQ(LeadingNumber(text), number) << text;
  for (const std::string& text : {std::string(999, '9'), std::string("&hFFFFFFFFF")})
    EXPECT_THROW(ToInt32(LeadingNumber(text)), Failure) << text;
}

TEST(Conversions, StrictNumbersAreTheWholeText) {
  const std::pair<const char*, double> values[] = {{"7", 7},  {" 7\t", 7},    {"-7.25", -7.25},
                                                   {"+7", 7}, {"&h7F ", 127}, {"1e3", 1000}};
  for (const auto& [text, number] : values) EXPECT_EQ(StrictNumber(text), number) << text;
  for (const char* text :
       {"", "  ", "7x", "7 7", "x7", "&h", "&h 7", "&h123456789", "+", "+ 7", "inf", "nan", "7\r"})
    EXPECT_THROW(StrictNumber(text), Failure) << text;
}

TEST(Conversions, RoundingGoesToTheEvenNeighbourAndOverflowFails) {
  const std::pair<double, int> values[] = {{0.5, 0},   {1.5, 2},  {2.5, 2},         {-0.5, 0},
                                           {-1.5, -2}, {2.51, 3}, {32767.4, 32767}, {-32768.5, -32768}};
  for (const auto& [value, whole] : values) {
    EXPECT_EQ(ToInt16(value), whole) << value;
    EXPECT_EQ(ToInt32(value), whole) << value;
  }
  for (const double value : {32767.5, -32769.0, 1e300, std::numeric_limits<double>::infinity(), std::nan("")})
    EXPECT_THROW(ToInt16(value), Failure) << value;
  EXPECT_EQ(ToInt32(-2147483648.0), INT32_MIN);
  EXPECT_THROW(ToInt32(2147483647.5), Failure);
}

}  // namespace
