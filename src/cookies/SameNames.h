#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "platform/Text.h"

// A list of cookies to look names up in. Two cookies are the same when their names are, in lower case and
// whole.
class SameNames {
 public:
  template <class List>
  explicit SameNames(const List& names) {
    for (const std::string& name : names) ++counts_[Text::LowerCase(name)];
  }

  // How many of the list are the same as this one.
  size_t Count(const std::string& name) const {
    const auto found = counts_.find(Text::LowerCase(name));
    return found == counts_.end() ? 0 : found->second;
  }
  bool Has(const std::string& name) const { return Count(name) > 0; }

 private:
  std::unordered_map<std::string, size_t> counts_;
};
