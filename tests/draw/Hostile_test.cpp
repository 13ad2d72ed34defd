#include <gtest/gtest.h>

#include "fakes/HostileFiles.h"
#include "fakes/HostileInputs.h"

namespace {

// A short run with the same inputs every time; tests/fuzz has a longer one.
TEST(Hostile, SpoiltFilesAreRefusedOrRead) {
  const HostileInputs::Counts counts = HostileInputs(1).Run(4000L);
  EXPECT_GT(counts.Taken, 100);
  EXPECT_GT(counts.Pictures - counts.Taken, 1000);
  EXPECT_GT(counts.IniFiles, 100);
}

TEST(Hostile, SpoiltFilesOfAWholeProgramAreRefusedOrRead) {
  HostileFiles files(1);
  for (int i = 0; i < 1500; ++i) files.TryOne();
  for (const HostileFiles::Kind& kind : files.Kinds()) {
    EXPECT_GT(kind.tried, 50) << kind.name;
    EXPECT_LT(kind.refused, kind.tried) << kind.name;
  }
}

}  // namespace
