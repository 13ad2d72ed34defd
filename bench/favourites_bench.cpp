// A folder of 10,000 favourites and 1,000 sub-folders: opening it, scrolling it, watching the path; and the
// import of a browser's 20,000 bookmarks.

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "Bench.h"
#include "core/Program.h"
#include "core/frmMain.h"
#include "fakes/FakeDesktop.h"
#include "gtk/favourites/BookmarkReader.h"
#include "menus/frmFavMenu.h"
#include "platform/favourites/FavouritesFolder.h"

namespace {

constexpr int Links = 10000, Folders = 1000, Imported = 20000;
constexpr double Prompt = 100, OneFrame = 16, Tick = 0.01;  // ms

class BigFolder {
 public:
  BigFolder() {
    const std::string big = folder_.path + "/favourites/big";
    std::filesystem::create_directories(big);
    for (int i = 0; i < Folders; ++i)
      std::filesystem::create_directory(big + "/A folder of favourites " + std::to_string(i));
    for (int i = 0; i < Links; ++i)
      std::ofstream(big + "/The favourite page numbered " + std::to_string(i * 7919 % Links) + ".url")
          << Favourites::ShortcutText("https://page.test/");
    program_.Start();
  }

  // Text that was never drawn before, as at the first opening.
  void Forget() { desktop_.drawing = MakeDrawing(); }

  void ListAndMeasure() {
    const Favourites::Listing listing = Favourites::List(folder_.path + "/favourites/big");
    for (const std::string& name : listing.Folders) width_ += desktop_.Draws().TextWidth(name);
    for (const std::string& name : listing.Shortcuts)
      width_ += desktop_.Draws().TextWidth(Favourites::WithoutExtension(name));
  }

  // What the tick of Timer2 does for the folder's row in the top window.
  void Open() {
    program_.menu.FavOpenPath = Source();
    desktop_.Gate.Run([&] {
      window_ = &program_.fav_cascade.Add();
      window_->labSource = Source() + "\\big";
      window_->GetMenuItems(window_->labSource);
      window_->Show();
    });
  }
  void Close() {
    desktop_.Gate.Run([&] { program_.fav_cascade.UnloadAll(); });
  }
  void Compose() {
    const PixelRect all = window_->PixelBounds();
    pixels_.resize(static_cast<size_t>(all.Width) * static_cast<size_t>(all.Height));
    desktop_.Draws().Compose({pixels_.data(), all.Width, all.Height}, window_->Describe(),
                             {{0, 0, all.Width, all.Height}});
  }
  void Scroll() {
    desktop_.Gate.Run([&] { window_->ScrollMenu(); });
  }
  void OpenTen() {
    for (int i = 0; i < 10; ++i) {
      frmFavMenu& window = program_.fav_cascade.Add();
      window.labSource = Source() + "\\A folder\\with others\\in it";
    }
    program_.menu.FavOpenPath = Source() + "\\A folder\\with others\\in it\\and more";
  }
  void TickAll() {
    for (const auto& window : program_.fav_cascade.All()) window->Timer1.Tick();
  }
  std::string Root() const { return folder_.path; }

 private:
  std::string Source() const { return folder_.path + "\\favourites"; }

  const ProgramFolder folder_;
  FakeDesktop desktop_{folder_.path};
  Program program_{desktop_};
  frmFavMenu* window_ = nullptr;
  std::vector<uint32_t> pixels_;
  double width_ = 0;
};

void MeasureImport(Report& report, const std::string& folder) {
  std::ofstream html(folder + "/bookmarks.html");
  html << "<!DOCTYPE NETSCAPE-Bookmark-file-1>\n<DL><p>\n";
  for (int i = 0; i < Imported; ++i) {
    if (i % 100 == 0) html << (i > 0 ? "</DL><p>\n" : "") << "<DT><H3>Folder " << i << "</H3>\n<DL><p>\n";
    html << "<DT><A HREF=\"https://page.test/" << i
         << "?a=b&amp;c=d\" ADD_DATE=\"1700000000\">Bookmark number " << i << "</A>\n";
  }
  html << "</DL><p>\n</DL><p>\n";
  html.close();
  std::filesystem::create_directory(folder + "/imported");
  const double start = Now(WallTime);
  const Bookmarks bookmarks = ReadBookmarks(folder + "/bookmarks.html");
  BookmarkImport import(folder + "/imported", "in", bookmarks);
  const double planned = Now(WallTime);
  while (import.Step(50)) {
  }
  const double all = Now(WallTime) - start, writing = Now(WallTime) - planned;
  report.Figure("import of 20,000 bookmarks", all / 1000, "ms");
  report.Figure("  the share that is writing files", 100 * writing / all, "%");
}

}  // namespace

int main() {
  Report report;
  BigFolder big;
  const std::vector<double> opening = Medians(7, {[&] {
                                                    big.Forget();
                                                    big.ListAndMeasure();
                                                  },
                                                  [&] {
                                                    big.Forget();
                                                    big.Open();
                                                  },
                                                  [&] { big.Close(); }});
  report.Figure("sorted listing and measuring of 11,000 names", opening[0] / 1000, "ms");
  report.Ratio("GetMenuItems against that", opening[1] / opening[0], 3);
  report.Figure("closing the window", opening[2] / 1000, "ms");
  const std::vector<double> frame = Medians(7,
                                            {[&] {
                                               big.Forget();
                                               big.Open();
                                               big.Compose();
                                             },
                                             [&] { big.Close(); }},
                                            WallTime);
  report.Bound("from the tick to the first frame", frame[0] / 1000, Prompt, "ms");
  big.Open();
  const std::vector<double> scrolling = Medians(101, {[&] {
                                                  big.Scroll();
                                                  big.Compose();
                                                }},
                                                WallTime);
  report.Bound("one scroll step with its frame", scrolling[0] / 1000, OneFrame, "ms");
  big.Close();
  big.OpenTen();
  const std::vector<double> ticks = Medians(101, {[&] { big.TickAll(); }});
  report.Bound("a tick of Timer1 with ten windows", ticks[0] / 10 / 1000, Tick, "ms");
  MeasureImport(report, big.Root());
  return report.Status();
}
