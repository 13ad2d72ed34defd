// The parts of dialogs with their real widgets: needs a display.

#include <gtest/gtest.h>
#include <gtk/gtk.h>

#include <functional>
#include <memory>

#include "display/Pump.h"
#include "gtk/dialog/DialogBinder.h"
#include "platform/Events.h"
#include "platform/Failure.h"
#include "platform/dialog/Controls.h"

namespace {

using Strings = std::vector<std::string>;
using Controls::Tree;

constexpr int Many = 10'000;

class Maker : public DialogMaker {
 public:
  std::unique_ptr<DialogHost> MakeDialog(Dialog& dialog) override {
    return std::make_unique<DialogBinder>(dialog, gate, [this] { return owner; });
  }
  Events gate;
  GtkWindow* owner = nullptr;
};

// One part of each kind.
class Parts : public Dialog {
 public:
  explicit Parts(DialogMaker& maker) : Dialog(maker, "Parts") {}

  Controls::TextBox Text1{*this, "Text1"};
  Controls::CheckBox Check1{*this, "Check1"};
  Controls::Group group;
  Controls::OptionButton Option1{*this, "Option1", group}, Option2{*this, "Option2", group};
  Controls::ListBox List1{*this, "List1", {.Sorted = true, .MultiSelect = true}}, List2{*this, "List2"};
  Controls::TabPages Tabs{*this, "Tabs"};
  Controls::Frame Frame1{*this, "Frame1"};
  Controls::Label Label1{*this, "Label1"};
  Controls::CommandButton Command1{*this, "Command1"}, Command2{*this, "Command2"};
  Controls::Link Link1{*this, "Link1"};
  Controls::NumberBox Number1{*this, "Number1", 30, 300};
  Controls::ProgressBar Progress1{*this, "Progress1"};
  Controls::Image Image1{*this, "Image1"};
  Controls::Tree Tree1{*this, "Tree1"};
};

class DialogWidgets : public testing::Test {
 protected:
  void Show() {
    dialog->Show();
    window = nullptr;
    GList* windows = gtk_window_list_toplevels();
    for (GList* at = windows; at; at = at->next)
      if (Name(GTK_WIDGET(at->data)) == "Parts") window = GTK_WIDGET(at->data);
    g_list_free(windows);
    ASSERT_TRUE(window);
    PumpUntil([&] { return gtk_window_is_active(GTK_WINDOW(window)); });
  }
  static std::string Name(GtkWidget* widget) {
    const char* name = gtk_buildable_get_name(GTK_BUILDABLE(widget));
    return name ? name : "";
  }
  GtkWidget* Find(const std::string& name) const { return Below(window, name); }
  static GtkWidget* Below(GtkWidget* widget, const std::string& name) {
    if (Name(widget) == name) return widget;
    if (!GTK_IS_CONTAINER(widget)) return nullptr;
    GtkWidget* found = nullptr;
    GList* children = gtk_container_get_children(GTK_CONTAINER(widget));
    for (GList* at = children; at && !found; at = at->next) found = Below(GTK_WIDGET(at->data), name);
    g_list_free(children);
    return found;
  }
  GtkToggleButton* Toggle(const char* name) const { return GTK_TOGGLE_BUTTON(Find(name)); }
  GtkTreeView* View(const char* name) const { return GTK_TREE_VIEW(Find(name)); }
  GtkTreeSelection* Selection(const char* name) const { return gtk_tree_view_get_selection(View(name)); }
  static int RowsOf(GtkTreeView* view) {
    return gtk_tree_model_iter_n_children(gtk_tree_view_get_model(view), nullptr);
  }
  void Key(const char* name, guint key) const {
    GdkEvent* event = gdk_event_new(GDK_KEY_PRESS);
    event->key.window = GDK_WINDOW(g_object_ref(gtk_widget_get_window(window)));
    event->key.keyval = key;
    gdk_event_set_device(event,
                         gdk_seat_get_keyboard(gdk_display_get_default_seat(gdk_display_get_default())));
    gtk_widget_grab_focus(Find(name));
    gtk_widget_event(window, event);
    gdk_event_free(event);
  }

  Maker maker;
  std::unique_ptr<Parts> dialog = std::make_unique<Parts>(maker);
  GtkWidget* window = nullptr;
};

TEST_F(DialogWidgets, WhatTheProgramSetsIsShownBeforeTheFirstShowingAndAfter) {
  dialog->Text1.Text = "before";
  dialog->Check1.Value = 1;
  dialog->Label1.Caption = "a < b & c";
  Show();
  EXPECT_STREQ(gtk_entry_get_text(GTK_ENTRY(Find("Text1"))), "before");
  EXPECT_TRUE(gtk_toggle_button_get_active(Toggle("Check1")));
  EXPECT_STREQ(gtk_label_get_text(GTK_LABEL(Find("Label1"))), "a < b & c");
  EXPECT_STREQ(gtk_button_get_label(GTK_BUTTON(Find("Command1"))), "_Press");
  EXPECT_FALSE(gtk_toggle_button_get_active(Toggle("Option1")));
  EXPECT_FALSE(gtk_toggle_button_get_active(Toggle("Option2")));

  dialog->Text1.Text = "broken \xff";
  dialog->Check1.Value = 0;
  dialog->Option2.Value = true;
  dialog->Tabs.Tab = 1;
  dialog->Number1.Value = 120;
  dialog->Progress1.Value = 0.5;
  dialog->Command1.Enabled = false;
  dialog->Label1.Visible = false;
  dialog->Caption = "Other";
  dialog->Image1.Picture = std::make_shared<const Bitmap>(Bitmap{2, 1, {0xFFFF0000, 0xFF00FF00}});
  EXPECT_STREQ(gtk_entry_get_text(GTK_ENTRY(Find("Text1"))), "broken \xEF\xBF\xBD");
  EXPECT_EQ(dialog->Text1.Text(), "broken \xff");
  EXPECT_FALSE(gtk_toggle_button_get_active(Toggle("Check1")));
  EXPECT_TRUE(gtk_toggle_button_get_active(Toggle("Option2")));
  EXPECT_EQ(gtk_notebook_get_current_page(GTK_NOTEBOOK(Find("Tabs"))), 1);
  EXPECT_EQ(gtk_spin_button_get_value_as_int(GTK_SPIN_BUTTON(Find("Number1"))), 120);
  EXPECT_EQ(gtk_progress_bar_get_fraction(GTK_PROGRESS_BAR(Find("Progress1"))), 0.5);
  EXPECT_FALSE(gtk_widget_get_sensitive(Find("Command1")));
  EXPECT_FALSE(gtk_widget_get_visible(Find("Label1")));
  EXPECT_STREQ(gtk_window_get_title(GTK_WINDOW(window)), "Other");
  EXPECT_EQ(gtk_image_get_storage_type(GTK_IMAGE(Find("Image1"))), GTK_IMAGE_SURFACE);
  dialog->Image1.Picture = nullptr;
  EXPECT_EQ(gtk_image_get_storage_type(GTK_IMAGE(Find("Image1"))), GTK_IMAGE_EMPTY);

  dialog->Option2.Value = false;
  EXPECT_FALSE(gtk_toggle_button_get_active(Toggle("Option1")));
  EXPECT_FALSE(gtk_toggle_button_get_active(Toggle("Option2")));
  gtk_toggle_button_set_active(Toggle("Option1"), TRUE);
  EXPECT_TRUE(dialog->Option1.Value);
}

TEST_F(DialogWidgets, TheUsersDoingsReachThePartsOnceEach) {
  Strings told;
  const auto tells = [&](const char* what) { return [&told, what] { told.emplace_back(what); }; };
  dialog->Text1.Change = [&] { told.push_back("text " + dialog->Text1.Text()); };
  dialog->Text1.Activate = tells("enter");
  dialog->Check1.Click = tells("check");
  dialog->Option1.Click = tells("option 1");
  dialog->Option2.Click = tells("option 2");
  dialog->Tabs.Click = tells("tabs");
  dialog->Command1.Click = tells("press");
  dialog->Link1.Click = tells("link");
  Show();
  gtk_entry_set_text(GTK_ENTRY(Find("Text1")), "typed");
  gtk_widget_activate(GTK_WIDGET(Find("Text1")));
  gtk_button_clicked(GTK_BUTTON(Find("Check1")));
  gtk_button_clicked(GTK_BUTTON(Find("Option1")));
  gtk_button_clicked(GTK_BUTTON(Find("Option2")));
  gtk_notebook_set_current_page(GTK_NOTEBOOK(Find("Tabs")), 1);
  gtk_button_clicked(GTK_BUTTON(Find("Command1")));
  gtk_button_clicked(GTK_BUTTON(Find("Link1")));
  EXPECT_EQ(told, (Strings{"text typed", "enter", "check", "option 1", "option 2", "tabs", "press", "link"}));
  EXPECT_EQ(dialog->Check1.Value, 1);
  EXPECT_TRUE(dialog->Option2.Value && !dialog->Option1.Value);
  gtk_entry_set_text(GTK_ENTRY(Find("Number1")), "45");
  EXPECT_EQ(dialog->Number1.Value, 45);
}

TEST_F(DialogWidgets, TenThousandRowsAreShownInOneStep) {
  Show();
  int models = 0;
  const auto count = +[](GObject*, GParamSpec*, gpointer data) { ++*static_cast<int*>(data); };
  g_signal_connect(View("List1"), "notify::model", G_CALLBACK(count), &models);
  Strings texts;
  for (int i = 0; i < Many; ++i)
    texts.push_back("Cookie:name" + std::to_string(i * 7919 % Many) + "@host.test/");
  dialog->List1.Fill(texts);
  for (int i = 0; i < 100; ++i) dialog->List1.RemoveItem(0);
  EXPECT_EQ(models, 0);
  Pump();
  EXPECT_EQ(models, 1);
  EXPECT_EQ(RowsOf(View("List1")), Many - 100);

  int clicks = 0;
  dialog->List1.Click = [&] { ++clicks; };
  gtk_tree_selection_select_all(Selection("List1"));
  EXPECT_EQ(dialog->List1.Selection().size(), static_cast<size_t>(Many - 100));
  EXPECT_EQ(clicks, 1);
  g_signal_handlers_disconnect_by_func(View("List1"), reinterpret_cast<gpointer>(count), &models);
}

TEST_F(DialogWidgets, ListsSelectBothWaysAndNothingByTheKeyboardsArrival) {
  dialog->List1.Fill({"b", "a", "c"});
  dialog->List2.Fill({"first", "second"});
  Strings told;
  dialog->List2.Click = [&] { told.push_back("click " + std::to_string(dialog->List2.ListIndex())); };
  dialog->List1.DeleteKey = [&] { told.emplace_back("delete"); };
  dialog->List2.DblClick = [&] { told.emplace_back("act"); };
  Show();
  gtk_widget_grab_focus(Find("List2"));
  Pump();
  EXPECT_EQ(dialog->List2.ListIndex(), -1);
  EXPECT_EQ(gtk_tree_selection_count_selected_rows(Selection("List2")), 0);

  GtkTreePath* second = gtk_tree_path_new_from_indices(1, -1);
  gtk_tree_view_set_cursor(View("List2"), second, nullptr, FALSE);
  gtk_tree_view_row_activated(View("List2"), second, gtk_tree_view_get_column(View("List2"), 0));
  dialog->List1.SetSelected(0, true);
  dialog->List1.SetSelected(2, true);
  EXPECT_EQ(gtk_tree_selection_count_selected_rows(Selection("List1")), 2);
  EXPECT_FALSE(gtk_tree_selection_path_is_selected(Selection("List1"), second));
  gtk_tree_path_free(second);
  Key("List1", GDK_KEY_Delete);
  EXPECT_EQ(told, (Strings{"click 1", "act", "delete"}));
}

TEST_F(DialogWidgets, ATreeShowsOpensFiltersAndRenames) {
  Tree& tree = dialog->Tree1;
  const auto top = tree.Add({.Name = "Folder", .Picture = Tree::Icon::Folder, .CanRename = true});
  const auto page = tree.Add({.Parent = top, .Name = "Page", .Detail = "http://a.test/"});
  tree.Add({.Name = "Last"});
  std::vector<std::pair<int, std::string>> renamed;
  tree.Rename = [&](int row, const std::string& name) { renamed.emplace_back(row, name); };
  Show();
  EXPECT_EQ(RowsOf(View("Tree1")), 2);
  GtkTreePath* first = gtk_tree_path_new_first();
  EXPECT_FALSE(gtk_tree_view_row_expanded(View("Tree1"), first));
  gtk_tree_view_expand_row(View("Tree1"), first, FALSE);
  EXPECT_TRUE(tree.At(top).Expanded);
  tree.SetName(page, "Paper");
  Pump();
  EXPECT_TRUE(gtk_tree_view_row_expanded(View("Tree1"), first));
  tree.Filter = "paper";
  Pump();
  EXPECT_EQ(RowsOf(View("Tree1")), 1);
  tree.Filter = "";
  tree.Choose({top});
  tree.EditName(top);
  Pump();
  GtkWidget* editor = gtk_window_get_focus(GTK_WINDOW(window));
  ASSERT_TRUE(GTK_IS_ENTRY(editor));
  gtk_entry_set_text(GTK_ENTRY(editor), "Renamed");
  g_signal_emit_by_name(editor, "activate");
  EXPECT_EQ(renamed, (decltype(renamed){{top, "Renamed"}}));
  gtk_tree_path_free(first);
}

TEST_F(DialogWidgets, ASizeTellsAndPartsGoWhereTheyArePut) {
  int told = 0;
  dialog->Resize = [&] {
    ++told;
    if (dialog->Width < 9000) dialog->Width = 9000;
    dialog->Frame1.Left = 150;
    dialog->Frame1.Top = 300;
    dialog->Frame1.Width = dialog->Width - 3000;
  };
  Show();
  EXPECT_GE(told, 1);
  gtk_window_resize(GTK_WINDOW(window), 800, 600);
  PumpUntil([&] { return dialog->Width == (800 + 8) * 15; });
  EXPECT_EQ(dialog->Height, (600 + 27) * 15);
  int width = 0;
  gtk_widget_get_size_request(Find("Frame1"), &width, nullptr);
  EXPECT_EQ(width, 808 - 200);
  dialog->Width = 9000;
  PumpUntil([&] {
    gtk_window_get_size(GTK_WINDOW(window), &width, nullptr);
    return width == 600 - 8;
  });
}

TEST_F(DialogWidgets, ItTakesTheFocusBackFromItsOwnerAndLetsAModalOneHaveIt) {
  GtkWidget* main = gtk_window_new(GTK_WINDOW_TOPLEVEL);
  gtk_widget_show(main);
  PumpUntil([&] { return gtk_window_is_active(GTK_WINDOW(main)); });
  maker.owner = GTK_WINDOW(main);
  int deactivated = 0;
  dialog->Deactivate = [&] {
    ++deactivated;
    dialog->SetFocus();
  };
  Show();
  gtk_window_present(GTK_WINDOW(main));
  PumpUntil([&] { return deactivated == 1 && gtk_window_is_active(GTK_WINDOW(window)); });

  GtkWidget* box = gtk_dialog_new();
  gtk_window_set_modal(GTK_WINDOW(box), TRUE);
  gtk_window_set_transient_for(GTK_WINDOW(box), OwnerFor(true, GTK_WINDOW(main)));
  EXPECT_EQ(gtk_window_get_transient_for(GTK_WINDOW(box)), GTK_WINDOW(window));
  gtk_widget_show(box);
  PumpUntil([&] { return gtk_window_is_active(GTK_WINDOW(box)); });
  EXPECT_EQ(deactivated, 2);
  gtk_widget_destroy(box);
  dialog.reset();
  gtk_widget_destroy(main);
}

TEST_F(DialogWidgets, ARepaintIsOnTheScreenBeforeItReturns) {
  dialog->Label1.Caption = "Closing down...";
  dialog->Show();
  dialog->Pointer = MousePointer::Hourglass;
  dialog->Refresh();
  Show();
  EXPECT_TRUE(gdk_window_get_cursor(gtk_widget_get_window(window)));
  dialog->Pointer = MousePointer::Default;
  EXPECT_FALSE(gdk_window_get_cursor(gtk_widget_get_window(window)));
}

TEST_F(DialogWidgets, NothingIsLeftOfADialogThatEndsInItsOwnHandler) {
  Show();
  Strings left;
  for (const char* name : {"Parts", "Text1", "List1", "Tree1", "Option1", "Command1"}) {
    g_object_weak_ref(
        G_OBJECT(Find(name)), [](gpointer data, GObject*) { static_cast<Strings*>(data)->pop_back(); },
        &left);
    left.emplace_back(name);
  }
  const std::shared_ptr<Parts> owned = std::move(dialog);
  std::weak_ptr<Parts> gone = owned;
  auto holder = std::make_shared<std::shared_ptr<Parts>>(owned);
  owned->List1.AddItem("a row that never gets shown");
  const_cast<std::shared_ptr<Parts>&>(owned).reset();
  (*holder)->Command1.Click = [&] {
    (*holder)->Visible = false;
    maker.gate.Bury(*holder);
    holder->reset();
  };
  gtk_button_clicked(GTK_BUTTON(Find("Command1")));
  Pump();
  EXPECT_TRUE(gone.expired());
  EXPECT_EQ(left, Strings());
}

TEST_F(DialogWidgets, APartWithoutAWidgetOfItsKindFails) {
  Dialog missing(maker, "Parts"), other(maker, "Parts"), none(maker, "NoLook");
  const Controls::Label nowhere(missing, "Label99");
  const Controls::TextBox label(other, "Label1");
  EXPECT_THROW(missing.Join(), Failure);
  EXPECT_THROW(other.Join(), Failure);
  EXPECT_THROW(none.Join(), Failure);
}

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  gtk_init(&argc, &argv);
  return RUN_ALL_TESTS();
}
