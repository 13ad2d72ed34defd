#pragma once

#include <functional>
#include <set>
#include <string>
#include <vector>

#include "platform/CookieCache.h"
#include "platform/Failure.h"

// A cache with what the test puts in.
class FakeCookieCache : public CookieCache {
 public:
  struct Entry {
    std::string name;
    unsigned type = NormalCacheEntry;
  };

  void Walk(const Visit& visit) override {
    ++walks;
    if (during_walk) during_walk();
    for (size_t i = 0; i < entries.size(); ++i) {
      if (i == fails_behind) throw Failure("The cache can't be read any further");
      visit(entries[i].name, entries[i].type);
    }
  }

  void Delete(const std::vector<std::string>& source_names) override {
    for (const std::string& name : source_names) {
      deleted.push_back(name);
      if (!refused.contains(name))
        std::erase_if(entries, [&name](const Entry& entry) { return entry.name == name; });
    }
  }

  void Set(const std::vector<std::string>& names) {
    entries.clear();
    for (const std::string& name : names) entries.push_back({name});
  }
  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const Entry& entry : entries) names.push_back(entry.name);
    return names;
  }

  std::vector<Entry> entries;
  std::set<std::string> refused;     // can't be deleted
  size_t fails_behind = ~size_t{0};  // so many entries
  std::function<void()> during_walk;
  std::vector<std::string> deleted;  // what was asked, in order
  int walks = 0;
};
