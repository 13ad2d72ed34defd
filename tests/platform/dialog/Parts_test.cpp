#include <gtest/gtest.h>

#include "fakes/FakeDesktop.h"
#include "platform/Failure.h"
#include "platform/dialog/Controls.h"

namespace {

using Strings = std::vector<std::string>;
using Controls::Tree;

class DialogParts : public testing::Test {
 protected:
  TemporaryFolder folder;
  FakeDesktop desktop{folder.path};
  Dialog dialog{desktop, "frmTest"};
};

Strings Texts(const Controls::ListBox& list) {
  Strings texts;
  for (int i = 0; i < list.ListCount(); ++i) texts.push_back(list.List(i));
  return texts;
}

TEST_F(DialogParts, OfAGroupOneOptionIsOnAndTheProgramsSettingClicksToo) {
  Controls::Group group, other;
  Controls::OptionButton first{dialog, "Option1", group}, second{dialog, "Option2", group};
  Controls::OptionButton apart{dialog, "Option3", other};
  Strings clicks;
  first.Click = [&] { clicks.push_back(second.Value ? "first, second still on" : "first"); };
  second.Click = [&] { clicks.push_back(first.Value ? "second, first still on" : "second"); };
  apart.Value = true;
  second.Value = true;
  Press("Option1")(dialog);
  Press("Option1")(dialog);
  EXPECT_EQ(clicks, (Strings{"second", "first"}));
  EXPECT_TRUE(first.Value && !second.Value && apart.Value);
  first.Value = false;
  EXPECT_FALSE(first.Value || second.Value);
}

TEST_F(DialogParts, ASortedListTakesItsRowsInAnyCaseAndKeepsItsIndexOnTheRow) {
  Controls::ListBox list{dialog, "List1", {.Sorted = true, .MultiSelect = true}};
  list.Fill({"pear", "Apple", "fig"});
  EXPECT_EQ(Texts(list), (Strings{"Apple", "fig", "pear"}));
  Select("List1", {1})(dialog);
  list.AddItem("banana");
  EXPECT_EQ(list.List(list.ListIndex()), "fig");
  EXPECT_EQ(list.Selection(), (std::vector<int>{2}));
  list.RemoveItem(0);
  EXPECT_EQ(list.List(list.ListIndex()), "fig");
  list.RemoveItem(1);
  EXPECT_EQ(list.ListIndex(), -1);
  EXPECT_TRUE(list.Selection().empty());
  SelectAll("List1")(dialog);
  EXPECT_EQ(list.Selection(), (std::vector<int>{0, 1}));
  list.Clear();
  EXPECT_EQ(list.ListCount(), 0);
  EXPECT_THROW(list.List(0), Failure);
}

TEST_F(DialogParts, AListOfOneSelectedRowLetsGoOfTheOther) {
  Controls::ListBox list{dialog, "List1"};
  int clicks = 0;
  list.Click = [&] { ++clicks; };
  list.Fill({"z", "a"});
  EXPECT_EQ(Texts(list), (Strings{"z", "a"}));
  EXPECT_EQ(list.ListIndex(), -1);
  Select("List1", {1})(dialog);
  list.SetSelected(0, true);
  EXPECT_EQ(list.Selection(), (std::vector<int>{0}));
  EXPECT_EQ(list.ListIndex(), 0);
  list.SelectAll();
  EXPECT_EQ(list.Selection().size(), 1u);
  EXPECT_THROW(list.Choose({0, 1}, 0), Failure);
  EXPECT_EQ(clicks, 1);
}

TEST_F(DialogParts, ATreeFiltersOpensAndRefusesToMoveARowBelowItself) {
  Tree tree{dialog, "Tree1", true};
  const auto folder_row = [](Tree::RowId parent, const std::string& name) {
    return Tree::Row{.Parent = parent, .Name = name, .CanRename = true, .CanMove = true, .TakesRows = true};
  };
  const auto top = tree.Add(folder_row(Tree::Root, "News"));
  const auto deep = tree.Add(folder_row(top, "World"));
  const auto page =
      tree.Add({.Parent = deep, .Name = "Paper", .Detail = "http://paper.test/", .CanMove = true});
  const auto other = tree.Add(folder_row(Tree::Root, "Other"));

  tree.Filter = "PAPER.test";
  EXPECT_TRUE(tree.Shown(top) && tree.Shown(deep) && tree.Shown(page));
  EXPECT_FALSE(tree.Shown(other));
  tree.Filter = "";
  EXPECT_TRUE(tree.Shown(other));

  tree.Choose({page});
  EXPECT_TRUE(tree.At(top).Expanded && tree.At(deep).Expanded);
  tree.EditName(page);
  EXPECT_EQ(tree.Editing(), Tree::Root);

  std::vector<std::pair<std::vector<int>, int>> drops;
  tree.Drop = [&](const std::vector<int>& rows, int below) { drops.emplace_back(rows, below); };
  tree.Dropped({top}, deep);    // below itself
  tree.Dropped({top}, page);    // beside what is below it
  tree.Dropped({other}, page);  // beside a page
  tree.Dropped({page}, Tree::Root);
  EXPECT_EQ(drops, (decltype(drops){{{other}, deep}, {{page}, Tree::Root}}));

  tree.Remove(top);
  EXPECT_TRUE(tree.Selection().empty());
  EXPECT_THROW(tree.At(page), Failure);
  EXPECT_EQ(tree.Children(Tree::Root), (std::vector<int>{other}));
}

TEST_F(DialogParts, FileListsGoByPatternInTheOrderOfNames) {
  for (const char* name : {"b.url", "A.URL", "c.txt", ".hidden.url", "d.url.bak", "Z/1.url", "y/2.url"})
    folder.Write(name, "");
  Controls::FileListBox files("*.url;c.???");
  files.SetPath(folder.path);
  Strings names;
  for (int i = 0; i < files.ListCount(); ++i) names.push_back(files.List(i));
  EXPECT_EQ(names, (Strings{"A.URL", "b.url", "c.txt"}));

  Controls::DirListBox folders;
  folders.SetPath(folder.path);
  ASSERT_EQ(folders.ListCount(), 2);
  EXPECT_EQ(folders.List(0), folder.path + "\\y");
  files.SetPath(folders.List(1));
  ASSERT_EQ(files.ListCount(), 1);
  EXPECT_EQ(files.List(0), "1.url");
  folders.SetPath(folder.path + "\\nothing");
  EXPECT_EQ(folders.ListCount(), 0);
  EXPECT_THROW(folders.List(0), Failure);
}

TEST_F(DialogParts, ASizeBelowTheLeastIsPushedBackAndPartsAreInPlaceAfterwards) {
  Controls::Frame frame{dialog, "Frame1"};
  dialog.Resize = [&] {
    if (dialog.Width < 5175) dialog.Width = 5175;
    if (dialog.Height < 3510) dialog.Height = 3510;
    frame.Width = dialog.Width - 360;
    frame.Height = dialog.Height - 1095;
  };
  dialog.Show();
  ResizeTo(6000, 1000)(dialog);
  EXPECT_EQ(dialog.Width, 6000);
  EXPECT_EQ(dialog.Height, 3510);
  EXPECT_EQ(frame.Width, 5640);
  EXPECT_EQ(frame.Height, 2415);
}

TEST_F(DialogParts, TheUserReachesOnlyWhatCanBeReached) {
  Controls::CommandButton button{dialog, "Command1"};
  Controls::TextBox box{dialog, "Text1"};
  Strings told;
  button.Click = [&] { told.push_back("click"); };
  box.Change = [&] { told.push_back("change " + box.Text()); };
  dialog.Deactivate = [&] { told.push_back("deactivate"); };
  dialog.LostFocus = [&] { told.push_back("lost focus"); };
  Type("Text1", "a")(dialog);
  Type("Text1", "a")(dialog);
  GoElsewhere()(dialog);
  button.Enabled = false;
  EXPECT_THROW(Press("Command1")(dialog), std::logic_error);
  EXPECT_EQ(told, (Strings{"change a", "deactivate", "lost focus"}));
}

}  // namespace
