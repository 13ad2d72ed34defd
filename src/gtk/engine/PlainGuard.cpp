#include "gtk/engine/PlainGuard.h"

#include <cstring>
#include <utility>

namespace {

constexpr const char* Name = "encrypted-only";
constexpr const char* Rule = R"([{"trigger": {"url-filter": "^http://", "resource-type": ["document"],
"load-context": ["top-frame"]}, "action": {"type": "block"}}])";

}  // namespace

void PlainGuard::Prepare(std::function<void()> ready) {
  if (filter_) return ready();
  ready_ = std::move(ready);
  if (store_) return;
  store_.reset(webkit_user_content_filter_store_new(folder_.c_str()));
  GBytes* rule = g_bytes_new_static(Rule, std::strlen(Rule));
  webkit_user_content_filter_store_save(store_.get(), Name, rule, nullptr, Callbacks::Ended,
                                        callbacks_.Ending([this](GObject* store, GAsyncResult* result) {
                                          GError* error = nullptr;
                                          filter_.reset(webkit_user_content_filter_store_save_finish(
                                              WEBKIT_USER_CONTENT_FILTER_STORE(store), result, &error));
                                          const OwnedError reason(error);
                                          if (reason)
                                            g_warning("Pages without encryption can't be told apart: %s",
                                                      reason->message);
                                          settled_ = true;
                                          if (filter_) ready_();
                                          for (const auto& known : std::exchange(waiting_, {})) known();
                                        }));
  g_bytes_unref(rule);
}

void PlainGuard::Await(std::function<void()> known) {
  if (settled_) return known();
  waiting_.push_back(std::move(known));
}

void PlainGuard::Guard(WebKitWebView* view, bool guarded) const {
  WebKitUserContentManager* manager = webkit_web_view_get_user_content_manager(view);
  webkit_user_content_manager_remove_filter_by_id(manager, Name);
  if (guarded && filter_) webkit_user_content_manager_add_filter(manager, filter_.get());
}
