#pragma once

#include <string>
#include <vector>

#include "platform/dialog/Controls.h"
#include "platform/scene/Bitmap.h"

class Program;

// Where the user changes what `browser.ini` holds. Nothing of it acts before "Ok", but for the two "Clear"s
// and the word filters, which act at once.
class frmOptions : public Dialog {
 public:
  explicit frmOptions(Program& program);

  Controls::TabPages SSTab1{*this, "SSTab1"};

  // Tab Options
  Controls::Frame Frame1{*this, "Frame1"};
  Controls::Label Label5{*this, "Label5"};
  Controls::Group NewTabs;
  Controls::OptionButton Option1{*this, "Option1", NewTabs};  // at the default page
  Controls::OptionButton Option2{*this, "Option2", NewTabs};  // where the current tab is
  Controls::Frame Frame2{*this, "Frame2"};
  Controls::CheckBox Check1{*this, "Check1"};  // history in a new tab
  Controls::CheckBox Check2{*this, "Check2"};  // search in a new tab

  // Defaults
  Controls::Frame Frame3{*this, "Frame3"};
  Controls::Label Label1{*this, "Label1"};
  Controls::Group DefaultPages;
  Controls::OptionButton Option3{*this, "Option3", DefaultPages};  // home
  Controls::OptionButton Option4{*this, "Option4", DefaultPages};  // blank
  Controls::OptionButton Option5{*this, "Option5", DefaultPages};  // what stands in Text1
  Controls::TextBox Text1{*this, "Text1"};
  Controls::Frame Frame4{*this, "Frame4"};
  Controls::Label Label2{*this, "Label2"};
  Controls::TextBox Text2{*this, "Text2"};  // the search page

  // Misc
  Controls::Frame Frame5{*this, "Frame5"};
  Controls::Label Label3{*this, "Label3"};
  Controls::Group Popups;
  Controls::OptionButton Option6{*this, "Option6", Popups};  // none
  Controls::OptionButton Option7{*this, "Option7", Popups};  // windows
  Controls::OptionButton Option8{*this, "Option8", Popups};  // tabs
  Controls::OptionButton Option9{*this, "Option9", Popups};  // ask
  Controls::Frame Frame6{*this, "Frame6"};
  Controls::CheckBox Check3{*this, "Check3"};  // fast refresh
  Controls::Label Label4{*this, "Label4"};

  // Skins
  Controls::Frame Frame7{*this, "Frame7"};
  Controls::ListBox List1{*this, "List1"};  // the skins' names
  Controls::Frame Frame10{*this, "Frame10"};
  Controls::Label Label6{*this, "Label6"};  // the name of the skin on show
  Controls::Frame Frame9{*this, "Frame9"};
  Controls::Label Label7{*this, "Label7"};  // its description
  Controls::Frame Frame8{*this, "Frame8"};
  Controls::Image Image1{*this, "Image1"};          // its preview
  Controls::Label labPreview{*this, "labPreview"};  // why there is none

  // Clear
  Controls::Frame Frame12{*this, "Frame12"};
  Controls::CheckBox Check4{*this, "Check4"};  // no auto complete
  Controls::Label Label9{*this, "Label9"};
  Controls::CommandButton Command4{*this, "Command4"};              // clears the auto complete list
  Controls::Label labCompleteCleared{*this, "labCompleteCleared"};  // that it has
  Controls::Frame Frame11{*this, "Frame11"};
  Controls::Label Label8{*this, "Label8"};
  Controls::CommandButton Command3{*this, "Command3"};            // clears the history
  Controls::Label labHistoryCleared{*this, "labHistoryCleared"};  // that it has

  // Cookies
  Controls::Frame Frame13{*this, "Frame13"};
  Controls::Label Label10{*this, "Label10"};
  Controls::Label Label11{*this, "Label11"};
  Controls::Group CookieTraps;
  Controls::OptionButton Option10{*this, "Option10", CookieTraps};  // keep all
  Controls::OptionButton Option11{*this, "Option11", CookieTraps};  // remove the new ones
  Controls::OptionButton Option12{*this, "Option12", CookieTraps};  // ask which
  Controls::OptionButton Option13{*this, "Option13", CookieTraps};  // remove by word filters
  Controls::CommandButton Command5{*this, "Command5"};              // the word filters

  Controls::CommandButton Command2{*this, "Command2"};  // Ok
  Controls::CommandButton Command1{*this, "Command1"};  // Cancel

  std::vector<std::string> List2;  // the skins' folders, at the indices of List1
  std::string labSkinTemp;         // the skin chosen so far, as `browser.ini` has it
  Picture Picture1;                // the built-in skin's preview

  void Form_Load();
  void Form_Unload(bool&) {}

  // Writes `browser.ini` anew from the controls, whole or not at all. Fails where that can't be done.
  void SaveIni();

 private:
  void ListSkins();
  void ShowBuiltInSkin();
  void ShowFolderSkin(const std::string& folder);
  std::string SkinKey(const std::string& folder, const char* key);
  void AllowOwnPage();
  void List1_Click();
  void Accept();
  void ClearHistory();
  void ClearAutoComplete();

  Program& program_;
};
