#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

// What the browser element keeps for sites, as entries of a cache.
class CookieCache {
 public:
  // Bit 0 of an entry's type; entries without it are none of the program's.
  static constexpr unsigned NormalCacheEntry = 1;

  using Visit = std::function<void(std::string_view source_name, unsigned type)>;

  virtual ~CookieCache() = default;

  // Visits all entries, those of an unchanged cache in the same order each time. Fails where the cache can't
  // be read any further; what was visited by then stands.
  virtual void Walk(const Visit& visit) = 0;

  // Deletes entries, the first one first, by the source names that a walk gave them. Never fails: names that
  // aren't there are passed over, and what can't be deleted is met by the next walk. What is deleted is so on
  // the disk when this returns.
  virtual void Delete(const std::vector<std::string>& source_names) = 0;
};
