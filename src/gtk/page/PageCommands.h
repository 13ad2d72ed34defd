#pragma once

class Page;

// What the user does with a page, in a tab or in a plain window.
namespace PageCommands {

// Each fails where there is no such page.
void GoBack(Page& page);
void GoForward(Page& page);

// The page once more; nothing comes from the cache.
void RefreshPastCache(Page& page);
// 1 larger, -1 smaller, 0 as the settings have it.
void Zoom(Page& page, int step);
// Shows the page's inspector, or puts it away.
void SwitchInspector(Page& page);
// Turns the caret on or off that the arrow keys move through the text of all pages.
void SwitchCaret(Page& page);

}  // namespace PageCommands
