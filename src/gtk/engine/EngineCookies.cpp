#include "gtk/engine/EngineCookies.h"

#include <algorithm>
#include <utility>

#include "gtk/engine/store/CookieName.h"
#include "gtk/engine/store/CookieStore.h"
#include "platform/Failure.h"

namespace {

// The engine says yes to the deletion of a cookie whose value has changed since it was listed, and leaves it.
// So what was deleted is looked for again; a page that sets it over and over isn't waited for.
constexpr int MostLooks = 3;

// How many deletions are asked for at once: enough that none waits for the one before it.
constexpr size_t AtOnce = 200;

}  // namespace

EngineCookies::EngineCookies(Ground ground, Callbacks::Runner runner)
    : ground_(std::move(ground)), manager_(Share(ground_.manager)), callbacks_(std::move(runner)) {}

void EngineCookies::Walk(const Visit& visit) {
  if (std::exchange(walked_, true)) {
    for (const auto& [name, cookie] : Ask()) visit(name, NormalCacheEntry);
    return;
  }
  std::vector<std::string> names = CookiesOnDisk(ground_.store);
  std::sort(names.begin(), names.end());
  for (const std::string& name : names) visit(name, NormalCacheEntry);
}

void EngineCookies::Delete(const std::vector<std::string>& source_names) {
  Skipping([&] {
    for (int look = 0; look < MostLooks; ++look) {
      const Cookies cookies = Ask();
      std::vector<SoupCookie*> present;
      for (const std::string& name : source_names) {
        const auto [first, last] = cookies.equal_range(name);
        for (auto cookie = first; cookie != last; ++cookie) present.push_back(cookie->second.get());
      }
      if (present.empty()) return;
      DeleteAll(present);
    }
  });
}

EngineCookies::Cookies EngineCookies::Ask() {
  struct Answer {
    bool there = false;
    std::string error;
    std::vector<Cookie> cookies;
  };
  // The engine may answer when nobody waits any more.
  const auto answer = std::make_shared<Answer>();
  webkit_cookie_manager_get_all_cookies(manager_.get(), nullptr, &Callbacks::Ended,
                                        callbacks_.Ending([answer](GObject* source, GAsyncResult* result) {
                                          GError* error = nullptr;
                                          GList* list = webkit_cookie_manager_get_all_cookies_finish(
                                              WEBKIT_COOKIE_MANAGER(source), result, &error);
                                          for (const GList* at = list; at; at = at->next)
                                            answer->cookies.emplace_back(static_cast<SoupCookie*>(at->data));
                                          g_list_free(list);
                                          if (const OwnedError reason{error}) answer->error = reason->message;
                                          answer->there = true;
                                        }));
  ground_.wait([answer] { return answer->there; });
  if (!answer->there) throw Failure("The engine doesn't say which cookies it has");
  if (!answer->error.empty()) throw Failure("The engine can't list its cookies: " + answer->error);

  Cookies cookies;
  const bool session_lives = ground_.has_pages();
  for (Cookie& cookie : answer->cookies) {
    if (!session_lives && !soup_cookie_get_expires(cookie.get())) continue;
    std::string name =
        CookieName(TextOf(soup_cookie_get_name(cookie.get())), TextOf(soup_cookie_get_domain(cookie.get())),
                   TextOf(soup_cookie_get_path(cookie.get())));
    cookies.emplace(std::move(name), std::move(cookie));
  }
  return cookies;
}

void EngineCookies::DeleteAll(const std::vector<SoupCookie*>& cookies) {
  for (size_t begin = 0; begin < cookies.size(); begin += AtOnce) {
    const size_t end = std::min(begin + AtOnce, cookies.size());
    const auto open = std::make_shared<size_t>(end - begin);
    for (size_t i = begin; i < end; ++i)
      webkit_cookie_manager_delete_cookie(manager_.get(), cookies[i], nullptr, &Callbacks::Ended,
                                          // Whatever it answers: the next look shows what has become of it.
                                          callbacks_.Ending([open](GObject* source, GAsyncResult* result) {
                                            webkit_cookie_manager_delete_cookie_finish(
                                                WEBKIT_COOKIE_MANAGER(source), result, nullptr);
                                            --*open;
                                          }));
    ground_.wait([open] { return *open == 0; });
    if (*open > 0) throw Failure("The engine doesn't delete its cookies");
  }
}
