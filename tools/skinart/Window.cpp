#include "Window.h"

#include "Brand.h"
#include "Buttons.h"

namespace skinart {
namespace {

constexpr int MenuTop = shown::TitleBar;
constexpr int ToolTop = MenuTop + shown::MenuBar;
constexpr int StripTop = ToolTop + shown::ToolBar;
constexpr int PageTop = StripTop + shown::Strip - 1;  // the page covers the strip's last row
constexpr int StatusHeight = 20;                      // from the status bar's top to the window's foot
constexpr int TabWidth = 150;
constexpr int TabTop = 4;
constexpr int RowHeight = 15;
constexpr int SpacerHeight = 8;
constexpr int MenuMargin = 8;
constexpr int AddressLeft = 285;

// File names of the toolbar's buttons at rest, under the mouse and pressed, in the bar's order.
constexpr const char* ToolFiles[8][3] = {{"backflat.bmp", "backbutton.bmp", "backdown.bmp"},
                                         {"forwardflat.bmp", "forwardbutton.bmp", "forwarddown.bmp"},
                                         {"refreshflat.bmp", "refreshbutton.bmp", "refreshdown.bmp"},
                                         {"stopflat.bmp", "stopbutton.bmp", "stopdown.bmp"},
                                         {"newtabflat.bmp", "newtabbutton.bmp", "newtabdown.bmp"},
                                         {"deltabflat.bmp", "deltabbutton.bmp", "deltabdown.bmp"},
                                         {"historyflat.bmp", "historybutton.bmp", "historydown.bmp"},
                                         {"Searchflat.bmp", "searchbutton.bmp", "searchdown.bmp"}};

struct MenuLabel {
  const char* text;
  int left, width;
};
constexpr MenuLabel MenuLabels[] = {{"File", 8, 24},         {"Edit", 40, 25},    {"View", 72, 31},
                                    {"Favourites", 112, 57}, {"Launch", 176, 44}, {"Tabs", 224, 32},
                                    {"Help", 264, 30}};

void DrawMenuBar(Canvas& window, const Theme& theme, const Art& art, const Scene& scene) {
  window.Tile(art.at("menubar.bmp"), FrameWidth, MenuTop, scene.width, shown::MenuBar);
  int room = scene.width - 54;
  for (const MenuLabel& label : MenuLabels) {
    int left = FrameWidth + label.left;
    if (left + label.width + 4 > room) break;
    DrawText(window, left, MenuTop + 6, label.width + 6, label.text, theme.text.menu, Align::Left);
  }
  window.Blit(art.at(std::to_string(scene.frame + 1) + ".bmp"), room, MenuTop);
}

void DrawToolBar(Canvas& window, const Art& art, const Scene& scene) {
  window.Tile(art.at("buttonbar.bmp"), FrameWidth, ToolTop, scene.width, shown::ToolBar);
  int scrollers = scene.width - 61;
  for (int i = 0; i < 8; ++i) {
    int left = FrameWidth + ToolButtonLeft(static_cast<Icon>(i));
    if (left + 33 > scrollers) break;
    int state = i == scene.pressed ? 2 : i == scene.hovered ? 1 : 0;
    window.Blit(art.at(ToolFiles[i][state]), left, ToolTop + 1);
  }
  if (scrollers - AddressLeft > 60) {
    window.Rect(AddressLeft, ToolTop + 7, scrollers - AddressLeft - 6, 21, White);
    window.Frame(AddressLeft, ToolTop + 7, scrollers - AddressLeft - 6, 21, {140, 140, 140});
    DrawText(window, AddressLeft + 6, ToolTop + 11, scrollers - AddressLeft - 20,
             "http://127.0.0.1/harbour/tides.html", Black);
  }
  window.Blit(art.at("tableft.bmp"), scrollers, ToolTop);
  window.Blit(art.at("tabright.bmp"), scrollers + 25, ToolTop);
}

void DrawTabs(Canvas& window, const Theme& theme, const Art& art, const Scene& scene) {
  window.Tile(art.at("browsertop.bmp"), FrameWidth, StripTop, scene.width, shown::Strip);
  for (size_t i = 0; i < scene.tabs.size(); ++i) {
    int left = FrameWidth + static_cast<int>(i) * TabWidth;
    bool selected = i == scene.selected;
    window.Blit(art.at(selected ? "tabselected.bmp" : "tabnotselected.bmp"), left, StripTop + TabTop);
    DrawText(window, left, StripTop + TabTop + (selected ? 2 : 6), TabWidth, scene.tabs[i],
             selected ? theme.text.tab : theme.text.other_tab, Align::Centre);
  }
}

void DrawPage(Canvas& window, const Scene& scene) {
  constexpr Colour Heading{70, 76, 84};
  constexpr Colour Line{205, 209, 214};
  int height = scene.height - StatusHeight - PageTop;
  window.Rect(FrameWidth, PageTop, scene.width - 2 * FrameWidth, height, White);
  int bottom = PageTop + height - 6;
  int width = scene.width - 4 * FrameWidth - 24;
  if (PageTop + 15 < bottom) window.Rect(FrameWidth + 12, PageTop + 10, width / 3, 5, Heading);
  for (int y = PageTop + 24, i = 0; y < bottom; y += 9, ++i) {
    if (i % 6 != 5) window.Rect(FrameWidth + 12, y, i % 6 == 4 ? width / 2 : width - 7 * (i % 3), 3, Line);
  }
}

void DrawStatusBar(Canvas& window, const Theme& theme, const Art& art, const Scene& scene) {
  int top = scene.height - StatusHeight;
  window.Tile(art.at("statusbar.bmp"), 0, top, scene.width, shown::StatusBar);
  DrawText(window, 8, top + 1, scene.width - 140, scene.status, theme.text.status);
  window.Rect(scene.width - 120, top + 2, 60, 13, theme.text.progress);
}

void DrawTitleBar(Canvas& window, const Theme& theme, const Art& art, const Scene& scene) {
  window.Tile(art.at("titlebar.bmp"), 0, 0, scene.width, shown::TitleBar);
  cairo_save(window.Cr());
  cairo_translate(window.Cr(), 8, 4);
  DrawSign(window.Cr());
  cairo_restore(window.Cr());
  DrawText(window, 29, 5, scene.width - 100, scene.title, theme.text.title);
  window.Blit(art.at("closebutton.bmp"), scene.width - 20, 5);
  window.Blit(art.at("maxbutton.bmp"), scene.width - 37, 5);
  window.Blit(art.at("minbutton.bmp"), scene.width - 52, 5);
}

void DrawFrame(Canvas& window, const Art& art, const Scene& scene) {
  int right = scene.width - FrameWidth;
  int bottom = scene.height - FrameWidth;
  window.Tile(art.at("left.bmp"), 0, 0, FrameWidth, scene.height);
  window.Tile(art.at("right.bmp"), right, 0, FrameWidth, scene.height);
  window.Tile(art.at("bottom.bmp"), 0, bottom, scene.width, FrameWidth);
  window.Tile(art.at("topleft.bmp"), 0, 0, FrameWidth, FrameWidth);
  window.Tile(art.at("topright.bmp"), right, 0, FrameWidth, FrameWidth);
  window.Tile(art.at("botleft.bmp"), 0, bottom, FrameWidth, FrameWidth);
  window.Blit(art.at("botright.bmp"), scene.width - 19, scene.height - 20);
}

void DrawMenuFrame(Canvas& menu, const Art& art) {
  int right = menu.Width() - 2;
  int bottom = menu.Height() - 2;
  menu.Tile(art.at("mnutop.bmp"), 0, 0, menu.Width(), 2);
  menu.Tile(art.at("mnuleft.bmp"), 0, 0, 2, menu.Height());
  menu.Tile(art.at("mnuright.bmp"), right, 0, 2, menu.Height());
  menu.Tile(art.at("mnubottom.bmp"), 0, bottom, menu.Width(), 2);
  menu.Blit(art.at("mnutopleft.bmp"), 0, 0);
  menu.Blit(art.at("mnutopright.bmp"), right, 0);
  menu.Blit(art.at("mnubotright.bmp"), right, bottom);
  menu.Blit(art.at("mnubotleft.bmp"), 0, bottom);
}

}  // namespace

Canvas ComposeWindow(const Theme& theme, const Art& art, const Scene& scene) {
  Canvas window(scene.width, scene.height, White);
  DrawMenuBar(window, theme, art, scene);
  DrawToolBar(window, art, scene);
  DrawTabs(window, theme, art, scene);
  DrawPage(window, scene);
  DrawStatusBar(window, theme, art, scene);
  DrawTitleBar(window, theme, art, scene);
  DrawFrame(window, art, scene);
  return window;
}

Canvas ComposeMenu(const Theme& theme, const Art& art, const std::vector<std::string>& rows,
                   int highlighted) {
  constexpr int Width = 132;
  constexpr int TextLeft = 16;
  int height = 2 * MenuMargin;
  for (const std::string& row : rows) height += row == "-" ? SpacerHeight : RowHeight;
  Canvas menu(Width, height);
  menu.Tile(art.at("mnubackground.bmp"), 0, 0, Width, height);
  int y = MenuMargin;
  for (size_t i = 0; i < rows.size(); ++i) {
    if (rows[i] == "-") {
      menu.Tile(art.at("mnuspacer.bmp"), 4, y, Width - 8, SpacerHeight);
      y += SpacerHeight;
      continue;
    }
    bool lit = static_cast<int>(i) == highlighted;
    if (lit) menu.Rect(TextLeft, y, Width - 2 * TextLeft, RowHeight, theme.text.menu_highlight);
    DrawText(menu, TextLeft, y, Width - 2 * TextLeft, rows[i],
             lit ? theme.text.menu_highlight_text : theme.text.menu);
    y += RowHeight;
  }
  DrawMenuFrame(menu, art);
  return menu;
}

Canvas ComposeFavourites(const Theme& theme, const Art& art) {
  struct Row {
    const char* text;
    bool folder;
  };
  static constexpr Row Rows[] = {
      {"Charts", true}, {"Harbours", true}, {"Tide tables", false}, {"Lights", false}};
  constexpr int Width = 132;
  constexpr int TextLeft = 24;
  int height = 2 * MenuMargin + RowHeight * static_cast<int>(std::size(Rows));
  Canvas menu(Width, height);
  menu.Tile(art.at("mnubackground.bmp"), 0, 0, Width, height);
  int y = MenuMargin;
  for (const Row& row : Rows) {
    bool lit = &row == &Rows[1];
    if (lit) menu.Rect(TextLeft, y, Width, RowHeight, Black);
    menu.Blit(art.at(row.folder ? "folder.bmp" : "link.bmp"), 6, y);
    if (row.folder) menu.Blit(art.at(lit ? "arrowHi.bmp" : "arrow.bmp"), Width - 20, y);
    DrawText(menu, TextLeft, y, Width - TextLeft, row.text,
             lit ? theme.text.menu_highlight_text : theme.text.menu);
    y += RowHeight;
  }
  DrawMenuFrame(menu, art);
  return menu;
}

Canvas Preview(const Theme& theme, const Art& art) {
  return ComposeWindow(theme, art,
                       {.width = 640,
                        .height = 426,
                        .title = theme.name,
                        .tabs = {"Harbour", "Tide tables", "Lights"},
                        .selected = 1,
                        .hovered = 4,
                        .status = "Status: Done"})
      .Halved();
}

}  // namespace skinart
