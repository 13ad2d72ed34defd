#include <gtest/gtest.h>

#include <filesystem>

#include "dialogs/AddFavorite.h"
#include "dialogs/OrganizeFav.h"
#include "menus/FavRig.h"

namespace {

struct Dialogs : FavRig {
  Dialogs() { Folder(""); }
  AddFavorite& add() { return program.add_favorite(); }
  OrganizeFav& organize() { return program.organize_fav(); }
  void Do(const std::function<void()>& event) { desktop.Gate.Run(event); }
  void AskToAdd(const std::string& url, const std::string& title) {
    Page(0).url = url;
    Page(0).title = title;
    Do([&] { main().keys.Pressed({"d", true}); });
  }
  void Organize() {
    Do([&] { main().favourites.ShowOrgFavs(); });
    desktop.log.clear();
  }
  // The row of a path below the favourites.
  Controls::Tree::RowId Row(const std::string& path) {
    Controls::Tree& tree = organize().treFavourites;
    Controls::Tree::RowId row = Controls::Tree::Root;
    for (const auto& part : std::filesystem::path(path)) {
      Controls::Tree::RowId found = Controls::Tree::Root;
      for (const auto below : tree.Children(row))
        if (tree.At(below).Name == part) found = below;
      if (found == Controls::Tree::Root) return found;
      row = found;
    }
    return row;
  }
  void Choose(const std::vector<std::string>& paths) {
    std::vector<Controls::Tree::RowId> rows;
    for (const std::string& path : paths) rows.push_back(Row(path));
    Do([&] { organize().treFavourites.Choose(rows); });
  }
  void Press(Controls::CommandButton& button) {
    Do([&] { button.Click(); });
  }
  bool Stands(const std::string& path) const {
    return Favourites::Stands(folder.path + "/favourites/" + path);
  }
  std::string Status() { return organize().labStatus.Caption; }
};

TEST(AddFavorite, WritesTheShortcutThatItsMenuReads) {
  Dialogs rig;
  rig.Folder("Sub");
  rig.AskToAdd("https://page.test/?a=b", "A/B: the \"page\".");
  ASSERT_TRUE(rig.add().Visible);
  EXPECT_EQ(rig.add().txtName.Text(), "A-B- the page");
  EXPECT_EQ(rig.add().txtAddress.Text(), "https://page.test/?a=b");
  Controls::Tree& tree = rig.add().treFolders;
  rig.Do([&] { tree.Choose({tree.Children(tree.Children(0)[0])[0]}); });
  rig.Press(rig.add().cmdAdd);
  EXPECT_FALSE(rig.program.add_favorite.Loaded());
  EXPECT_EQ(rig.folder.Read("favourites/Sub/A-B- the page.url"),
            Favourites::ShortcutText("https://page.test/?a=b"));
  // Without a title it is called by its address; an error page's favourite is the page that was wanted.
  rig.AskToAdd("res://error/#https://gone.test/", "");
  EXPECT_EQ(rig.add().txtName.Text(), "https---gone.test-");
  rig.Press(rig.add().cmdCancel);
  EXPECT_FALSE(rig.program.add_favorite.Loaded());
  rig.Asked();
  rig.AskToAdd("", "No address");
  EXPECT_NE(rig.Asked().back().find("has no address"), std::string::npos);
  rig.Page(0).dead = true;
  rig.AskToAdd("https://x.test/", "x");
  EXPECT_NE(rig.Asked().back().find("has ended"), std::string::npos);
  EXPECT_FALSE(rig.program.add_favorite.Loaded());
}

TEST(AddFavorite, AsksBeforeItReplacesAndLosesNothingWhereItFails) {
  Dialogs rig;
  rig.Link("Home", "https://old.test/");
  rig.AskToAdd("https://new.test/", "home");
  rig.desktop.answers = {Answer::No, Answer::Yes};
  rig.Press(rig.add().cmdAdd);
  EXPECT_TRUE(rig.program.add_favorite.Loaded());
  EXPECT_EQ(rig.folder.Read("favourites/Home.url"), Favourites::ShortcutText("https://old.test/"));
  rig.Press(rig.add().cmdAdd);
  EXPECT_FALSE(rig.program.add_favorite.Loaded());
  EXPECT_EQ(rig.folder.Read("favourites/Home.url"), Favourites::ShortcutText("https://new.test/"));
  EXPECT_FALSE(rig.Stands("home.url"));
  // A folder that can't be written to: the dialog stays with what was typed.
  std::filesystem::create_directory(rig.folder.path + "/favourites/dir.url");
  rig.AskToAdd("https://new.test/", "dir");
  rig.Asked();
  rig.Press(rig.add().cmdAdd);
  EXPECT_NE(rig.Asked().back().find("/favourites/dir.url\": "), std::string::npos);
  EXPECT_TRUE(rig.add().Visible);
  rig.add().txtName.Text = " ... ";
  rig.Press(rig.add().cmdAdd);
  EXPECT_NE(rig.Asked().back().find("needs a name"), std::string::npos);
  // Asked again it is the same dialog, with what was typed.
  rig.add().txtName.Text = "typed";
  rig.AskToAdd("https://other.test/", "Other");
  EXPECT_EQ(rig.add().txtName.Text(), "typed");
}

TEST(AddFavorite, MakesTheFolderThatIsntThere) {
  Dialogs rig;
  std::filesystem::remove(rig.folder.path + "/favourites");
  rig.AskToAdd("https://first.test/", "First");
  rig.Press(rig.add().cmdNewFolder);
  Controls::Tree& tree = rig.add().treFolders;
  rig.Do([&] { tree.Rename(tree.Current(), "../My links"); });
  rig.Press(rig.add().cmdAdd);
  EXPECT_TRUE(rig.Stands("_.-My links/First.url"));
}

TEST(OrganizeFav, ArrangesWhatIsOnTheDisk) {
  Dialogs rig;
  rig.Link("A/one", "https://one.test/");
  rig.Link("A/two", "https://two.test/");
  rig.Folder("B");
  rig.Organize();
  OrganizeFav& dialog = rig.organize();
  EXPECT_EQ(dialog.treFavourites.At(rig.Row("A/one")).Detail, "https://one.test/");
  // Rename in place.
  rig.Do([&] { dialog.treFavourites.Rename(rig.Row("A/one"), "../uno?"); });
  EXPECT_TRUE(rig.Stands("A/_.-uno.url"));
  ASSERT_NE(rig.Row("A/_.-uno"), 0);
  // Another address; what is typed for one row is kept when another is chosen.
  rig.Choose({"A/two"});
  dialog.txtAddress.Text = "https://zwei.test/";
  rig.Choose({"A/_.-uno"});
  EXPECT_EQ(rig.folder.Read("favourites/A/two.url"), Favourites::ShortcutText("https://zwei.test/"));
  EXPECT_EQ(dialog.txtAddress.Text(), "https://one.test/");
  // So is it where the next thing done is another one, and at its own place.
  dialog.txtAddress.Text = "https://uno.test/";
  rig.Do([&] { dialog.treFavourites.Rename(rig.Row("A/_.-uno"), "eins"); });
  EXPECT_EQ(rig.folder.Read("favourites/A/eins.url"), Favourites::ShortcutText("https://uno.test/"));
  EXPECT_FALSE(rig.Stands("A/_.-uno.url"));
  rig.Do([&] { dialog.treFavourites.Rename(rig.Row("A/eins"), "../uno"); });
  // Drag and drop, onto a folder and beside a link, with an address that was only typed.
  rig.Choose({"A/two"});
  dialog.txtAddress.Text = "https://deux.test/";
  rig.Do([&] { dialog.treFavourites.Drop({rig.Row("A/two")}, rig.Row("B")); });
  EXPECT_EQ(rig.folder.Read("favourites/B/two.url"), Favourites::ShortcutText("https://deux.test/"));
  rig.Do([&] { dialog.treFavourites.Drop({rig.Row("A/_.-uno")}, rig.Row("B/two")); });
  EXPECT_TRUE(rig.Stands("B/_.-uno.url"));
  rig.Do([&] { dialog.treFavourites.Drop({rig.Row("B")}, 0); });
  EXPECT_TRUE(rig.Stands("B/two.url"));
  // Over nothing that is there.
  rig.Link("A/two", "https://other.test/");
  rig.Asked();
  rig.Do([&] { dialog.treFavourites.Drop({rig.Row("B/two")}, rig.Row("A")); });
  EXPECT_NE(rig.Asked().back().find("File exists"), std::string::npos);
  EXPECT_EQ(rig.folder.Read("favourites/A/two.url"), Favourites::ShortcutText("https://other.test/"));
  // By the command.
  rig.Choose({"B"});
  rig.desktop.acts = {[](Dialog& chooser) {
    auto& tree = dynamic_cast<Controls::Tree&>(chooser.Part("treFolders"));
    tree.Choose({tree.Children(tree.Children(0)[0])[0]});
    dynamic_cast<Controls::CommandButton&>(chooser.Part("cmdMove")).Click();
  }};
  rig.Press(dialog.cmdMove);
  EXPECT_TRUE(rig.Stands("A/B/two.url"));
  // A new folder, and open in this tab and a new one.
  rig.Choose({"A/B"});
  rig.Press(dialog.cmdNewFolder);
  EXPECT_TRUE(rig.Stands("A/B/New Folder"));
  EXPECT_EQ(dialog.treFavourites.Editing(), rig.Row("A/B/New Folder"));
  rig.Choose({"A/B/two"});
  rig.Asked();
  rig.Press(dialog.cmdOpen);
  EXPECT_EQ(rig.Asked().front(), "Navigate https://deux.test/");
  rig.Press(dialog.cmdOpenTab);
  EXPECT_EQ(rig.main().tabs.WebBrowser1.UBound(), 1);
}

TEST(OrganizeFav, DeletesToTheTrashOrAfterAQuestion) {
  Dialogs rig;
  rig.Link("A/one");
  rig.Link("two");
  rig.Organize();
  rig.desktop.trash = true;
  rig.Choose({"A", "A/one"});
  rig.Press(rig.organize().cmdDelete);
  EXPECT_EQ(rig.Asked(), std::vector<std::string>{"MoveToTrash " + rig.folder.path + "/favourites/A"});
  rig.desktop.trash = false;
  rig.desktop.answers = {Answer::No, Answer::Yes};
  rig.Choose({"two"});
  rig.Press(rig.organize().cmdDelete);
  EXPECT_TRUE(rig.Stands("two.url"));
  rig.Press(rig.organize().cmdDelete);
  EXPECT_FALSE(rig.Stands("two.url"));
}

TEST(OrganizeFav, PutsRightWhatOtherProgramsWrote) {
  Dialogs rig;
  rig.Link("good");
  rig.folder.Write("favourites/sub/other.url",
                   "[InternetShortcut]\r\nIDList=\r\nURL=https://other.test/\r\n");
  rig.folder.Write("favourites/none.url", "[InternetShortcut]\r\n");
  rig.Organize();
  EXPECT_NE(rig.Status().find("2 links have no address"), std::string::npos);
  EXPECT_TRUE(rig.organize().cmdRepair.Visible);
  EXPECT_EQ(rig.organize().treFavourites.At(rig.Row("none")).Picture, Controls::Tree::Icon::Warning);
  rig.Press(rig.organize().cmdRepair);
  EXPECT_EQ(rig.folder.Read("favourites/sub/other.url"), Favourites::ShortcutText("https://other.test/"));
  EXPECT_NE(rig.Status().find("1 link was put right. There is no address at all in \"none\""),
            std::string::npos);
  rig.Choose({"none"});
  rig.organize().txtAddress.Text = "https://typed.test/";
  rig.Press(rig.organize().cmdChange);
  EXPECT_EQ(rig.folder.Read("favourites/none.url"), Favourites::ShortcutText("https://typed.test/"));
}

TEST(OrganizeFav, ImportsWithProgressAndExportsTheSame) {
  Dialogs rig;
  std::string html = "<DL><p>";
  for (int i = 0; i < 300; ++i) {
    const std::string number = std::to_string(i);
    html += "<DT><A HREF=\"https://" + number + ".test/\">Link " + number + "</A>\n";
  }
  rig.folder.Write("mine.html", html + "<DT><A HREF=\"javascript:1\">s</A></DL>");
  rig.Organize();
  rig.desktop.files = {rig.folder.path + "/mine.html", rig.folder.path + "/mine.html",
                       rig.folder.path + "/out.html", rig.folder.path + "/out.html"};
  // Cancelled: nothing of it is left.
  rig.Press(rig.organize().cmdImport);
  rig.desktop.Advance(2);
  EXPECT_TRUE(rig.organize().barImport.Visible);
  EXPECT_GT(rig.organize().barImport.Value, 0);
  rig.Press(rig.organize().cmdStop);
  EXPECT_NE(rig.Status().find("cancelled"), std::string::npos);
  EXPECT_TRUE(std::filesystem::is_empty(rig.folder.path + "/favourites"));
  rig.Press(rig.organize().cmdImport);
  rig.desktop.Advance(100);
  EXPECT_EQ(rig.Status(), "Imported 300 links into \"mine\". Left out: 1 script that is no page.");
  EXPECT_TRUE(rig.Stands("mine/Link 299.url"));
  EXPECT_FALSE(rig.organize().barImport.Visible);
  rig.Press(rig.organize().cmdExport);
  const std::string out = rig.folder.Read("out.html");
  EXPECT_NE(out.find("<DT><A HREF=\"https://299.test/\">Link 299</A>"), std::string::npos);
  EXPECT_EQ(out.find("javascript"), std::string::npos);
  // A file that is there isn't replaced unasked.
  rig.folder.Write("out.html", "mine");
  rig.desktop.answers = {Answer::No};
  rig.Press(rig.organize().cmdExport);
  EXPECT_EQ(rig.folder.Read("out.html"), "mine");
  // What is no such file is told of.
  rig.folder.Write("page.html", "<p>page");
  rig.desktop.files = {rig.folder.path + "/page.html"};
  rig.Asked();
  rig.Press(rig.organize().cmdImport);
  EXPECT_NE(rig.Asked().back().find("page.html\": there is no list of bookmarks"), std::string::npos);
}

}  // namespace
