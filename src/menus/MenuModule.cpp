#include "menus/MenuModule.h"

#include <array>
#include <string_view>

#include "cookies/frmCookies.h"
#include "core/Conversions.h"
#include "core/Program.h"
#include "core/frmDummy.h"
#include "core/frmMain.h"
#include "dialogs/frmAbout.h"
#include "dialogs/frmOptions.h"
#include "menus/frmLaunch.h"
#include "menus/frmMenu.h"

namespace {

constexpr const char* Title = "Marlowick";

void Notice(frmMain& main, const std::string& text) { main.program.desktop.MsgBox(text, Buttons::Ok, Title); }

std::string OwnFile(frmMain& main, const char* name) {
  return "\"" + HostPath(main.program.AppPath + "\\" + name) + "\"";
}

Browser& Shown(frmMain& main) { return main.tabs.WebBrowser1(main.tabs.CurrentTab); }

// A command that fails because a page has gone: the user is told, and keeps the other tabs.
template <class Action>
void Telling(frmMain& main, Action&& action) {
  try {
    action();
  } catch (const Failure& failure) {
    Notice(main, std::string("That can't be done: ") + failure.what() +
                     ".\n\nThe page may have ended. Refresh it, or choose another tab.");
  }
}

template <class Action>
void AskPage(frmMain& main, Action&& action) {
  Telling(main, [&] { action(Shown(main)); });
}

void Execute(frmMain& main, long command, long option) {
  AskPage(main, [&](Browser& B) { B.ExecWB(command, option); });
}

// For what needs the keyboard on the page first.
template <class Action>
void AskFocusedPage(frmMain& main, Action&& action) {
  main.SetFocus();
  AskPage(main, [&](Browser& B) {
    B.SetFocus();
    action(B);
  });
}

// A dialog that isn't modal; one that stands already comes to the front.
template <class Form>
void Present(Slot<Form>& slot) {
  Form& form = slot();
  form.Show();
  form.SetFocus();
}

struct Command {
  std::string_view Caption;
  void (*Run)(frmMain& main);
};

// In the order of comparison.
constexpr std::array<Command, 29> Commands = {{
    {"new tab",
     [](frmMain& main) {
       // Fails beside a page that closed itself, whose button the new one can't stand next to.
       Telling(main, [&] {
         main.tabs.AddTab(main.program.preferences.DefaultPage);
         main.address.AskForAddress();
       });
     }},
    {"new window", [](frmMain& main) { AskFocusedPage(main, [](Browser& B) { B.OpenWindow(); }); }},
    {"open...",
     [](frmMain& main) {
       Skipping([&] {
         const std::string FileName = main.program.desktop.ShowOpen(
             "Open Local Web Page", "Web Pages (*.htm;*.html)|*.htm;*.html|All files (*.*)|*.*");
         // Always the first tab, whichever is on show.
         if (!FileName.empty()) main.tabs.WebBrowser1(0).Navigate(FileName);
       });
     }},
    {"restore tab layout...",
     [](frmMain& main) {
       Skipping([&] {
         const std::string FileName = main.program.desktop.ShowOpen(
             "Open Tab Layout", "Tab Layouts (*.tab)|*.tab|All files (*.*)|*.*");
         if (!FileName.empty()) main.layouts.RestoreTabLayout(FileName);
       });
     }},
    {"save tab layout...",
     [](frmMain& main) {
       Skipping([&] {
         const std::string FileName =
             main.program.desktop.ShowSave("Save Tab Layout", "Tab Layouts (*.tab)|*.tab");
         if (!FileName.empty()) main.layouts.SaveTabLayout(FileName);
       });
     }},
    {"save as...", [](frmMain& main) { Execute(main, Browser::SaveAs, Browser::DoDefault); }},
    {"remove tab", [](frmMain& main) { main.toolbar.ClickBar("Del Tab"); }},
    {"page setup...", [](frmMain&) {}},
    {"print...", [](frmMain& main) { AskFocusedPage(main, [](Browser& B) { B.ShowPrint(); }); }},
    {"properties", [](frmMain& main) { AskFocusedPage(main, [](Browser& B) { B.ShowProperties(); }); }},
    {"work offline", [](frmMain& main) { AskPage(main, [](Browser& B) { B.SetOffline(true); }); }},
    {"work online", [](frmMain& main) { AskPage(main, [](Browser& B) { B.SetOffline(false); }); }},
    {"close",
     [](frmMain& main) {
       main.address.SaveComplete();
       main.program.Close();
     }},
    {"cut", [](frmMain& main) { Execute(main, Browser::Cut, Browser::DontPromptUser); }},
    {"copy", [](frmMain& main) { Execute(main, Browser::Copy, Browser::DontPromptUser); }},
    {"paste", [](frmMain& main) { Execute(main, Browser::Paste, Browser::DontPromptUser); }},
    {"select all", [](frmMain& main) { Execute(main, Browser::SelectAll, Browser::DontPromptUser); }},
    {"find (on this page) ...",
     [](frmMain& main) { AskFocusedPage(main, [](Browser& B) { B.ShowFind(); }); }},
    {"forward", [](frmMain& main) { main.toolbar.ClickBar("Forward"); }},
    {"back", [](frmMain& main) { main.toolbar.ClickBar("Back"); }},
    {"stop", [](frmMain& main) { main.toolbar.ClickBar("Stop"); }},
    {"refresh", [](frmMain& main) { main.toolbar.ClickBar("Refresh"); }},
    {"history", [](frmMain& main) { main.toolbar.ClickBar("History"); }},
    {"search", [](frmMain& main) { main.toolbar.ClickBar("Search"); }},
    {"source",
     [](frmMain& main) { AskPage(main, [](Browser& B) { B.Navigate("view-source:" + B.LocationURL()); }); }},
    {"internet options...", [](frmMain& main) { main.program.desktop.ShowInternetOptions(); }},
    {"browser options...", [](frmMain& main) { main.menus.ShowOptions(); }},
    {"cookies...", [](frmMain& main) { main.menus.ShowCookies(); }},
    {"about...", [](frmMain& main) { main.menus.ShowAbout(); }},
}};
static_assert(Commands.back().Run, "a row for each place of the table");

}  // namespace

void MenuModule::ShowMenu(int32_t Left, int32_t Top, const std::string& Items) {
  Program& program = main_.program;
  if (program.menu.MenuLoaded == 1) return;
  std::vector<std::string>& MenuItems = program.menu.MenuItems;
  MenuItems.clear();
  size_t start = 0;
  for (size_t comma; (comma = Items.find(',', start)) != Items.npos; start = comma + 1)
    MenuItems.push_back(Items.substr(start, comma - start));
  MenuItems.push_back(Items.substr(start));
  frmMenu& menu = program.popup_menu();
  menu.Build(Left, Top);
  menu.Show();
}

void MenuModule::MenuCommand(const std::string& Command) {
  for (const auto& [Caption, Run] : Commands)
    if (Command == Caption) return Run(main_);
  const std::string& OpenMenuName = main_.program.menu.OpenMenuName;
  if (OpenMenuName == "tabs") ShowTab(Command);
  if (OpenMenuName == "launch") Launch(Command);
}

// The row of a tab begins with its ordinal among the live ones, and a full stop.
void MenuModule::ShowTab(const std::string& Command) {
  const std::vector<int16_t>& lstMenu = main_.tabs.ListLiveTabs();
  const double n = LeadingNumber(Command.substr(0, Command.find('.') + 1));
  // A tab may have gone while its row was on show.
  if (!(n >= 1 && n <= static_cast<double>(lstMenu.size()))) return;
  main_.tabs.CurrentTab = lstMenu[static_cast<size_t>(n) - 1];
  main_.tabs.FocusPage();
  main_.tabs.UpdateBrowsers();
}

void MenuModule::Launch(const std::string& Command) {
  if (Command == "customise") return ShowLaunchDialog();
  // Above the first entry stand "Customise" and the line.
  const int line = main_.program.menu.MenuItemIndex - 2;
  const std::vector<std::string>& lstLaunchRun = main_.launch.lstLaunchRun;
  if (line < 0 || line >= static_cast<int>(lstLaunchRun.size())) {
    Notice(main_, "The entry \"" + Command +
                      "\" has no command of its own. A comma in a description makes two " +
                      "rows of it: remove it under \"Customise\", and add it without the comma.");
    return;
  }
  const std::string& run = lstLaunchRun[static_cast<size_t>(line)];
  try {
    main_.program.desktop.Shell(run);
  } catch (const Failure& failure) {
    throw Failure("The Launch menu's entry \"" + Command + "\": " + failure.what() +
                  ". Correct its command in " + OwnFile(main_, "launch.dat") + ".");
  }
}

void MenuModule::ShowLaunchDialog() { Present(main_.program.launch); }

void MenuModule::ShowOptions() {
  main_.address.SaveComplete();
  Present(main_.program.options);
}

void MenuModule::ShowAbout() { Present(main_.program.about); }

void MenuModule::ShowCookies() {
  Skipping([this] { main_.cookies.manager().Show(); });
  main_.SetFocus();
}
