#pragma once

#include <time.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

// The processor time of this thread in microseconds: what else the machine does costs none of it.
inline double Now(clockid_t clock = CLOCK_THREAD_CPUTIME_ID) {
  timespec time{};
  clock_gettime(clock, &time);
  return static_cast<double>(time.tv_sec) * 1e6 + static_cast<double>(time.tv_nsec) / 1e3;
}

// For Medians: the time that a user waits, with what the disk takes and what else the machine does.
constexpr clockid_t WallTime = CLOCK_MONOTONIC;

// Median times of several ways to do something, in microseconds. Each round runs all of them in turn, so that
// a slower moment falls on all alike.
inline std::vector<double> Medians(int rounds, const std::vector<std::function<void()>>& ways,
                                   clockid_t clock = CLOCK_THREAD_CPUTIME_ID) {
  std::vector<std::vector<double>> times(ways.size());
  for (int round = 0; round <= rounds; ++round)
    for (size_t i = 0; i < ways.size(); ++i) {
      const double start = Now(clock);
      ways[i]();
      const double time = Now(clock) - start;
      if (round > 0) times[i].push_back(time);  // the first round warms up
    }
  std::vector<double> medians;
  for (auto& of_one : times) {
    std::nth_element(of_one.begin(), of_one.begin() + rounds / 2, of_one.end());
    medians.push_back(of_one[static_cast<size_t>(rounds / 2)]);
  }
  return medians;
}

// Prints what was measured, a line each, and remembers whether every bound was kept.
class Report {
 public:
  void Ratio(const std::string& name, double ratio, double bound) {
    const bool kept = ratio <= bound;
    if (!kept) missed_ = true;
    std::printf("%s: ratio %.2f (bound %.2f) %s\n", name.c_str(), ratio, bound, kept ? "ok" : "MISSED");
  }
  void Bound(const std::string& name, double value, double bound, const char* unit) {
    const bool kept = value <= bound;
    if (!kept) missed_ = true;
    std::printf("%s: %.3f %s (bound %.2f) %s\n", name.c_str(), value, unit, bound, kept ? "ok" : "MISSED");
  }
  // A figure without a bound.
  void Figure(const std::string& name, double value, const char* unit) const {
    std::printf("%s: %.1f %s\n", name.c_str(), value, unit);
  }
  // What main returns.
  int Status() const { return missed_ ? 1 : 0; }

 private:
  bool missed_ = false;
};
