#include "fakes/FakeDesktop.h"

#include <stdlib.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "gtk/favourites/BookmarkReader.h"
#include "platform/Failure.h"
#include "platform/Text.h"

namespace {

class FakeHost : public WindowHost {
 public:
  FakeHost(FakeDesktop& desktop, Window& window) : desktop_(desktop), window_(window) {
    if (window.WindowKind() == Window::Kind::Popup) desktop.popups.push_back(&window);
  }
  ~FakeHost() override { std::erase(desktop_.popups, &window_); }
  void Show() override {}
  void Hide() override {}
  void Move() override {}
  void Resize() override {}
  void Caption() override {}
  void State() override {}
  void Focus() override { ++desktop_.focused; }
  void Invalidate() override { ++desktop_.repaints; }
  void Repaint() override {}

 private:
  FakeDesktop& desktop_;
  Window& window_;
};

// A dialog without widgets. A modal one ends by what the user does in it.
class FakeDialog : public DialogHost {
 public:
  FakeDialog(FakeDesktop& desktop, Dialog& dialog) : desktop_(desktop), dialog_(dialog) {}
  void Show() override { Log("Show"); }
  void Hide() override { Log("Hide"); }
  void TakeFocus() override { Log("SetFocus"); }
  void Caption() override { Log("Caption", dialog_.Caption()); }
  void Resize() override {}
  void Pointer() override { Log("Pointer", std::to_string(static_cast<int>(dialog_.Pointer()))); }
  void Refresh() override { Log("Refresh"); }
  void SetFocus(Controls::Control& control) override { Log("SetFocus", control.Name); }
  void Changed(Controls::Control&, Controls::Aspect) override {}
  void ShowModal() override {
    for (dialog_.Visible = true; dialog_.Visible;) {
      if (desktop_.acts.empty()) throw std::logic_error(dialog_.Name + " waits for a user for ever");
      const auto act = desktop_.acts.front();
      desktop_.acts.pop_front();
      desktop_.Gate.Run([&] { act(dialog_); });
    }
  }

 private:
  void Log(const std::string& what, const std::string& which = "") {
    desktop_.log.push_back(what + " " + dialog_.Name + (which.empty() ? "" : " " + which));
  }

  FakeDesktop& desktop_;
  Dialog& dialog_;
};

}  // namespace

void FakeBrowser::Do(const std::string& what) {
  log_.push_back(what);
  if (fails) throw Failure(what + " fails");
}

void FakeBrowser::Navigate(const std::string& address) {
  Do("Navigate " + address);
  url = address;
}

void FakeBrowser::ExecWB(long command, long option) {
  Do("ExecWB " + std::to_string(command) + " " + std::to_string(option));
}

KeptPage FakeBrowser::Keep(KeptPage::Where where) const {
  if (secret && where == KeptPage::Where::OnDisk) throw Failure("The page isn't kept");
  return {url, title, history};
}

void FakeBrowser::Restore(const KeptPage& page) {
  Do("Restore " + page.Address);
  url = page.Address;
  title = page.Title;
  history = page.History;
  asleep = true;
}

void FakeBrowser::Wake() {
  if (std::exchange(asleep, false)) Do("Wake " + url);
}

bool FakeBrowser::Busy() const {
  if (dead) throw Failure("The page is dead");
  return busy;
}

std::string FakeBrowser::LocationName() const {
  if (dead) throw Failure("The page is dead");
  return title;
}

std::string FakeBrowser::LocationURL() const {
  if (dead) throw Failure("The page is dead");
  return url;
}

void FakeComboBox::SetText(const std::string& value) {
  text = Text::Valid(value);
  start = length = 0;
}

void FakeComboBox::Select(long from, long count) {
  const long size = static_cast<long>(Text::Length(text));
  start = std::clamp(from, 0L, size);
  length = std::clamp(count, 0L, size - start);
}

void FakeComboBox::Type(const std::string& key, int key_code) {
  if (KeyPress && key.size() == 1) KeyPress(key[0]);
  const std::string head = Text::Left(text, static_cast<size_t>(start));
  text = head + key + Text::Behind(text, static_cast<size_t>(start + length));
  start += static_cast<long>(Text::Length(key));
  length = 0;
  if (Change) Change();
  if (KeyUp) KeyUp(key_code);
}

void FakeComboBox::PressEnter() {
  if (KeyPress) KeyPress(13);
  if (KeyUp) KeyUp(13);
}

void FakeComboBox::Choose(size_t index) {
  SetText(List(index));
  if (Click) Click();
}

FakeDesktop::FakeDesktop(std::string folder) : folder(std::move(folder)), drawing(MakeDrawing()) {}
// After an end of the process, what was unloaded still waits at the gate for its own end.
FakeDesktop::~FakeDesktop() {
  Gate.Run([] {});
}

void FakeDesktop::Advance(int milliseconds) {
  const long end = time_ + milliseconds;
  for (;;) {
    auto next = counts_.end();
    for (auto count = counts_.begin(); count != counts_.end(); ++count)
      if (count->second.due <= end && (next == counts_.end() || count->second.due < next->second.due))
        next = count;
    if (next == counts_.end()) break;
    time_ = next->second.due;
    next->second.due += next->second.interval;
    const auto tick = next->second.tick;
    Gate.Run(tick);
  }
  time_ = end;
}

void FakeDesktop::DoEvents() {
  log.push_back("DoEvents");
  if (during_events) during_events();
}

void FakeDesktop::End(int status) {
  log.push_back("End " + std::to_string(status));
  throw ProcessEnded{status};
}

std::string FakeDesktop::ShortDate(const Moment& moment) {
  return std::to_string(moment.Day) + "/" + std::to_string(moment.Month) + "/" + std::to_string(moment.Year);
}

std::unique_ptr<WindowHost> FakeDesktop::MakeHost(Window& window) {
  return std::make_unique<FakeHost>(*this, window);
}

bool FakeDesktop::EndPopups() {
  bool any = false;
  for (Window* popup : std::vector(popups)) {
    // The end of one may be the end of others.
    const bool open = std::find(popups.begin(), popups.end(), popup) != popups.end() && popup->Visible;
    if (open && popup->Deactivate) popup->Deactivate();
    any = any || open;
  }
  return any;
}

std::unique_ptr<Browser> FakeDesktop::MakeBrowser(Control& parent) {
  return std::make_unique<FakeBrowser>(parent, log, keyboard);
}

std::unique_ptr<ComboBox> FakeDesktop::MakeComboBox(Control& parent, const Place& place) {
  return std::make_unique<FakeComboBox>(parent, place, keyboard);
}

std::unique_ptr<DialogHost> FakeDesktop::MakeDialog(Dialog& dialog) {
  return std::make_unique<FakeDialog>(*this, dialog);
}

Answer FakeDesktop::MsgBox(const std::string& text, Buttons, const std::string& title) {
  log.push_back("MsgBox " + title + "|" + text);
  if (answers.empty()) return Answer::Ok;
  const Answer answer = answers.front();
  answers.pop_front();
  return answer;
}

std::string FakeDesktop::ShowOpen(const std::string& title, const std::string& filter) {
  log.push_back("ShowOpen " + title + "|" + filter);
  if (files.empty() || files.front().empty()) throw Failure("Cancelled");
  const std::string file = files.front();
  files.pop_front();
  return file;
}

std::string FakeDesktop::ShowSave(const std::string& title, const std::string& filter) {
  log.push_back("ShowSave " + title + "|" + filter);
  if (files.empty() || files.front().empty()) throw Failure("Cancelled");
  const std::string file = files.front();
  files.pop_front();
  return file;
}

std::string FakeDesktop::ShowFolder(const std::string& title) { return ShowOpen(title, ""); }

bool FakeDesktop::MoveToTrash(const std::string& path) {
  if (!trash) return false;
  log.push_back("MoveToTrash " + path);
  std::filesystem::remove_all(path);
  return true;
}

Bookmarks FakeDesktop::ReadBookmarks(const std::string& path) { return ::ReadBookmarks(path); }

std::string FakeDesktop::AddressInShortcut(const std::string& path) { return ::AddressInShortcut(path); }

InstalledApplication FakeDesktop::ChooseApplication(const std::string& title) {
  log.push_back("ChooseApplication " + title);
  if (applications.empty()) throw Failure("Cancelled");
  const InstalledApplication application = applications.front();
  applications.pop_front();
  return application;
}

void FakeDesktop::Shell(const std::string& command) {
  log.push_back("Shell " + command);
  if (!command.empty() && command == no_program)
    throw Failure("The program \"" + command + "\" can't be started");
}

int FakeDesktop::Start(int milliseconds, std::function<void()> tick) {
  counts_[++last_number_] = {milliseconds, time_ + milliseconds, std::move(tick)};
  return last_number_;
}

void FakeDesktop::Stop(int number) { counts_.erase(number); }

TemporaryFolder::TemporaryFolder() {
  std::string name = std::filesystem::temp_directory_path() / "marlowick-test-XXXXXX";
  if (!mkdtemp(name.data())) throw Failure("No temporary folder can be made");
  path = name;
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path, ignored);
}

void TemporaryFolder::Write(const std::string& name, const std::string& content) const {
  const std::filesystem::path file = path + "/" + name;
  std::filesystem::create_directories(file.parent_path());
  std::ofstream(file, std::ios::binary) << content;
}

std::string TemporaryFolder::Read(const std::string& name) const {
  std::ostringstream content;
  content << std::ifstream(path + "/" + name, std::ios::binary).rdbuf();
  return content.str();
}

ProgramFolder::ProgramFolder() {
  Write("browser.ini",
        "[Skin]\r\ndefault\r\n\r\n[History]\r\n 0\r\n\r\n[SearchTab]\r\n "
        "0\r\n\r\n[Search]\r\nhttp://search.test/\r\n"
        "\r\n[Default]\r\nhome\r\n\r\n[Popups]\r\n3\r\n\r\n[Paint]\r\n "
        "0\r\n\r\n[NewTab]\r\n0\r\n\r\n[AutoComplete]"
        "\r\n 0\r\n\r\n[CookieTrap]\r\n0\r\n\r\n");
  Write("filter.dat", "");
  Write("launch.dat", "");
  Write("history.dat",
        "[date]\r\n<h1>#date#</"
        "h1>\r\n[end]\r\n[history]\r\n#main#\r\n[end]\r\n[contents]\r\n#list#\r\n[end]\r\n");
}
