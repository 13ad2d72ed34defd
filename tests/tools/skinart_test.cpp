// Looks at the skins as the build has drawn them: MARLOWICK_ART_DIR holds the built-in one,
// MARLOWICK_SKINS_DIR a folder for each of the others.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "fakes/Rig.h"

namespace {

namespace fs = std::filesystem;

struct Pixel {
  int red = 0, green = 0, blue = 0;
  bool operator==(const Pixel&) const = default;
};

std::string contents(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

/// A 24-bit BMP; without width and height if the file is anything else.
struct Bitmap {
  int width = 0, height = 0;
  std::string bytes;

  explicit Bitmap(const fs::path& file) : bytes(contents(file)) {
    if (bytes.size() < 54 || bytes.compare(0, 2, "BM") != 0 || number(28, 2) != 24 || number(30, 4) != 0)
      return;
    int w = number(18, 4);
    int h = number(22, 4);
    if (bytes.size() != static_cast<size_t>(number(10, 4) + stride(w) * h)) return;
    width = w;
    height = h;
  }

  /// Outside the picture, and everywhere in a file that is no bitmap: a pixel that no colour equals.
  Pixel at(int x, int y) const {
    if (x < 0 || y < 0 || x >= width || y >= height) return {-1, -1, -1};
    auto first = static_cast<size_t>(number(10, 4) + stride(width) * (height - 1 - y) + 3 * x);
    auto byte = [&](size_t i) { return static_cast<int>(static_cast<uint8_t>(bytes[first + i])); };
    return {byte(2), byte(1), byte(0)};
  }

 private:
  static int stride(int w) { return (w * 3 + 3) / 4 * 4; }
  int number(size_t offset, size_t count) const {
    int value = 0;
    for (size_t i = count; i-- > 0;) value = value << 8 | static_cast<uint8_t>(bytes[offset + i]);
    return value;
  }
};

int distance(Pixel a, Pixel b) {
  return std::max({std::abs(a.red - b.red), std::abs(a.green - b.green), std::abs(a.blue - b.blue)});
}

double luminance(Pixel pixel) {
  auto linear = [](int value) {
    double share = value / 255.0;
    return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(pixel.red) + 0.7152 * linear(pixel.green) + 0.0722 * linear(pixel.blue);
}

double contrast(Pixel a, Pixel b) {
  double one = luminance(a) + 0.05;
  double other = luminance(b) + 0.05;
  return std::max(one, other) / std::min(one, other);
}

std::vector<fs::path> folderSkins() {
  std::vector<fs::path> folders;
  for (const auto& entry : fs::directory_iterator(MARLOWICK_SKINS_DIR)) {
    if (entry.is_directory()) folders.push_back(entry.path());
  }
  return folders;
}

std::vector<fs::path> allSkins() {
  std::vector<fs::path> folders = folderSkins();
  folders.emplace_back(MARLOWICK_ART_DIR);
  return folders;
}

/// The settings of a skin.ini: a line in brackets and the line below it.
std::map<std::string, std::string> settings(const fs::path& skin) {
  std::map<std::string, std::string> result;
  std::istringstream text(contents(skin / "skin.ini"));
  std::string key;
  for (std::string line; std::getline(text, line);) {
    EXPECT_TRUE(line.ends_with('\r')) << skin << ": " << line;
    if (line.ends_with('\r')) line.pop_back();
    if (line.starts_with('[')) {
      key = line.substr(1, line.size() - 2);
    } else if (!key.empty()) {
      result[key] = line;
      key.clear();
    }
  }
  EXPECT_EQ(key, "") << skin << ": a key without a value";
  return result;
}

/// "&hBBGGRR": red is the low byte.
Pixel colour(const std::string& value) {
  if (!value.starts_with("&h")) return {-1, -1, -1};
  unsigned long number = std::stoul(value.substr(2), nullptr, 16);
  return {static_cast<int>(number & 0xff), static_cast<int>(number >> 8 & 0xff),
          static_cast<int>(number >> 16 & 0xff)};
}

const std::vector<std::string> Commands = {"back",   "forward", "stop",    "refresh",
                                           "newtab", "deltab",  "history", "search"};

std::vector<std::string> states(const std::string& command) {
  std::string rest = command == "search" ? "Search" : command;
  return {rest + "flat.bmp", command + "button.bmp", command + "down.bmp"};
}

int pixelsApart(const Bitmap& one, const Bitmap& other) {
  int count = 0;
  for (int y = 0; y < one.height; ++y) {
    for (int x = 0; x < one.width; ++x) count += distance(one.at(x, y), other.at(x, y)) > 24 ? 1 : 0;
  }
  return count;
}

TEST(Skinart, EverySkinHasEveryBitmapInItsSize) {
  struct Group {
    int width, height;
    std::vector<std::string> files;
  };
  std::vector<Group> groups = {
      {5, 300, {"left"}},
      {5, 500, {"right"}},
      {600, 5, {"bottom"}},
      {800, 26, {"titlebar"}},
      {19, 20, {"botright"}},
      {338, 25, {"browsertop", "menubar"}},
      {500, 20, {"statusbar"}},
      {800, 40, {"buttonbar"}},
      {11, 11, {"topleft"}},
      {5, 5, {"botleft"}},
      {5, 11, {"topright"}},
      {15,
       15,
       {"maxbutton", "minbutton", "closebutton", "maxbuttonDown", "minbuttonDown", "closebuttonDown"}},
      {2, 2, {"mnutopleft", "mnutopright", "mnubotright", "mnubotleft"}},
      {121, 2, {"mnutop"}},
      {2, 189, {"mnuright"}},
      {174, 2, {"mnubottom"}},
      {2, 229, {"mnuleft"}},
      {300, 300, {"mnubackground"}},
      {140, 8, {"mnuspacer"}},
      {14, 14, {"folder", "link", "arrow", "arrowHi", "scroll", "scrollup"}},
      {25, 35, {"tableft", "tabright", "tablefthi", "tabrighthi"}},
      {150, 21, {"tabnotselected", "tabselected"}},
      {49, 24, {"1", "2", "3", "4", "5", "6", "7", "8", "9"}},
      {320, 213, {"preview"}},
  };
  ASSERT_GE(folderSkins().size(), 3u);
  for (const fs::path& skin : allSkins()) {
    for (const Group& group : groups) {
      for (const std::string& file : group.files) {
        Bitmap bitmap(skin / (file + ".bmp"));
        EXPECT_EQ(bitmap.width, group.width) << skin / file;
        EXPECT_EQ(bitmap.height, group.height) << skin / file;
      }
    }
    for (const std::string& command : Commands) {
      for (const std::string& file : states(command)) {
        Bitmap bitmap(skin / file);
        EXPECT_EQ(bitmap.width, 33) << skin / file;
        EXPECT_EQ(bitmap.height, 33) << skin / file;
      }
    }
  }
}

TEST(Skinart, RepeatedPicturesJoinWithoutASeam) {
  // Where a picture meets itself, no step is larger than the steps within it.
  auto stepAcross = [](const Bitmap& bitmap, int y) {
    int inside = 0;
    for (int x = 1; x < bitmap.width; ++x)
      inside = std::max(inside, distance(bitmap.at(x - 1, y), bitmap.at(x, y)));
    return std::pair(inside, distance(bitmap.at(bitmap.width - 1, y), bitmap.at(0, y)));
  };
  auto stepDown = [](const Bitmap& bitmap, int x) {
    int inside = 0;
    for (int y = 1; y < bitmap.height; ++y)
      inside = std::max(inside, distance(bitmap.at(x, y - 1), bitmap.at(x, y)));
    return std::pair(inside, distance(bitmap.at(x, bitmap.height - 1), bitmap.at(x, 0)));
  };
  constexpr int Slack = 3;
  for (const fs::path& skin : allSkins()) {
    for (const char* file :
         {"titlebar.bmp", "menubar.bmp", "buttonbar.bmp", "browsertop.bmp", "statusbar.bmp", "bottom.bmp",
          "mnutop.bmp", "mnubottom.bmp", "mnuspacer.bmp", "mnubackground.bmp"}) {
      Bitmap bitmap(skin / file);
      for (int y = 0; y < bitmap.height; ++y) {
        auto [inside, seam] = stepAcross(bitmap, y);
        EXPECT_LE(seam, inside + Slack) << skin / file << " row " << y;
      }
    }
    for (const char* file : {"left.bmp", "right.bmp", "mnuleft.bmp", "mnuright.bmp", "mnubackground.bmp"}) {
      Bitmap bitmap(skin / file);
      for (int x = 0; x < bitmap.width; ++x) {
        auto [inside, seam] = stepDown(bitmap, x);
        EXPECT_LE(seam, inside + Slack) << skin / file << " column " << x;
      }
    }
  }
}

TEST(Skinart, AButtonShowsItsState) {
  constexpr int Clearly = 80;  // pixels of 1089
  for (const fs::path& skin : allSkins()) {
    for (const std::string& command : Commands) {
      std::vector<std::string> files = states(command);
      Bitmap rest(skin / files[0]), hover(skin / files[1]), down(skin / files[2]);
      EXPECT_GE(pixelsApart(rest, hover), Clearly) << skin / command;
      EXPECT_GE(pixelsApart(hover, down), Clearly) << skin / command;
      EXPECT_GE(pixelsApart(rest, down), Clearly) << skin / command;
    }
    for (const char* side : {"tableft", "tabright"}) {
      EXPECT_GE(pixelsApart(Bitmap(skin / (std::string(side) + ".bmp")),
                            Bitmap(skin / (std::string(side) + "hi.bmp"))),
                Clearly / 4)
          << skin / side;
    }
    for (const char* button : {"minbutton", "maxbutton", "closebutton"}) {
      EXPECT_GE(pixelsApart(Bitmap(skin / (std::string(button) + ".bmp")),
                            Bitmap(skin / (std::string(button) + "Down.bmp"))),
                Clearly / 4)
          << skin / button;
    }
  }
}

TEST(Skinart, TheAnimationGoesRoundWithoutAJump) {
  for (const fs::path& skin : allSkins()) {
    std::vector<Bitmap> frames;
    for (int i = 1; i <= 9; ++i) frames.emplace_back(skin / (std::to_string(i) + ".bmp"));
    int largest = 0;
    for (size_t i = 0; i + 1 < 8; ++i) {
      int step = pixelsApart(frames[i], frames[i + 1]);
      EXPECT_GT(step, 0) << skin << " frame " << i + 1;
      largest = std::max(largest, step);
    }
    EXPECT_LE(pixelsApart(frames[7], frames[0]), largest * 5 / 4) << skin;
    for (size_t i = 0; i < 8; ++i)
      EXPECT_GT(pixelsApart(frames[i], frames[8]), 0) << skin << " frame " << i + 1;
  }
}

/// Expects `least` of a text with every pixel of the rectangle that it is printed in.
void expectLegible(const fs::path& file, int x, int y, int width, int height, Pixel text, double least) {
  Bitmap bitmap(file);
  ASSERT_GE(bitmap.width, x + width) << file;
  ASSERT_GE(bitmap.height, y + height) << file;
  double found = 21;
  for (int row = y; row < y + height; ++row) {
    for (int column = x; column < x + width; ++column)
      found = std::min(found, contrast(text, bitmap.at(column, row)));
  }
  EXPECT_GE(found, least) << file;
}

struct Texts {
  Pixel menu, tab, otherTab, status, title;
};

void expectLegibleSkin(const fs::path& skin, const Texts& texts, double least) {
  expectLegible(skin / "menubar.bmp", 0, 6, 338, 13, texts.menu, least);
  expectLegible(skin / "mnubackground.bmp", 0, 0, 300, 300, texts.menu, least);
  expectLegible(skin / "tabselected.bmp", 8, 2, 134, 15, texts.tab, least);
  expectLegible(skin / "tabnotselected.bmp", 8, 6, 134, 12, texts.otherTab, least);
  expectLegible(skin / "statusbar.bmp", 0, 1, 500, 13, texts.status, least);
  expectLegible(skin / "titlebar.bmp", 0, 5, 800, 14, texts.title, least);
}

TEST(Skinart, TextStandsOutFromTheArtBehindIt) {
  constexpr Pixel Black{0, 0, 0};
  constexpr Pixel White{255, 255, 255};
  expectLegibleSkin(MARLOWICK_ART_DIR, {Black, White, Black, Black, Black}, 4.5);
  for (const fs::path& skin : folderSkins()) {
    bool forReading = skin.filename() == "Midnight" || skin.filename() == "Paper";
    double least = forReading ? 7 : 4.5;
    auto ini = settings(skin);
    EXPECT_EQ(ini["name"], skin.filename());
    EXPECT_FALSE(ini["description"].empty()) << skin;
    EXPECT_GT(std::atoi(ini["animation"].c_str()), 0) << skin;
    expectLegibleSkin(skin,
                      {colour(ini["menutext"]), colour(ini["tabtext"]), colour(ini["tabtextdisabled"]),
                       colour(ini["statustext"]), colour(ini["title"])},
                      least);
    Pixel lit = colour(ini["menutexthighlight"]);
    EXPECT_GE(contrast(lit, colour(ini["menuhighlight"])), least) << skin;
    EXPECT_GE(contrast(lit, Black), least) << skin << ": the favourites' highlight";
    EXPECT_EQ(Bitmap(skin / "arrowHi.bmp").at(0, 0), Black) << skin;
    expectLegible(skin / "statusbar.bmp", 0, 2, 500, 13, colour(ini["progressbar"]), 3);
  }
}

void Add(Pixel& sum, Pixel pixel) {
  sum.red += pixel.red;
  sum.green += pixel.green;
  sum.blue += pixel.blue;
}

// The program's own window at the preview's size, against the preview. Type may differ by a hair; pages
// aren't part of a skin.
TEST(Skinart, ThePreviewIsTheProgramsWindowAtHalfItsSize) {
  for (const fs::path& skin : allSkins()) {
    const Bitmap preview(skin / "preview.bmp");
    Rig rig;
    if (skin != MARLOWICK_ART_DIR) rig.skin().LoadSkin(skin.string());
    rig.OpenTabs(2);
    const char* titles[] = {"Harbour", "Tide tables", "Lights"};
    for (int i = 0; i < 3; ++i) rig.Page(i).title = titles[i];
    rig.ShowTab(1);
    rig.Do([&] { rig.main().Sized(2 * preview.width * TwipsPerPixel, 2 * preview.height * TwipsPerPixel); });
    rig.desktop.Advance(2000);
    rig.frame().labCaption.Caption = skin == MARLOWICK_ART_DIR ? "Default" : skin.filename().string();
    rig.frame().StatusBar1.Caption = "Status: Done";
    rig.frame().picProgress.Visible = true;
    rig.frame().picProgress.Width = 60 * TwipsPerPixel;
    rig.frame().picProgress.BackColor = rig.program.colours.ProgressBarColour;  // else from the next start on
    rig.Over(rig.main().toolbar.picButton(4));
    const std::vector<uint32_t> pixels = rig.Pixels();
    const auto real = [&](int x, int y) {
      Pixel sum;
      for (const auto& [dx, dy] : {std::pair{0, 0}, {1, 0}, {0, 1}, {1, 1}}) {
        const uint32_t pixel = pixels[static_cast<size_t>((2 * y + dy) * 2 * preview.width + 2 * x + dx)];
        Add(sum, {static_cast<int>(pixel >> 16 & 0xff), static_cast<int>(pixel >> 8 & 0xff),
                  static_cast<int>(pixel & 0xff)});
      }
      return Pixel{sum.red / 4, sum.green / 4, sum.blue / 4};
    };
    // Means of small squares: a piece that is moved or another one shows, and how letters are smoothed
    // doesn't.
    constexpr int Side = 6;
    for (int top = 0; top + Side <= preview.height; top += Side) {
      for (int left = 0; left + Side <= preview.width; left += Side) {
        const bool page = top + Side > 50 && top < preview.height - 10;
        const bool address = top + Side > 23 && top < 37 && left + Side > 140 && left < preview.width - 31;
        if (page || address) continue;
        Pixel drawn, wanted;
        for (int y = top; y < top + Side; ++y) {
          for (int x = left; x < left + Side; ++x) {
            Add(drawn, preview.at(x, y));
            Add(wanted, real(x, y));
          }
        }
        EXPECT_LT(distance(drawn, wanted), 36 * Side * Side) << skin << " at " << left << ", " << top;
      }
    }
  }
}

}  // namespace
