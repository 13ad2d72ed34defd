#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

// Spoils a few bytes of good files. The same seed spoils alike.
class Spoiler {
 public:
  explicit Spoiler(uint32_t seed) : random_(seed) {}

  size_t Below(size_t limit) { return random_() % std::max<size_t>(limit, 1); }
  const std::string& One(const std::vector<std::string>& of) { return of[Below(of.size())]; }
  // Bytes are changed, preferably at the start, to anything or to what lies at the edges; pieces are taken
  // out, doubled, or cut off.
  std::string Spoil(std::string content);

 private:
  std::mt19937 random_;
};
