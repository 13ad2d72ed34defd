// How long the engine takes with a thousand real cookies. Prints what is listed and deleted, in milliseconds.

#include <webkit2/webkit2.h>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "Bench.h"
#include "gtk/engine/EngineCookies.h"
#include "gtk/window/Waiting.h"

namespace {

constexpr int Count = 1000;

// Through the engine's own door, so that they are in its memory and in the store.
void Fill(WebKitCookieManager* manager, Waiting& waiting) {
  int open = Count;
  for (int i = 0; i < Count; ++i) {
    SoupCookie* cookie =
        soup_cookie_new(("session_" + std::to_string(i)).c_str(), "value", "site.test", "/", 1'000'000);
    webkit_cookie_manager_add_cookie(
        manager, cookie, nullptr, +[](GObject*, GAsyncResult*, gpointer left) { --*static_cast<int*>(left); },
        &open);
    soup_cookie_free(cookie);
  }
  waiting.For([&open] { return open == 0; });
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2 || !gtk_init_check(nullptr, nullptr)) return 2;  // a folder for the engine's data
  const std::string folder = argv[1];
  WebKitWebsiteDataManager* data = webkit_website_data_manager_new("base-data-directory", argv[1],
                                                                   "base-cache-directory", argv[1], nullptr);
  WebKitWebContext* context = webkit_web_context_new_with_website_data_manager(data);
  WebKitCookieManager* manager = webkit_web_context_get_cookie_manager(context);
  webkit_cookie_manager_set_persistent_storage(manager, (folder + "/cookies.sqlite").c_str(),
                                               WEBKIT_COOKIE_PERSISTENT_STORAGE_SQLITE);
  Waiting waiting;
  Fill(manager, waiting);
  EngineCookies cookies({manager, folder + "/cookies.sqlite", [] { return true; },
                         [&waiting](const std::function<bool()>& done) { waiting.For(done); }},
                        [](const std::function<void()>& handler) { handler(); });

  std::vector<std::string> names;
  const auto walk = [&] {
    names.clear();
    cookies.Walk([&names](std::string_view name, unsigned) { names.emplace_back(name); });
  };
  const auto milliseconds = [](double begin) { return (Now(WallTime) - begin) / 1000; };
  double begin = Now(WallTime);
  walk();
  std::printf("baseline %zu %.1f\n", names.size(), milliseconds(begin));
  begin = Now(WallTime);
  walk();
  std::printf("scan %zu %.1f\n", names.size(), milliseconds(begin));
  begin = Now(WallTime);
  cookies.Delete(names);
  std::printf("deletion %zu %.1f\n", names.size(), milliseconds(begin));
  walk();
  std::printf("left %zu 0\n", names.size());
  return 0;
}
