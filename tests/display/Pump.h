#pragma once

#include <glib.h>
#include <gtest/gtest.h>

#include <chrono>
#include <functional>

inline void PumpUntil(const std::function<bool()>& done) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  while (!done() && std::chrono::steady_clock::now() < end)
    if (!g_main_context_iteration(nullptr, FALSE)) g_usleep(1000);
  EXPECT_TRUE(done());
}

inline void PumpFor(int milliseconds) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
  PumpUntil([end] { return std::chrono::steady_clock::now() >= end; });
}

inline void Pump() {
  while (g_main_context_iteration(nullptr, FALSE)) {
  }
}
