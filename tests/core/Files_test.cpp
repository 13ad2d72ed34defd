#include "platform/Files.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include "fakes/FakeDesktop.h"
#include "platform/Failure.h"
#include "platform/Text.h"

namespace {

class FilesTest : public testing::Test {
 protected:
  using Mode = FileSlot::Mode;

  std::string In(const std::string& name) const { return folder.path + "\\" + name; }
  std::vector<std::string> Lines(const std::string& content) {
    folder.Write("lines.txt", content);
    slot.Open(In("lines.txt"), Mode::Input);
    std::vector<std::string> lines;
    while (!slot.EndOfFile()) lines.push_back(slot.LineInput());
    EXPECT_THROW(slot.LineInput(), Failure);
    slot.Close();
    return lines;
  }
  size_t FilesThere() const { return FileNames(folder.path).size(); }

  const TemporaryFolder folder;
  FileSlot slot;
};

TEST_F(FilesTest, LinesEndAtLfOrCrLf) {
  using Strings = std::vector<std::string>;
  EXPECT_EQ(Lines(""), Strings());
  EXPECT_EQ(Lines("a\r\nb\nc"), (Strings{"a", "b", "c"}));
  EXPECT_EQ(Lines("\r\n\n"), (Strings{"", ""}));
  EXPECT_EQ(Lines("a\rb\r\r\n"), (Strings{"a\rb\r"}));
  const std::string nul("x\0y", 3);
  EXPECT_EQ(Lines(nul + "\n\xFF"), (Strings{nul, "\xFF"}));
  // Line ends on both sides of every boundary of what is read at once.
  for (size_t length = 16380; length < 16390; ++length)
    EXPECT_EQ(Lines(std::string(length, 'x') + "\r\ny\r\n"), (Strings{std::string(length, 'x'), "y"}))
        << length;
}

TEST_F(FilesTest, OutputTakesTheOldFilesPlaceWhenItIsClosed) {
  folder.Write("file.dat", "old");
  slot.Open(In("FILE.dat"), Mode::Output);
  for (int i = 0; i < 10000; ++i) slot.Print("new line");
  EXPECT_EQ(folder.Read("file.dat"), "old");
  EXPECT_THROW(slot.Open(In("other.dat"), Mode::Input), Failure) << "one file at a time";
  EXPECT_TRUE(slot.IsOpen());
  slot.Abandon();
  EXPECT_EQ(folder.Read("file.dat"), "old");
  EXPECT_EQ(FilesThere(), 1u) << "nothing stays behind";

  slot.Open(In("file.dat"), Mode::Output);
  slot.Print("new");
  slot.Close();
  EXPECT_EQ(folder.Read("file.dat"), "new\r\n");
  EXPECT_EQ(FilesThere(), 1u);
  {
    FileSlot forgotten;
    forgotten.Open(In("file.dat"), Mode::Output);
    forgotten.Print("lost");
  }
  EXPECT_EQ(folder.Read("file.dat"), "new\r\n");
  EXPECT_EQ(FilesThere(), 1u);
}

TEST_F(FilesTest, WhatIsCreatedTakesNoFilesPlace) {
  slot.Open(In("file.dat"), Mode::Create);
  slot.Print("ours");
  folder.Write("file.dat", "another program's");
  slot.Close();
  EXPECT_EQ(folder.Read("file.dat"), "another program's");
  slot.Open(In("new.dat"), Mode::Create);
  slot.Print("ours");
  slot.Close();
  EXPECT_EQ(folder.Read("new.dat"), "ours\r\n");
  EXPECT_EQ(FilesThere(), 2u) << "nothing stays behind";
}

TEST_F(FilesTest, OutputLeavesALinkAndReplacesWhatItLeadsTo) {
  folder.Write("elsewhere/file.dat", "old");
  ASSERT_EQ(::symlink("elsewhere/file.dat", (folder.path + "/link.dat").c_str()), 0);
  slot.Open(In("link.dat"), Mode::Output);
  slot.Print("new");
  slot.Close();
  EXPECT_EQ(folder.Read("elsewhere/file.dat"), "new\r\n");
  EXPECT_EQ(FileNames(In("elsewhere")).size(), 1u);
  char target[99];
  EXPECT_GT(::readlink((folder.path + "/link.dat").c_str(), target, sizeof target), 0);
}

TEST_F(FilesTest, WhatIsAppendedArrivesInOnePiece) {
  folder.Write("file.dat", "first\r\n");
  slot.Open(In("file.dat"), Mode::Append);
  slot.Print("second");
  slot.Print("third");
  EXPECT_EQ(folder.Read("file.dat"), "first\r\n");
  slot.Close();
  EXPECT_EQ(folder.Read("file.dat"), "first\r\nsecond\r\nthird\r\n");
  slot.Open(In("made.dat"), Mode::Append);
  slot.Close();
  EXPECT_EQ(FilesThere(), 2u);
}

TEST_F(FilesTest, FailuresNameTheFileAndLeaveTheSlotFree) {
  folder.Write("folder/file.dat", "");
  for (const Mode mode : {Mode::Input, Mode::Output, Mode::Append}) {
    for (const char* name : {"folder", "missing\\file.dat"}) try {
        slot.Open(In(name), mode);
        ADD_FAILURE() << name;
      } catch (const Failure& failure) {
        EXPECT_NE(std::string(failure.what()).find(HostPath(In(name))), std::string::npos) << failure.what();
      }
    EXPECT_FALSE(slot.IsOpen());
  }
  slot.Open(In("folder\\file.dat"), Mode::Input);
  EXPECT_THROW(slot.Print("text"), Failure);
  slot.Close();
  EXPECT_THROW(slot.Print("text"), Failure);
  EXPECT_THROW(slot.EndOfFile(), Failure);
  EXPECT_THROW(ReadWholeFile(In("missing")), Failure);
  EXPECT_THROW(ReadWholeFile(In("folder")), Failure);
}

TEST_F(FilesTest, PathsAreFoundInAnySpelling) {
  folder.Write("Skins/Steel/Left.bmp", "a");
  folder.Write("Skins/Steel/left.bmp", "b");
  EXPECT_EQ(ReadWholeFile(In("skins\\STEEL\\left.bmp")), "b");
  EXPECT_EQ(ReadWholeFile(In("Skins/Steel/Left.bmp")), "a");
  folder.Write("Skins/Steel/LEFT.bmp", "c");
  EXPECT_EQ(ReadWholeFile(In("skins\\steel\\lefT.bmp")), "c") << "the first in order";
  EXPECT_EQ(HostPath(In("skins\\new\\File")), folder.path + "/Skins/new/File");
  EXPECT_EQ(FolderNames(In("skins")), std::vector<std::string>{"Steel"});
  EXPECT_EQ(FileNames(In("skins")), std::vector<std::string>());
  EXPECT_EQ(FileNames(In("nowhere")), std::vector<std::string>());
  MakeFolder(In("skins\\New"));
  MakeFolder(In("skins\\New"));
  EXPECT_EQ(FolderNames(In("Skins")).size(), 2u);
  EXPECT_THROW(MakeFolder(In("a\\b")), Failure);
}

TEST(Text, CountsAndCutsCharacters) {
  const std::string text = "a\u00E4\u20AC\U0001F600\xFF\xC3";
  EXPECT_EQ(Text::Length(text), 6u);
  EXPECT_EQ(Text::Left(text, 4), "a\u00E4\u20AC\U0001F600");
  EXPECT_EQ(Text::Behind(text, 4), "\xFF\xC3");
  EXPECT_EQ(Text::Left(text, 99), text);
  EXPECT_EQ(Text::Behind(text, 99), "");
  EXPECT_EQ(Text::Length("\xC0\x80"), 2u) << "an overlong form is no character";
  EXPECT_EQ(Text::Length("\xED\xA0\x80\xF4\x90\x80\x80"), 7u)
      << "nor is half a pair, or what is past the last one";
  EXPECT_EQ(Text::Valid("a\xFF\u20AC\xE2\x82"), "a\uFFFD\u20AC\uFFFD\uFFFD");
}

TEST(Text, FoldsCaseCharacterByCharacter) {
  EXPECT_EQ(Text::LowerCase("\u00C4Z\u0416\xFF"), "\u00E4z\u0436\xFF");
  EXPECT_EQ(Text::UpperCase("\u00E4z\u0436\u00DF"), "\u00C4Z\u0416\u00DF");
  EXPECT_TRUE(Text::SameWithoutCase("\u00C9T\u00C9", "\u00E9t\u00E9"));
  EXPECT_FALSE(Text::SameWithoutCase("a", "ab"));
}

TEST(Text, Replaces) {
  EXPECT_EQ(Text::Replace("aXbXX", "X", "XX"), "aXXbXXXX");
  EXPECT_EQ(Text::Replace("aaa", "aa", "b"), "ba");
  EXPECT_EQ(Text::Replace("abc", "", "x"), "abc");
}

}  // namespace
