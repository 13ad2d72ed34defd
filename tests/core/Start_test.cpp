#include <gtest/gtest.h>

#include <algorithm>

#include "core/Program.h"
#include "core/frmDummy.h"
#include "core/frmMain.h"
#include "core/frmSplash.h"
#include "fakes/FakeDesktop.h"

namespace {

TEST(Start, BringsUpTheFirstTabAndLeavesInOrder) {
  const ProgramFolder folder;
  FakeDesktop desktop(folder.path);
  Program program(desktop);
  program.Start();
  EXPECT_FALSE(program.splash.Loaded());
  EXPECT_TRUE(program.dummy.Loaded());
  EXPECT_EQ(desktop.log.front(), "GoHome");
  EXPECT_THROW(program.dummy.Unload(), ProcessEnded);
}

}  // namespace
