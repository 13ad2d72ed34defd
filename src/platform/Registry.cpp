#include "platform/Registry.h"

#include <algorithm>

#include "platform/Text.h"

bool Registry::IsHandle(long handle) const {
  return handle >= 1 && handle <= static_cast<long>(values_.size());
}

long Registry::RegOpenKeyExA(int32_t root, const std::string& key, uint32_t, long& handle) const {
  for (size_t i = 0; i < values_.size(); ++i) {
    if (values_[i].Root != root || !Text::SameWithoutCase(values_[i].Key, key)) continue;
    handle = static_cast<long>(i) + 1;
    return Success;
  }
  handle = 0;
  return FileNotFound;
}

long Registry::RegQueryValueExA(long handle, const std::string& name, uint32_t& type, std::string& buffer,
                                uint32_t& size) const {
  if (!IsHandle(handle)) return InvalidHandle;
  const Value& opened = values_[static_cast<size_t>(handle) - 1];
  for (const Value& value : values_) {
    if (value.Root != opened.Root || !Text::SameWithoutCase(value.Key, opened.Key) ||
        !Text::SameWithoutCase(value.Name, name))
      continue;
    const size_t room = std::min<size_t>(size, buffer.size());
    type = value.Type;
    size = static_cast<uint32_t>(value.Data.size());
    if (value.Data.size() > room) return MoreData;
    std::copy(value.Data.begin(), value.Data.end(), buffer.begin());
    return Success;
  }
  return FileNotFound;
}

long Registry::RegCloseKey(long handle) const { return IsHandle(handle) ? Success : InvalidHandle; }
