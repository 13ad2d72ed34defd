#include "gtk/base/ProgramLine.h"

#include <gtest/gtest.h>

#include "fakes/FakeDesktop.h"
#include "platform/Failure.h"

namespace {

using Words = std::vector<std::string>;

TEST(ProgramLine, IsAProgramsPathFirst) {
  const TemporaryFolder folder;
  for (const char* name : {"My Editor", "it's \"new\"", "a\\b", "plain"}) {
    folder.Write(name, "");
    const std::string path = folder.path + "/" + name;
    EXPECT_EQ(TakeApart(path), Words{path});
  }
  // As the program's own paths are joined, and in another case.
  EXPECT_EQ(TakeApart(folder.path + "\\my editor"), Words{folder.path + "/My Editor"});
}

TEST(ProgramLine, IsReadAsWordsWhereNoFileIsCalledSo) {
  const TemporaryFolder folder;
  folder.Write("My Editor", "");
  EXPECT_EQ(TakeApart("'" + folder.path + "/My Editor' -n \"a b\" c\\ d"),
            (Words{folder.path + "/My Editor", "-n", "a b", "c d"}));
  EXPECT_EQ(TakeApart(folder.path), Words{folder.path}) << "a folder is no program";
  EXPECT_EQ(TakeApart("ls -l"), (Words{"ls", "-l"}));
  for (const char* line : {"", "  ", "'no end"}) EXPECT_THROW(TakeApart(line), Failure) << line;
}

}  // namespace
