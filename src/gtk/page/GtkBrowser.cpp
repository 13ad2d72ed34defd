#include "gtk/page/GtkBrowser.h"

#include <array>
#include <utility>

#include "gtk/page/BrowserWorld.h"
#include "gtk/page/FindBar.h"
#include "gtk/page/PageCommands.h"
#include "gtk/page/PageHistory.h"
#include "gtk/page/PageProperties.h"
#include "gtk/page/PlainWindow.h"
#include "gtk/page/SavePage.h"
#include "gtk/window/Input.h"
#include "platform/Failure.h"
#include "platform/WebAddress.h"

namespace {

struct EditingCommand {
  long command;
  const char* name;
};
constexpr std::array<EditingCommand, 4> EditingCommands = {
    {{Browser::Cut, WEBKIT_EDITING_COMMAND_CUT},
     {Browser::Copy, WEBKIT_EDITING_COMMAND_COPY},
     {Browser::Paste, WEBKIT_EDITING_COMMAND_PASTE},
     {Browser::SelectAll, WEBKIT_EDITING_COMMAND_SELECT_ALL}}};

}  // namespace

GtkBrowser::GtkBrowser(Control& parent, BrowserWorld& world)
    : Browser(&parent, Place{}), world_(world), page_(Page::Open(world, *this)) {}

GtkBrowser::~GtkBrowser() {
  offers_.reset();
  page_->Close();
}

void GtkBrowser::Navigate(const std::string& address) {
  if (asleep_) PageHistory::Give(*page_, *std::exchange(asleep_, std::nullopt));
  page_->Load().Start(world_.FromTyped(address));
}
void GtkBrowser::GoHome() { Navigate(world_.Home()); }

void GtkBrowser::GoBack() { PageCommands::GoBack(*page_); }
void GtkBrowser::GoForward() { PageCommands::GoForward(*page_); }
bool GtkBrowser::CanGoBack() const {
  WebKitWebView* view = page_->PresentView();
  return view && webkit_web_view_can_go_back(view);
}

bool GtkBrowser::CanGoForward() const {
  WebKitWebView* view = page_->PresentView();
  return view && webkit_web_view_can_go_forward(view);
}

void GtkBrowser::Stop() { page_->Load().Stop(); }
void GtkBrowser::Refresh() {
  page_->Command();
  page_->Load().Again();
}

Failure GtkBrowser::Died() const {
  return Failure("The process of the page \"" + WebAddress::WithoutUser(page_->Address()) + "\" has died");
}

void GtkBrowser::FailIfDead() const {
  if (page_->Closed()) throw Failure("The page is closed");
  if (dead_) throw Died();
}

bool GtkBrowser::Busy() const {
  const bool dead = dead_;
  const bool busy = !page_->Closed() && page_->Load().Busy();
  if (dead || !busy) watched_ = false;
  dead_ = false;
  if (dead) throw Died();
  if (page_->Closed()) throw Failure("The page is closed");
  return busy;
}

std::string GtkBrowser::LocationName() const {
  if (asleep_) return asleep_->Title;
  FailIfDead();
  return page_->Title();
}

std::string GtkBrowser::LocationURL() const {
  if (asleep_) return WebAddress::WithoutUser(asleep_->Address);
  FailIfDead();
  return WebAddress::WithoutUser(page_->Address());
}

std::string GtkBrowser::ShownURL() const {
  FailIfDead();
  return page_->ShownAddress();
}

bool GtkBrowser::OutsideSandbox() const { return !world_.Base().Sandboxed(); }

bool GtkBrowser::Offline() const { return world_.Base().Offline(); }
void GtkBrowser::SetOffline(bool offline) { world_.Base().SetOffline(offline); }

void GtkBrowser::ExecWB(long command, long) {
  if (command == SaveAs) return SavePage::Ask(*page_);
  for (const EditingCommand& one : EditingCommands)
    if (one.command == command) return webkit_web_view_execute_editing_command(page_->View(), one.name);
  throw Failure("The browser doesn't know the command " + std::to_string(command));
}

KeptPage GtkBrowser::Keep(KeptPage::Where where) const {
  return PageHistory::Filter(asleep_ ? *asleep_ : PageHistory::Take(*page_), where);
}

void GtkBrowser::Restore(const KeptPage& page) {
  page_->Renew();
  asleep_ = page;
}

void GtkBrowser::Wake() {
  if (!asleep_) return;
  const KeptPage page = *std::exchange(asleep_, std::nullopt);
  PageHistory::Give(*page_, page);
  PageHistory::Load(*page_, page);
}

void GtkBrowser::Offer(const std::string& text, const std::string& yes, const std::string& no,
                       std::function<void(bool yes)> answered) {
  if (!offers_) {
    GtkWidget* place = gtk_box_new(GTK_ORIENTATION_VERTICAL, 0);
    gtk_box_pack_start(GTK_BOX(page_->Widget()), place, FALSE, TRUE, 0);
    gtk_box_reorder_child(GTK_BOX(page_->Widget()), place, 0);
    gtk_widget_show(place);
    offers_ = std::make_unique<Questions>(place, page_->Runner());
  }
  offers_->Ask({text, yes, no}, [this, answered = std::move(answered)](bool yes) {
    world_.Gate().Run([&] { answered(yes); });
  });
}

void GtkBrowser::SetFocus() {
  if (page_->Closed()) throw Failure("The page is closed");
  // One that has closed itself is an empty place.
  if (!page_->PresentView()) return;
  GtkWidget* view = GTK_WIDGET(page_->View());
  if (GTK_IS_WINDOW(gtk_widget_get_toplevel(view))) return gtk_widget_grab_focus(view);
  // It comes into the window with the next frame, which then finds that nobody has the keyboard.
  GtkWindow* window = world_.MainWindow();
  if (window && gtk_window_get_focus(window)) gtk_window_set_focus(window, nullptr);
}

void GtkBrowser::OpenWindow() {
  const std::string address = page_->Address();
  PlainWindow& window = world_.OpenPlainWindow();
  window.Show(address.empty() ? "about:blank" : address);
  window.AskForAddress();
}

void GtkBrowser::ShowFind() { page_->Find().Show(); }
void GtkBrowser::ShowPrint() { page_->Print(); }
void GtkBrowser::ShowProperties() { PageProperties::Show(*page_); }

void GtkBrowser::RefreshPastCache() { PageCommands::RefreshPastCache(*page_); }
void GtkBrowser::FindAgain(bool forward) { page_->Find().Again(forward); }
void GtkBrowser::ShowInspector() { PageCommands::SwitchInspector(*page_); }
void GtkBrowser::SwitchCaret() { PageCommands::SwitchCaret(*page_); }
void GtkBrowser::Zoom(int step) { PageCommands::Zoom(*page_, step); }

template <class... Values>
void GtkBrowser::Raise(const std::function<void(Values...)>& event, Values... values) {
  // The element may be gone when the gate opens again.
  if (event) world_.Gate().Run([&] { event(values...); });
}

void GtkBrowser::LoadBegan() {
  watched_ = true;
  Raise(DownloadBegin);
}

void GtkBrowser::Progressed(long progress, long maximum) { Raise(ProgressChange, progress, maximum); }

void GtkBrowser::StatusChanged(const std::string& text) {
  if (StatusTextChange) world_.Gate().Run([&] { StatusTextChange(text); });
}

void GtkBrowser::NameChanged() { Raise(TitleChange); }
void GtkBrowser::LoadEnded() { Raise(DocumentComplete); }
void GtkBrowser::UserActed() { Raise(Used); }
void GtkBrowser::Wanted() { Raise(Chosen); }

void GtkBrowser::ProcessDied() {
  if (watched_) dead_ = true;
}

void GtkBrowser::CloseWanted() {
  page_->Quit();
  Raise(OnQuit);
}

void GtkBrowser::AskToClose(std::function<void(bool agreed)> answered) {
  page_->AskToClose([&world = world_, answered = std::move(answered)](bool agreed) {
    world.Gate().Run([&] { answered(agreed); });
  });
}

bool GtkBrowser::KeyPressed(const GdkEventKey& event) {
  auto* window = dynamic_cast<Window*>(Root());
  return window && Input::TellKey(world_.Gate(), *window, event);
}

void GtkBrowser::QuestionUp() { Raise(Browser::QuestionUp); }

void GtkBrowser::LinkChosen(const std::string& address, bool in_front) {
  if (Browser::LinkChosen) world_.Gate().Run([&] { Browser::LinkChosen(address, in_front); });
}

void GtkBrowser::WindowWanted(const std::string& asker, Page*& taker, bool& cancel) {
  if (NewWindow2) world_.AskProgram(NewWindow2, asker, taker, cancel);
}
