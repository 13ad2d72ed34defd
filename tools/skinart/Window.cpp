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

void drawMenuBar(Canvas& window, const Theme& theme, const Art& art, const Scene& scene) {
  window.tile(art.at("menubar.bmp"), FrameWidth, MenuTop, scene.width, shown::MenuBar);
  int room = scene.width - 54;
  for (const MenuLabel& label : MenuLabels) {
    int left = FrameWidth + label.left;
    if (left + label.width + 4 > room) break;
    drawText(window, left, MenuTop + 6, label.width + 6, label.text, theme.text.menu, Align::Left);
  }
  window.blit(art.at(std::to_string(scene.frame + 1) + ".bmp"), room, MenuTop);
}

void drawToolBar(Canvas& window, const Art& art, const Scene& scene) {
  window.tile(art.at("buttonbar.bmp"), FrameWidth, ToolTop, scene.width, shown::ToolBar);
  int scrollers = scene.width - 61;
  for (int i = 0; i < 8; ++i) {
    int left = FrameWidth + toolButtonLeft(static_cast<Icon>(i));
    if (left + 33 > scrollers) break;
    int state = i == scene.pressed ? 2 : i == scene.hovered ? 1 : 0;
    window.blit(art.at(ToolFiles[i][state]), left, ToolTop + 1);
  }
  if (scrollers - AddressLeft > 60) {
    window.rect(AddressLeft, ToolTop + 7, scrollers - AddressLeft - 6, 21, White);
    window.frame(AddressLeft, ToolTop + 7, scrollers - AddressLeft - 6, 21, {140, 140, 140});
    drawText(window, AddressLeft + 6, ToolTop + 11, scrollers - AddressLeft - 20,
             "http://127.0.0.1/harbour/tides.html", Black);
  }
  window.blit(art.at("tableft.bmp"), scrollers, ToolTop);
  window.blit(art.at("tabright.bmp"), scrollers + 25, ToolTop);
}

void drawTabs(Canvas& window, const Theme& theme, const Art& art, const Scene& scene) {
  window.tile(art.at("browsertop.bmp"), FrameWidth, StripTop, scene.width, shown::Strip);
  for (size_t i = 0; i < scene.tabs.size(); ++i) {
    int left = FrameWidth + static_cast<int>(i) * TabWidth;
    bool selected = i == scene.selected;
    window.blit(art.at(selected ? "tabselected.bmp" : "tabnotselected.bmp"), left, StripTop + TabTop);
    drawText(window, left, StripTop + TabTop + (selected ? 2 : 6), TabWidth, scene.tabs[i],
             selected ? theme.text.tab : theme.text.otherTab, Align::Centre);
  }
}

void drawPage(Canvas& window, const Scene& scene) {
  constexpr Colour Heading{70, 76, 84};
  constexpr Colour Line{205, 209, 214};
  int height = scene.height - StatusHeight - PageTop;
  window.rect(FrameWidth, PageTop, scene.width - 2 * FrameWidth, height, White);
  int bottom = PageTop + height - 6;
  int width = scene.width - 4 * FrameWidth - 24;
  if (PageTop + 15 < bottom) window.rect(FrameWidth + 12, PageTop + 10, width / 3, 5, Heading);
  for (int y = PageTop + 24, i = 0; y < bottom; y += 9, ++i) {
    if (i % 6 != 5) window.rect(FrameWidth + 12, y, i % 6 == 4 ? width / 2 : width - 7 * (i % 3), 3, Line);
  }
}

void drawStatusBar(Canvas& window, const Theme& theme, const Art& art, const Scene& scene) {
  int top = scene.height - StatusHeight;
  window.tile(art.at("statusbar.bmp"), 0, top, scene.width, shown::StatusBar);
  drawText(window, 8, top + 1, scene.width - 140, scene.status, theme.text.status);
  window.rect(scene.width - 120, top + 2, 60, 13, theme.text.progress);
}

void drawTitleBar(Canvas& window, const Theme& theme, const Art& art, const Scene& scene) {
  window.tile(art.at("titlebar.bmp"), 0, 0, scene.width, shown::TitleBar);
  cairo_save(window.cr());
  cairo_translate(window.cr(), 8, 4);
  drawSign(window.cr());
  cairo_restore(window.cr());
  drawText(window, 29, 5, scene.width - 100, scene.title, theme.text.title);
  window.blit(art.at("closebutton.bmp"), scene.width - 20, 5);
  window.blit(art.at("maxbutton.bmp"), scene.width - 37, 5);
  window.blit(art.at("minbutton.bmp"), scene.width - 52, 5);
}

void drawFrame(Canvas& window, const Art& art, const Scene& scene) {
  int right = scene.width - FrameWidth;
  int bottom = scene.height - FrameWidth;
  window.tile(art.at("left.bmp"), 0, 0, FrameWidth, scene.height);
  window.tile(art.at("right.bmp"), right, 0, FrameWidth, scene.height);
  window.tile(art.at("bottom.bmp"), 0, bottom, scene.width, FrameWidth);
  window.tile(art.at("topleft.bmp"), 0, 0, FrameWidth, FrameWidth);
  window.tile(art.at("topright.bmp"), right, 0, FrameWidth, FrameWidth);
  window.tile(art.at("botleft.bmp"), 0, bottom, FrameWidth, FrameWidth);
  window.blit(art.at("botright.bmp"), scene.width - 19, scene.height - 20);
}

void drawMenuFrame(Canvas& menu, const Art& art) {
  int right = menu.width() - 2;
  int bottom = menu.height() - 2;
  menu.tile(art.at("mnutop.bmp"), 0, 0, menu.width(), 2);
  menu.tile(art.at("mnuleft.bmp"), 0, 0, 2, menu.height());
  menu.tile(art.at("mnuright.bmp"), right, 0, 2, menu.height());
  menu.tile(art.at("mnubottom.bmp"), 0, bottom, menu.width(), 2);
  menu.blit(art.at("mnutopleft.bmp"), 0, 0);
  menu.blit(art.at("mnutopright.bmp"), right, 0);
  menu.blit(art.at("mnubotright.bmp"), right, bottom);
  menu.blit(art.at("mnubotleft.bmp"), 0, bottom);
}

}  // namespace

Canvas composeWindow(const Theme& theme, const Art& art, const Scene& scene) {
  Canvas window(scene.width, scene.height, White);
  drawMenuBar(window, theme, art, scene);
  drawToolBar(window, art, scene);
  drawTabs(window, theme, art, scene);
  drawPage(window, scene);
  drawStatusBar(window, theme, art, scene);
  drawTitleBar(window, theme, art, scene);
  drawFrame(window, art, scene);
  return window;
}

Canvas composeMenu(const Theme& theme, const Art& art, const std::vector<std::string>& rows,
                   int highlighted) {
  constexpr int Width = 132;
  constexpr int TextLeft = 16;
  int height = 2 * MenuMargin;
  for (const std::string& row : rows) height += row == "-" ? SpacerHeight : RowHeight;
  Canvas menu(Width, height);
  menu.tile(art.at("mnubackground.bmp"), 0, 0, Width, height);
  int y = MenuMargin;
  for (size_t i = 0; i < rows.size(); ++i) {
    if (rows[i] == "-") {
      menu.tile(art.at("mnuspacer.bmp"), 4, y, Width - 8, SpacerHeight);
      y += SpacerHeight;
      continue;
    }
    bool lit = static_cast<int>(i) == highlighted;
    if (lit) menu.rect(TextLeft, y, Width - 2 * TextLeft, RowHeight, theme.text.menuHighlight);
    drawText(menu, TextLeft, y, Width - 2 * TextLeft, rows[i],
             lit ? theme.text.menuHighlightText : theme.text.menu);
    y += RowHeight;
  }
  drawMenuFrame(menu, art);
  return menu;
}

Canvas composeFavourites(const Theme& theme, const Art& art) {
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
  menu.tile(art.at("mnubackground.bmp"), 0, 0, Width, height);
  int y = MenuMargin;
  for (const Row& row : Rows) {
    bool lit = &row == &Rows[1];
    if (lit) menu.rect(TextLeft, y, Width, RowHeight, Black);
    menu.blit(art.at(row.folder ? "folder.bmp" : "link.bmp"), 6, y);
    if (row.folder) menu.blit(art.at(lit ? "arrowHi.bmp" : "arrow.bmp"), Width - 20, y);
    drawText(menu, TextLeft, y, Width - TextLeft, row.text,
             lit ? theme.text.menuHighlightText : theme.text.menu);
    y += RowHeight;
  }
  drawMenuFrame(menu, art);
  return menu;
}

Canvas preview(const Theme& theme, const Art& art) {
  return composeWindow(theme, art,
                       {.width = 240,
                        .height = 160,
                        .title = theme.name,
                        .tabs = {"Harbour", ""},
                        .selected = 0,
                        .hovered = 1,
                        .status = "Status: Done"});
}

}  // namespace skinart
