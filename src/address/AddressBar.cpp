#include "address/AddressBar.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "core/Conversions.h"
#include "core/Program.h"
#include "core/frmMain.h"
#include "platform/Text.h"
#include "platform/WebAddress.h"

namespace {

constexpr int16_t Enter = 13, Backspace = 8, Shift = 16, Clear = 12, Escape = 27, Delete = 46;

// Keys that end no typing: deleting never completes again.
constexpr std::array Excluded = {Enter, Backspace, Shift, Clear, Delete};

// Keys that move and select in what is there: End, Home, Left and Right.
constexpr std::array Caret = {int16_t{35}, int16_t{36}, int16_t{37}, int16_t{39}};

// What is typed behind it is no address: it is to be looked for.
constexpr const char* SearchMark = "? ";

// How long what was typed may be lost by a kill, in ms.
constexpr int SaveWithin = 30000;

// Schemes that nobody types, in upper case.
constexpr std::string_view Http = "HTTP://", File = "FILE:///";

// The length of the prefix, 0 for none. It is the same in characters and in bytes of the key.
size_t PrefixLength(std::string_view Key) {
  if (Key.starts_with(Http)) return Http.size();
  if (Key.starts_with(File)) return File.size();
  return 0;
}

// Addresses are much alike at their start: the last of the typed characters tells most of them apart.
bool Begins(std::string_view Key, std::string_view typed) {
  if (typed.empty()) return true;
  return Key.size() >= typed.size() && Key[typed.size() - 1] == typed.back() && Key.starts_with(typed);
}

}  // namespace

AddressBar::AddressBar(frmMain& main)
    : Combo1(main.program.desktop.MakeComboBox(main.frame.CoolBar1, {4200, 100, 4785, 315})),
      main_(main),
      saving_(main.program.desktop, SaveWithin, false) {
  saving_.Tick = [this] {
    saving_.Enabled = false;
    // Where it can't be written now, the closing tells.
    Skipping([this] { SaveComplete(); });
  };
  Combo1->KeyPress = [this](int key_ascii) { Combo1_KeyPress(ToInt16(key_ascii)); };
  Combo1->KeyUp = [this](int key_code) { Combo1_KeyUp(ToInt16(key_code)); };
  Combo1->Click = [this] { Combo1_Click(); };
  Combo1->Change = [this] {
    typing_ = true;
    fresh_ = false;
    ShowNoMark();
  };
  Combo1->MarkPress = [this] {
    TabSet& tabs = main_.tabs;
    Skipping([&] { tabs.WebBrowser1(tabs.CurrentTab).ShowProperties(); });
  };
  Combo1->LostFocus = [this] { EndTyping(); };
  Combo1->ListCount = [this] { return list_.Size(); };
  Combo1->List = [this](size_t index) -> const std::string& { return list_[index]; };
  Combo1->ListIndex = [this](const std::string& text) { return list_.IndexOf(text); };
}

void AddressBar::ClearList() {
  list_.Clear();
  Combo1->ListChanged();
}

void AddressBar::AddItem(const std::string& item) {
  list_.Add(item);
  Combo1->ListChanged();
}

void AddressBar::Combo1_KeyPress(int16_t KeyAscii) {
  if (KeyAscii == Escape) {
    typing_ = false;
    Skipping([this] { SetAddressText(); });
    Combo1->Select(0, static_cast<long>(Text::Length(Combo1->Text())));
  }
  if (KeyAscii != Enter) return;
  const std::string address = Combo1->Text();
  // What is kept is read by others: a password isn't.
  const std::string kept = WebAddress::WithoutUser(address);
  const bool known = Lists(kept) || kept.empty();
  if (!known) {
    AddItem(kept);
    saving_.Enabled = true;
  }
  Combo1_Click();
}

bool AddressBar::Lists(const std::string& address) const {
  return std::any_of(list_.begin(), list_.end(), [&address](const SortedList::Item& item) {
    return Text::SameWithoutCase(item.Text, address);
  });
}

void AddressBar::Combo1_KeyUp(int16_t KeyCode) {
  if (main_.program.preferences.AutoCompleteOff == 1) return;
  const std::string Typed = Combo1->Text();
  const size_t N = Text::Length(Typed);
  if (std::find(Excluded.begin(), Excluded.end(), KeyCode) != Excluded.end()) return;
  if (N > 0 && std::find(Caret.begin(), Caret.end(), KeyCode) != Caret.end()) return;
  const std::string key = Text::UpperCase(Typed);
  for (const auto& [Item, Key] : list_) {
    const size_t P = PrefixLength(Key);
    if (P > 0 && Begins(Key.substr(P), key)) return CompleteWith(Item, P, N);
    if (Begins(Key, key)) return CompleteWith(Item, 0, N);
  }
}

void AddressBar::CompleteWith(const std::string& Item, size_t P, size_t N) {
  Combo1->SetText(Item);
  Combo1->Select(static_cast<long>(P + N), static_cast<long>(Text::Length(Item) - P - N));
}

void AddressBar::Combo1_Click() {
  typing_ = false;
  aside_.reset();
  ShowNoMark();
  main_.frame.Picture3.Picture = main_.skin.PicStore(0).Picture;
  TabSet& tabs = main_.tabs;
  // A page that closed itself has taken its timer along, and its element may be gone too.
  Skipping([&] { tabs.WebBrowser1(tabs.CurrentTab).Navigate(Combo1->Text()); });
  Skipping([&] { tabs.Timer1(tabs.CurrentTab).Enabled = true; });
  // The next keys are the page's.
  Skipping([&] { tabs.WebBrowser1(tabs.CurrentTab).SetFocus(); });
}

void AddressBar::SetAddressText() {
  TabSet& tabs = main_.tabs;
  const Browser& shown = tabs.WebBrowser1(tabs.CurrentTab);
  std::string U = shown.ShownURL();
  // A site's address is shown as it is, and nothing else as a site's.
  if (!WebAddress::IsOfSite(U)) {
    U = Text::Replace(U, "%20", " ");
    // An error page of the browser element: behind the "#" stands the address that failed.
    const std::string Failed = U.substr(U.find('#') + 1);
    if (Text::LowerCase(Text::Left(U, 3)) == "res" && !WebAddress::IsOfSite(Failed)) U = Failed;
  }
  if (typing_)
    aside_ = U;
  else
    Show(U);
  tabs.picTab(tabs.CurrentTab).ToolTipText = WebAddress::Beside(shown.LocationName(), U);
}

void AddressBar::Show(const std::string& text) {
  aside_.reset();
  ShowMark();
  // Where nothing is new, the caret stays where the user has put it.
  if (text == Combo1->Text()) return;
  const long length = static_cast<long>(Text::Length(Combo1->Text()));
  const bool whole = Combo1->SelLength() == length && (length > 0 || fresh_);
  Combo1->SetText(text);
  if (whole) Combo1->Select(0, static_cast<long>(Text::Length(Combo1->Text())));
}

void AddressBar::ShowMark() {
  Skipping([this] {
    const Browser& shown = main_.tabs.WebBrowser1(main_.tabs.CurrentTab);
    Combo1->SetMark(shown.PageSafety(), shown.OutsideSandbox());
  });
}

void AddressBar::ShowNoMark() {
  Skipping([this] {
    Combo1->SetMark(Safety::Unknown, main_.tabs.WebBrowser1(main_.tabs.CurrentTab).OutsideSandbox());
  });
}

void AddressBar::TakeKeyboard() {
  Combo1->SetFocus();
  Combo1->Select(0, static_cast<long>(Text::Length(Combo1->Text())));
  fresh_ = !typing_;
}

void AddressBar::AskForAddress() {
  EndTyping();
  TakeKeyboard();
}

void AddressBar::TakeSearch() {
  Combo1->SetFocus();
  Combo1->SetText(SearchMark);
  Combo1->Select(static_cast<long>(Text::Length(SearchMark)), 0);
  typing_ = true;
  fresh_ = false;
  ShowNoMark();
}

void AddressBar::EndTyping() {
  typing_ = fresh_ = false;
  if (const std::optional<std::string> kept = std::exchange(aside_, std::nullopt)) Show(*kept);
}

void AddressBar::SaveComplete() {
  FileSlot& slot = main_.program.slot;
  slot.Open(main_.program.AppPath + "\\autocomplete.dat", FileSlot::Mode::Output);
  for (const auto& [Item, Key] : list_) slot.Print(Item);
  slot.Close();
  saving_.Enabled = false;
}
