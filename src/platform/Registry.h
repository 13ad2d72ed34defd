#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

// What programs look up about the machine, as keys with named values. A small table: the platform fills it
// with what it knows. Names are found without regard to case.
class Registry {
 public:
  static constexpr int32_t HKEY_LOCAL_MACHINE = INT32_MIN + 2;  // 0x80000002
  static constexpr uint32_t REG_SZ = 1, REG_DWORD = 4;
  // Results of the operations.
  static constexpr long Success = 0, FileNotFound = 2, InvalidHandle = 6, MoreData = 234;

  struct Value {
    int32_t Root = HKEY_LOCAL_MACHINE;
    std::string Key;
    std::string Name;
    uint32_t Type = REG_SZ;
    std::string Data;  // bytes; a text ends with a zero, a number has its lowest byte first
  };

  Registry() = default;
  explicit Registry(std::vector<Value> values) : values_(std::move(values)) {}

  // Handles are never 0.
  long RegOpenKeyExA(int32_t root, const std::string& key, uint32_t access, long& handle) const;
  // `buffer` and `size` say how much is taken; `size` then tells how much there is.
  long RegQueryValueExA(long handle, const std::string& name, uint32_t& type, std::string& buffer,
                        uint32_t& size) const;
  long RegCloseKey(long handle) const;

 private:
  bool IsHandle(long handle) const;

  std::vector<Value> values_;  // a key's handle is the place of its first value, counted from 1
};
