#include "dialogs/frmOptions.h"

#include "cookies/frmFilter.h"
#include "core/Program.h"
#include "core/frmMain.h"
#include "platform/Text.h"
#include "platform/scene/Drawing.h"

namespace {

// Of a skin's texts no more is shown than anybody reads.
constexpr size_t LongestText = 1000;  // characters
constexpr int64_t MostPreviewPixels = 8'000'000;

constexpr const char* BuiltIn = "default";

// A number as the file has those of check boxes, with a blank where a minus would stand.
std::string Str(int number) { return " " + std::to_string(number); }

}  // namespace

frmOptions::frmOptions(Program& program) : Dialog(program.desktop, "frmOptions"), program_(program) {
  for (Controls::OptionButton* page : {&Option3, &Option4, &Option5})
    page->Click = [this] { AllowOwnPage(); };
  for (Controls::OptionButton* trap : {&Option10, &Option11, &Option12})
    trap->Click = [this] { Command5.Enabled = false; };
  Option13.Click = [this] { Command5.Enabled = true; };
  List1.Click = [this] { List1_Click(); };
  Command1.Click = [this] { program_.options.Unload(); };
  Command2.Click = [this] { Accept(); };
  Command3.Click = [this] { ClearHistory(); };
  Command4.Click = [this] { ClearAutoComplete(); };
  Command5.Click = [this] { program_.main().cookies.filter().ShowModal(); };
  Deactivate = [this] { Skipping([this] { SetFocus(); }); };
  LostFocus = [this] { SetFocus(); };
}

void frmOptions::Form_Load() {
  const Preferences& now = program_.preferences;
  (now.NewTabMode != 0 ? Option2 : Option1).Value = true;
  Check1.Value = now.HistoryInTab != 0;
  Check2.Value = now.SearchInTab != 0;

  const std::string page = Text::LowerCase(now.DefaultPage);
  if (page == "home") {
    Option3.Value = true;
  } else if (page == "about:blank") {
    Option4.Value = true;
  } else {
    Option5.Value = true;
    Text1.Text = now.DefaultPage;
  }
  Text2.Text = now.SearchPage;
  Check3.Value = now.PaintMode != 0;
  Controls::OptionButton* popups[] = {&Option6, &Option7, &Option8, &Option9};
  if (now.PopupPolicy >= 0 && now.PopupPolicy <= 3) popups[now.PopupPolicy]->Value = true;

  Skipping([this] { Picture1 = program_.desktop.Draws().BuiltInPicture("preview.bmp"); });
  Text::LowerCase(now.SkinFolder) == BuiltIn ? ShowBuiltInSkin() : ShowFolderSkin(now.SkinFolder);
  ListSkins();
  labSkinTemp = now.SkinFolder;

  Check4.Value = now.AutoCompleteOff != 0;
  AllowOwnPage();
  Controls::OptionButton* traps[] = {&Option10, &Option11, &Option12, &Option13};
  if (now.CookieTrapMode >= 0 && now.CookieTrapMode <= 3) traps[now.CookieTrapMode]->Value = true;
}

void frmOptions::ListSkins() {
  Controls::DirListBox Dir1;
  Dir1.SetPath(program_.AppPath + "\\skins");
  std::vector<std::string> names = {"Default"};
  List2 = {BuiltIn};
  for (int i = 0; i < Dir1.ListCount(); ++i)
    Skipping([&] {
      const std::string folder = LastFolderName(Dir1.List(i));
      names.push_back(SkinKey("skins\\" + folder, "name"));
      List2.push_back(folder);
    });
  List1.Fill(std::move(names));
}

// A key of a skin's own file. One that breaks off behind a key is let go of again: the others are still to be
// read.
std::string frmOptions::SkinKey(const std::string& folder, const char* key) {
  FileSlot& slot = program_.slot;
  const bool was_open = slot.IsOpen();
  const std::string value = program_.general.ReadIniKey(program_.AppPath + "\\" + folder + "\\skin.ini", key);
  if (!was_open) slot.Abandon();
  return Text::Left(value, LongestText);
}

void frmOptions::ShowBuiltInSkin() {
  labSkinTemp = BuiltIn;
  Image1.Picture = Picture1;
  labPreview.Caption = "";
  Label6.Caption = "Default";
  Label7.Caption = "Default Marlowick Skin. Included with Version 0.6a onwards.";
}

void frmOptions::ShowFolderSkin(const std::string& folder) {
  try {
    const std::string path = program_.AppPath + "\\" + folder + "\\preview.bmp";
    Image1.Picture = program_.desktop.Draws().LoadPicture(path, MostPreviewPixels);
    labPreview.Caption = "";
  } catch (const Failure& failure) {
    Image1.Picture = nullptr;
    labPreview.Caption = std::string("No preview. ") + failure.what();
  }
  Label6.Caption = SkinKey(folder, "name");
  Label7.Caption = SkinKey(folder, "description");
}

void frmOptions::List1_Click() {
  const int index = List1.ListIndex();
  if (index == -1) return;
  if (index == 0) {
    // The stores have forgotten the built-in art as soon as a folder's has been in them.
    program_.SkinRestartNeeded = Text::LowerCase(Label6.Caption()) != BuiltIn ? 1 : 0;
    ShowBuiltInSkin();
    return;
  }
  labSkinTemp = "skins\\" + List2.at(static_cast<size_t>(index));
  ShowFolderSkin(labSkinTemp);
  program_.SkinRestartNeeded = 0;
}

void frmOptions::AllowOwnPage() {
  Text1.Enabled = Option5.Value;
  Text1.BackColor = Option5.Value ? WindowBackgroundColour : ButtonFaceColour;
}

void frmOptions::SaveIni() {
  std::string text;
  const auto section = [&text](const char* name, const std::string& value) {
    text += "[" + std::string(name) + "]\r\n" + value + "\r\n\r\n";
  };
  // A group without a choice writes no section.
  struct Choice {
    const Controls::OptionButton& Option;
    std::string Value;
  };
  const auto choice = [&section](const char* name, std::initializer_list<Choice> choices) {
    for (const Choice& one : choices)
      if (one.Option.Value) section(name, one.Value);
  };
  section("Skin", labSkinTemp);
  section("History", Str(Check1.Value));
  section("SearchTab", Str(Check2.Value));
  section("Search", Text2.Text);
  choice("Default", {{Option3, "home"}, {Option4, "about:blank"}, {Option5, Text1.Text}});
  choice("Popups", {{Option6, "0"}, {Option7, "1"}, {Option8, "2"}, {Option9, "3"}});
  section("Paint", Str(Check3.Value));
  choice("NewTab", {{Option1, "0"}, {Option2, "1"}});
  section("AutoComplete", Str(Check4.Value));
  choice("CookieTrap", {{Option10, "0"}, {Option11, "1"}, {Option12, "2"}, {Option13, "3"}});

  FileSlot& slot = program_.slot;
  slot.Open(program_.AppPath + "\\browser.ini", FileSlot::Mode::Output);
  slot.Print(text);
  slot.Close();
}

void frmOptions::Accept() {
  SaveIni();
  program_.preferences.LoadIni(program_);
  program_.main().ResizeForm();
  if (program_.SkinRestartNeeded == 1) {
    program_.desktop.MsgBox("You will need to restart Marlowick to display the skin you have selected.",
                            Buttons::Ok, "Marlowick Information");
    program_.SkinRestartNeeded = 0;
  }
  program_.options.Unload();
}

// Only what the folder holds itself. A page of it that is on show stays until the user loads it again.
void frmOptions::ClearHistory() {
  const std::string folder = program_.AppPath + "\\history";
  if (program_.general.FolderExists(folder))
    for (const std::string& name : FileNames(folder)) RemoveFile(HostPath(folder) + "/" + name);
  labHistoryCleared.Caption = "The history is empty.";
}

// The list in memory stays until the preferences are read again: "Cancel" takes the clearing back.
void frmOptions::ClearAutoComplete() {
  FileSlot& slot = program_.slot;
  slot.Open(program_.AppPath + "\\autocomplete.dat", FileSlot::Mode::Output);
  slot.Close();
  labCompleteCleared.Caption = "Cleared. \"Ok\" makes it final.";
}
