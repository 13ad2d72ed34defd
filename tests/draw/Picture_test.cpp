#include <gdk-pixbuf/gdk-pixbuf.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "fakes/BmpFile.h"
#include "fakes/FakeDesktop.h"
#include "platform/Failure.h"

namespace {

using std::string_literals::operator""s;

class PictureTest : public testing::Test {
 protected:
  Picture Load(const std::string& content) {
    folder.Write("picture.bmp", content);
    return drawing->LoadPicture(folder.path + "\\picture.bmp");
  }

  // The failure's text, which has to name the file; empty where there is none.
  std::string FailureOf(const std::string& content) {
    try {
      Load(content);
      return {};
    } catch (const Failure& failure) {
      EXPECT_NE(std::string(failure.what()).find(folder.path + "/picture.bmp"), std::string::npos);
      return failure.what();
    }
  }

  const TemporaryFolder folder;
  const std::unique_ptr<Drawing> drawing = MakeDrawing();
};

// A picture of the toolkit's, 40 by 30 pixels, as a file.
std::string Encoded(const char* format, bool alpha = false) {
  GdkPixbuf* pixels = gdk_pixbuf_new(GDK_COLORSPACE_RGB, alpha, 8, 40, 30);
  gdk_pixbuf_fill(pixels, 0x10203000);
  gchar* data = nullptr;
  gsize size = 0;
  EXPECT_TRUE(gdk_pixbuf_save_to_buffer(pixels, &data, &size, format, nullptr, nullptr));
  std::string file(data, size);
  g_free(data);
  g_object_unref(pixels);
  return file;
}

std::string WithPalette(BmpHeader header, const std::string& palette, const std::string& rows) {
  header.Offset = static_cast<uint32_t>(54 + palette.size());
  return header.Text() + palette + rows;
}

const std::string BlackRedGreen = "\0\0\0\0\0\0\xFF\0\0\xFF\0\0"s;
constexpr uint32_t Black = 0xFF000000, Red = 0xFFFF0000, Green = 0xFF00FF00, Blue = 0xFF0000FF;
using Pixels = std::vector<uint32_t>;

TEST_F(PictureTest, ReadsEveryKindOfBitmap) {
  const Picture plain =
      Load(BmpFile(3, 2, [](int x, int y) { return x == 0 && y == 0 ? 0xFF0000u : 0xFFu; }));
  EXPECT_EQ(plain->Width, 3);
  EXPECT_EQ(plain->Height, 2);
  EXPECT_EQ(plain->Pixels, (Pixels{Red, Blue, Blue, Blue, Blue, Blue}));

  const std::string left_red = "\0\0\xFF\xFF\0\0\0\0"s;  // one row: red, blue
  EXPECT_EQ(Load(BmpHeader{2, 1}.Text() + left_red)->Pixels, (Pixels{Red, Blue}));
  EXPECT_EQ(Load(BmpHeader{1, -2}.Text() + "\0\0\xFF\0\xFF\0\0\0"s)->Pixels, (Pixels{Red, Blue}))
      << "top row first";

  EXPECT_EQ(Load(WithPalette({3, 1, 1}, BlackRedGreen.substr(0, 8), "\x40\0\0\0"s))->Pixels,
            (Pixels{Black, Red, Black}));
  EXPECT_EQ(Load(WithPalette({3, 1, 4, 0, 3}, BlackRedGreen, "\x12\xF0\0\0"s))->Pixels,
            (Pixels{Red, Green, Black}))
      << "an index without a colour is black";
  EXPECT_EQ(Load(WithPalette({3, 1, 8, 0, 3}, BlackRedGreen, "\2\1\0\0"s))->Pixels,
            (Pixels{Green, Red, Black}));
  EXPECT_EQ(Load(BmpHeader{2, 1, 16}.Text() + "\0\x7C\x1F\0"s)->Pixels, (Pixels{Red, Blue}));
  EXPECT_EQ(Load(BmpHeader{2, 1, 32}.Text() + "\0\0\xFF\0\xFF\0\0\x80"s)->Pixels, (Pixels{Red, Blue}))
      << "the fourth byte isn't transparency";
  EXPECT_EQ(Load(WithPalette({2, 1, 16, 3}, "\0\xF8\0\0\xE0\7\0\0\x1F\0\0\0"s, "\xE0\7\0\xF8"s))->Pixels,
            (Pixels{Green, Red}));

  BmpHeader old{0, 0};
  std::string old_file = old.Text().substr(0, 14) + "\x0C\0\0\0\2\0\1\0\1\0\x18\0"s + left_red;
  old_file[10] = 26;
  EXPECT_EQ(Load(old_file)->Pixels, (Pixels{Red, Blue}));
}

TEST_F(PictureTest, ReadsRunLengths) {
  // A run, indices as they stand with their padding, the end of a row, a jump, the end of the picture.
  EXPECT_EQ(
      Load(WithPalette({4, 2, 8, 1, 3}, BlackRedGreen, "\1\2\0\3\1\1\2\0\0\0\0\2\2\0\2\1\0\1"s))->Pixels,
      (Pixels{Black, Black, Red, Red, Green, Red, Red, Green}));
  EXPECT_EQ(Load(WithPalette({4, 1, 4, 2, 3}, BlackRedGreen, "\3\x12\x09\x22\0\1"s))->Pixels,
            (Pixels{Red, Green, Red, Green}))
      << "what sticks out of a row is left out";
  EXPECT_NE(FailureOf(WithPalette({4, 2, 8, 1, 3}, BlackRedGreen, "\4\1\0\0\2\2"s)).find("cut short"),
            std::string::npos);
}

TEST_F(PictureTest, TellsOtherKindsByTheirContent) {
  EXPECT_EQ(Load(Encoded("png"))->Pixels, Pixels(40 * 30, 0xFF102030));
  EXPECT_EQ(Load(Encoded("png", true))->Pixels, Pixels(40 * 30, 0xFF102030)) << "alpha says nothing";
  EXPECT_EQ(Load(Encoded("jpeg"))->Pixels.size(), 40u * 30u);
}

TEST_F(PictureTest, FindsAFileInAnySpelling) {
  folder.Write("Skin/Search.BMP", BmpFile(1, 1, [](int, int) { return 1u; }));
  folder.Write("Skin/search.bmp", BmpFile(2, 1, [](int, int) { return 1u; }));
  EXPECT_EQ(drawing->LoadPicture(folder.path + "\\skin\\search.bmp")->Width, 2) << "the exact spelling first";
  EXPECT_EQ(drawing->LoadPicture(folder.path + "\\skin\\SEARCH.BMP")->Height, 1);
}

TEST_F(PictureTest, RefusesWhatIsCutShort) {
  for (const std::string& whole :
       {BmpFile(30, 30, [](int x, int y) { return static_cast<uint32_t>(x * y); }), Encoded("png"),
        Encoded("jpeg"), WithPalette({30, 30, 8, 1, 3}, BlackRedGreen, std::string(60, '\2') + "\0\1"s)}) {
    ASSERT_EQ(FailureOf(whole), "");
    for (const size_t bytes :
         {size_t{1}, size_t{2}, size_t{20}, size_t{40}, size_t{60}, whole.size() / 2, whole.size() - 2})
      EXPECT_NE(FailureOf(whole.substr(0, bytes)), "") << bytes << " of " << whole.size();
  }
}

TEST_F(PictureTest, RefusesHeadersThatLie) {
  rusage before{}, after{};
  getrusage(RUSAGE_SELF, &before);
  constexpr int32_t most = INT32_MAX, least = INT32_MIN;
  for (const BmpHeader& header : {BmpHeader{most, most},
                                  {most, least},
                                  {1, least},
                                  {least, 1},
                                  {0, 1},
                                  {1, 0},
                                  {65536, 65536, 1},
                                  {8000, 8000},
                                  {8000, -8000, 32},
                                  {8000, 8000, 8, 1},
                                  {8001, 8000, 8, 1},
                                  {1, 1, 2},
                                  {1, 1, 0},
                                  {1, 1, 65535},
                                  {4, 1, 24, 1},
                                  {4, -1, 8, 1},
                                  {1, 1, 24, 4},
                                  {1, 1, 24, 3},
                                  {1, 1, 24, 0, 0, UINT32_MAX},
                                  {1, 1, 24, 0, 0, 0},
                                  {1, 1, 24, 0, 0, 54, 41},
                                  {1, 1, 24, 0, 0, 54, UINT32_MAX},
                                  {9, 9, 8, 0, UINT32_MAX, 54}})
    EXPECT_NE(FailureOf(header.Text() + "\0\0\0\0\0\0\0\0"s), "")
        << header.Width << " x " << header.Height << " of " << header.Bits << " bits, kind "
        << header.Compression;
  std::string png = Encoded("png");
  png[16] = png[20] = 0x7F;
  EXPECT_NE(FailureOf(png), "");
  getrusage(RUSAGE_SELF, &after);
  EXPECT_LT(after.ru_maxrss - before.ru_maxrss, 32 * 1024) << "KB taken on a header's word";
}

TEST_F(PictureTest, RefusesWhatTakesFarMoreMemoryThanItsFile) {
  const auto runs = [](size_t count) {
    std::string file = WithPalette({2000, 2000, 8, 1, 3}, BlackRedGreen, "");
    for (size_t i = 0; i < count; ++i) file += "\xFF\1"s;
    return file + "\0\1"s;
  };
  EXPECT_NE(FailureOf(runs(0)).find("cut short"), std::string::npos) << "an end, and nothing before it";
  EXPECT_EQ(FailureOf(runs(2000 * 8)), "");
  folder.Write("picture.png", Encoded("png"));
  folder.Write("picture.bmp", BmpFile(40, 30, [](int, int) { return 0u; }));
  for (const std::string name : {"/picture.png", "/picture.bmp"}) {
    EXPECT_EQ(drawing->LoadPicture(folder.path + name, 40 * 30)->Width, 40);
    EXPECT_THROW(drawing->LoadPicture(folder.path + name, 40 * 30 - 1), Failure) << name;
    EXPECT_THROW(drawing->LoadPicture(folder.path + name, 0), Failure) << name;
  }
}

TEST_F(PictureTest, RefusesWhatIsNoPicture) {
  EXPECT_NE(FailureOf("").find("empty"), std::string::npos);
  EXPECT_NE(FailureOf("[name]\r\nnot a picture\r\n"), "");
  EXPECT_NE(FailureOf("BM"), "");
  EXPECT_NE(FailureOf(std::string(100000, '\0')), "");
  ASSERT_EQ(::mkdir((folder.path + "/folder").c_str(), 0777), 0);
  ASSERT_EQ(::mkfifo((folder.path + "/pipe").c_str(), 0666), 0);
  ASSERT_EQ(::symlink("/dev/zero", (folder.path + "/endless").c_str()), 0);
  for (const char* name : {"/missing.bmp", "/folder", "/pipe", "/endless"})
    EXPECT_THROW(drawing->LoadPicture(folder.path + name), Failure) << name;
  EXPECT_THROW(drawing->BuiltInPicture("missing.bmp"), Failure);
}

}  // namespace
