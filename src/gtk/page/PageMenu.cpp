#include "gtk/page/PageMenu.h"

#include <functional>
#include <initializer_list>
#include <memory>
#include <string>

#include "gtk/page/BrowserWorld.h"
#include "gtk/page/Page.h"
#include "gtk/page/SaveLink.h"
#include "platform/Text.h"
#include "platform/WebAddress.h"

namespace {

// What the engine puts there, and stands here in other words, or does something else.
constexpr std::initializer_list<WebKitContextMenuAction> Replaced = {
    WEBKIT_CONTEXT_MENU_ACTION_OPEN_LINK,
    WEBKIT_CONTEXT_MENU_ACTION_OPEN_LINK_IN_NEW_WINDOW,
    WEBKIT_CONTEXT_MENU_ACTION_DOWNLOAD_LINK_TO_DISK,
    WEBKIT_CONTEXT_MENU_ACTION_COPY_LINK_TO_CLIPBOARD,
    WEBKIT_CONTEXT_MENU_ACTION_OPEN_IMAGE_IN_NEW_WINDOW,
    WEBKIT_CONTEXT_MENU_ACTION_DOWNLOAD_IMAGE_TO_DISK,
    WEBKIT_CONTEXT_MENU_ACTION_COPY_IMAGE_TO_CLIPBOARD,
    WEBKIT_CONTEXT_MENU_ACTION_COPY_IMAGE_URL_TO_CLIPBOARD,
    WEBKIT_CONTEXT_MENU_ACTION_GO_BACK,
    WEBKIT_CONTEXT_MENU_ACTION_GO_FORWARD,
    WEBKIT_CONTEXT_MENU_ACTION_STOP,
    WEBKIT_CONTEXT_MENU_ACTION_RELOAD,
    WEBKIT_CONTEXT_MENU_ACTION_INSPECT_ELEMENT,
    WEBKIT_CONTEXT_MENU_ACTION_OPEN_VIDEO_IN_NEW_WINDOW,
    WEBKIT_CONTEXT_MENU_ACTION_OPEN_AUDIO_IN_NEW_WINDOW,
};

constexpr size_t LongestWords = 30;  // characters of them in a label
constexpr const char* SelectedWords = "getSelection().toString().slice(0, 1000)";

std::string WordsOf(GObject* view, GAsyncResult* result) {
  const Owned<JSCValue> value(
      webkit_web_view_evaluate_javascript_finish(WEBKIT_WEB_VIEW(view), result, nullptr));
  return value ? WebAddress::OneLine(Text::Valid(TakeText(jsc_value_to_string(value.get())))) : std::string();
}

class Menu {
 public:
  Menu(Page& page, WebKitContextMenu* menu) : page_(page), menu_(menu) {}

  // `words`: those that are selected, as far as the page has told them.
  void Fill(WebKitHitTestResult* hit, const std::string& words) {
    for (const WebKitContextMenuAction action : Replaced) Remove(action);
    const bool link = webkit_hit_test_result_context_is_link(hit);
    const bool picture = webkit_hit_test_result_context_is_image(hit);
    const bool selection = webkit_hit_test_result_context_is_selection(hit);
    const bool field = webkit_hit_test_result_context_is_editable(hit);
    if (link) AddLink(TextOf(webkit_hit_test_result_get_link_uri(hit)));
    if (picture) AddPicture(TextOf(webkit_hit_test_result_get_image_uri(hit)));
    if (selection && !field && !words.empty()) AddSearch(words);
    if (!link && !picture && !selection && !field && !webkit_hit_test_result_context_is_media(hit)) AddWays();
    TakeRest();
    // An own page is nobody's to look into.
    if (page_.Load().ShowsOwnPage() || field) return;
    Separate();
    if (!link && !picture && !selection) AddSource();
    AddStock(WEBKIT_CONTEXT_MENU_ACTION_INSPECT_ELEMENT, "Inspect");
  }

 private:
  void Remove(WebKitContextMenuAction action) {
    // Each removal makes another list.
    for (bool again = true; again;) {
      again = false;
      for (GList* at = webkit_context_menu_get_items(menu_); at && !again; at = at->next) {
        auto* item = WEBKIT_CONTEXT_MENU_ITEM(at->data);
        again = webkit_context_menu_item_get_stock_action(item) == action;
        if (again) webkit_context_menu_remove(menu_, item);
      }
    }
  }

  // The page may have gone when its row is pressed: then nobody listens any more.
  void Add(const char* label, std::function<void(Page&)> act, bool enabled = true) {
    // The engine tells its rows apart by the names of their actions.
    const std::string name = "page-" + std::to_string(place_);
    const Owned<GSimpleAction> action(g_simple_action_new(name.c_str(), nullptr));
    g_simple_action_set_enabled(action.get(), enabled);
    page_.Calls().On<void(GSimpleAction*, GVariant*)>(
        action.get(), "activate", [&page = page_, act = std::move(act)](auto*, auto*) { act(page); });
    Put(webkit_context_menu_item_new_from_gaction(G_ACTION(action.get()), label, nullptr));
  }

  void AddStock(WebKitContextMenuAction action, const char* label) {
    Put(webkit_context_menu_item_new_from_stock_action_with_label(action, label));
  }

  void Put(WebKitContextMenuItem* item) { webkit_context_menu_insert(menu_, item, place_++); }
  void Separate() {
    if (place_ > 0) Put(webkit_context_menu_item_new_separator());
  }

  // What is left of the engine's own stands behind what has been added.
  void TakeRest() {
    GList* items = webkit_context_menu_get_items(menu_);
    const int all = static_cast<int>(g_list_length(items));
    // A line that the removed left at its beginning is put where the added end, if they need one.
    while (place_ < all) {
      auto* item = WEBKIT_CONTEXT_MENU_ITEM(g_list_nth_data(webkit_context_menu_get_items(menu_), place_));
      if (!item || !webkit_context_menu_item_is_separator(item)) break;
      webkit_context_menu_remove(menu_, item);
    }
    const bool more = static_cast<int>(webkit_context_menu_get_n_items(menu_)) > place_;
    if (more) Separate();
    place_ = static_cast<int>(webkit_context_menu_get_n_items(menu_));
  }

  void AddLink(const std::string& uri) {
    if (page_.MayLeadTo(uri)) {
      Add("Open Link in New Tab", [uri](Page& page) { page.OpenChosen(uri, LinkPlace::TabBehind); });
      Add("Open Link in New Window", [uri](Page& page) { page.OpenChosen(uri, LinkPlace::PlainWindow); });
      Separate();
      Add("Save Link As...", [uri](Page& page) { SaveLink::Ask(page, uri); });
    }
    AddStock(WEBKIT_CONTEXT_MENU_ACTION_COPY_LINK_TO_CLIPBOARD, "Copy Link Address");
  }

  void AddPicture(const std::string& uri) {
    Separate();
    if (page_.MayLeadTo(uri)) {
      Add("Open Picture in New Tab", [uri](Page& page) { page.OpenChosen(uri, LinkPlace::TabBehind); });
      Add("Save Picture As...", [uri](Page& page) { SaveLink::Ask(page, uri); });
    } else {
      // What stands in the page itself goes straight to the folder for downloads.
      AddStock(WEBKIT_CONTEXT_MENU_ACTION_DOWNLOAD_IMAGE_TO_DISK, "Save Picture");
    }
    AddStock(WEBKIT_CONTEXT_MENU_ACTION_COPY_IMAGE_TO_CLIPBOARD, "Copy Picture");
    AddStock(WEBKIT_CONTEXT_MENU_ACTION_COPY_IMAGE_URL_TO_CLIPBOARD, "Copy Picture Address");
  }

  // What is searched for isn't the page's choice: the words, and nothing that they may mean besides.
  void AddSearch(const std::string& words) {
    const std::string uri = page_.World().FromTyped("? " + words).uri;
    if (!page_.MayLeadTo(uri)) return;
    Separate();
    const std::string shown =
        Text::Length(words) > LongestWords ? Text::Left(words, LongestWords) + "…" : words;
    // An underscore would be a key's mark.
    std::string label = "Search for \"";
    for (const char c : shown) label += c == '_' ? std::string("__") : std::string(1, c);
    Add((label + "\"").c_str(), [uri](Page& page) { page.OpenChosen(uri, LinkPlace::TabInFront); });
  }

  void AddWays() {
    WebKitWebView* view = page_.View();
    const auto step = [](void (*go)(WebKitWebView*)) {
      return [go](Page& page) {
        page.Command();
        go(page.View());
      };
    };
    Add("Back", step(webkit_web_view_go_back), webkit_web_view_can_go_back(view));
    Add("Forward", step(webkit_web_view_go_forward), webkit_web_view_can_go_forward(view));
    if (page_.Load().Busy())
      Add("Stop", [](Page& page) { page.Load().Stop(); });
    else
      Add("Refresh", [](Page& page) {
        page.Command();
        page.Load().Again();
      });
  }

  void AddSource() {
    const std::string uri = page_.Address();
    if (page_.MayLeadTo(uri))
      Add("View Source", [uri](Page& page) { page.Load().Start({"view-source:" + uri, {}, true}); });
  }

  Page& page_;
  WebKitContextMenu* menu_;
  int place_ = 0;  // of the next row
};

}  // namespace

namespace PageMenu {

void Attach(Page& page, WebKitWebView* view) {
  // The page answers in the order in which it is asked, so the words are there before the menu.
  const auto words = std::make_shared<std::string>();
  const auto ask = [&page, view, words] {
    words->clear();
    webkit_web_view_evaluate_javascript(view, SelectedWords, -1, "marlowick", nullptr, nullptr,
                                        Callbacks::Ended,
                                        page.Calls().Ending([words](GObject* asked, GAsyncResult* result) {
                                          *words = WordsOf(asked, result);
                                        }));
  };
  page.Calls().On<gboolean(GtkWidget*, GdkEventButton*)>(view, "button-press-event",
                                                         [ask](auto*, GdkEventButton* event) {
                                                           if (event->button == GDK_BUTTON_SECONDARY) ask();
                                                           return FALSE;
                                                         });
  page.Calls().On<gboolean(GtkWidget*)>(view, "popup-menu", [ask](auto*) {
    ask();
    return FALSE;
  });
  page.Calls().On<gboolean(WebKitWebView*, WebKitContextMenu*, GdkEvent*, WebKitHitTestResult*)>(
      view, "context-menu", [&page, words](auto*, WebKitContextMenu* menu, auto*, WebKitHitTestResult* hit) {
        Menu(page, menu).Fill(hit, *words);
        return FALSE;
      });
}

}  // namespace PageMenu
