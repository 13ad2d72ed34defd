#include "gtk/page/PageHistory.h"

#include <memory>
#include <string>

#include "gtk/page/Page.h"
#include "gtk/page/text/HistoryBytes.h"
#include "platform/Failure.h"
#include "platform/WebAddress.h"

namespace {

struct UnreferenceState {
  void operator()(WebKitWebViewSessionState* state) const { webkit_web_view_session_state_unref(state); }
};
using State = std::unique_ptr<WebKitWebViewSessionState, UnreferenceState>;

}  // namespace

namespace PageHistory {

KeptPage Take(Page& page) {
  if (page.Closed()) throw Failure("The page is closed");
  KeptPage kept{page.Address(), page.Title(), {}};
  WebKitWebView* view = page.PresentView();
  if (!view) return kept;
  const State state(webkit_web_view_get_session_state(view));
  GBytes* bytes = webkit_web_view_session_state_serialize(state.get());
  gsize size = 0;
  const auto* data = static_cast<const char*>(g_bytes_get_data(bytes, &size));
  if (size > 0) kept.History.assign(data, size);
  g_bytes_unref(bytes);
  return kept;
}

KeptPage Filter(KeptPage page, KeptPage::Where where) {
  if (page.Address.empty()) throw Failure("There is no page yet");
  if (where == KeptPage::Where::OnDisk && WebAddress::WithoutUser(page.Address) != page.Address)
    throw Failure("An address with a user's name or password isn't kept");
  page.History = HistoryBytes::Clean(page.History, page.Address, where);
  return page;
}

void Give(Page& page, const KeptPage& kept) {
  const std::string history = HistoryBytes::Clean(kept.History, kept.Address, KeptPage::Where::InMemory);
  if (history.empty()) return;
  GBytes* bytes = g_bytes_new(history.data(), history.size());
  const State state(webkit_web_view_session_state_new(bytes));
  g_bytes_unref(bytes);
  if (state) webkit_web_view_restore_session_state(page.View(), state.get());
}

void Load(Page& page, const KeptPage& kept) {
  page.JoinSite(kept.Address);
  WebKitBackForwardListItem* shown =
      webkit_back_forward_list_get_current_item(webkit_web_view_get_back_forward_list(page.View()));
  // Where an own page was on show, or the next one was on its way, the history is behind.
  const bool same = shown && TextOf(webkit_back_forward_list_item_get_uri(shown)) == kept.Address;
  if (!same) return page.Load().Start({kept.Address, {}, true});
  page.Command();
  page.Load().Start(kept.Address, [&] { webkit_web_view_go_to_back_forward_list_item(page.View(), shown); });
}

}  // namespace PageHistory
