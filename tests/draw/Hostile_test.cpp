#include <gtest/gtest.h>

#include "fakes/HostileInputs.h"

namespace {

// A short run with the same inputs every time; tests/fuzz has a longer one.
TEST(Hostile, SpoiltFilesAreRefusedOrRead) {
  const HostileInputs::Counts counts = HostileInputs(1).Run(4000L);
  EXPECT_GT(counts.Taken, 100);
  EXPECT_GT(counts.Pictures - counts.Taken, 1000);
  EXPECT_GT(counts.IniFiles, 100);
}

}  // namespace
