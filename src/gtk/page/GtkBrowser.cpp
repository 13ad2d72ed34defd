#include "gtk/page/GtkBrowser.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "gtk/page/BrowserWorld.h"
#include "gtk/page/FindBar.h"
#include "gtk/page/PageProperties.h"
#include "gtk/page/PlainWindow.h"
#include "gtk/page/PrintPage.h"
#include "gtk/page/SavePage.h"
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

GtkBrowser::~GtkBrowser() { page_->Close(); }

void GtkBrowser::Navigate(const std::string& address) { page_->Load().Start(Address::FromTyped(address)); }
void GtkBrowser::GoHome() { Navigate(world_.Home()); }

void GtkBrowser::GoBack() {
  if (!webkit_web_view_can_go_back(page_->View())) throw Failure("There is no earlier page to go back to");
  page_->Command();
  webkit_web_view_go_back(page_->View());
}

void GtkBrowser::GoForward() {
  if (!webkit_web_view_can_go_forward(page_->View()))
    throw Failure("There is no later page to go forward to");
  page_->Command();
  webkit_web_view_go_forward(page_->View());
}

void GtkBrowser::Stop() { page_->Load().Stop(); }
void GtkBrowser::Refresh() {
  page_->Command();
  page_->Load().Again();
}

void GtkBrowser::FailIfDead() const {
  if (page_->Closed()) throw Failure("The page is closed");
  if (dead_) throw Failure("The process of the page \"" + page_->Address() + "\" has died");
}

bool GtkBrowser::Busy() const {
  const bool dead = dead_;
  const bool busy = !page_->Closed() && page_->Load().Busy();
  if (dead || !busy) watched_ = false;
  dead_ = false;
  if (dead) throw Failure("The process of the page \"" + page_->Address() + "\" has died");
  if (page_->Closed()) throw Failure("The page is closed");
  return busy;
}

std::string GtkBrowser::LocationName() const {
  FailIfDead();
  return page_->Title();
}

std::string GtkBrowser::LocationURL() const {
  FailIfDead();
  return WebAddress::WithoutUser(page_->Address());
}

bool GtkBrowser::Offline() const { return world_.Base().Offline(); }
void GtkBrowser::SetOffline(bool offline) { world_.Base().SetOffline(offline); }

void GtkBrowser::ExecWB(long command, long) {
  if (command == SaveAs) return SavePage::Ask(*page_);
  for (const EditingCommand& one : EditingCommands)
    if (one.command == command) return webkit_web_view_execute_editing_command(page_->View(), one.name);
  throw Failure("The browser doesn't know the command " + std::to_string(command));
}

void GtkBrowser::SetFocus() { gtk_widget_grab_focus(GTK_WIDGET(page_->View())); }

void GtkBrowser::OpenWindow() {
  const std::string address = page_->Address();
  world_.OpenPlainWindow().Show(address.empty() ? "about:blank" : address);
}

void GtkBrowser::ShowFind() { page_->Find().Show(); }
void GtkBrowser::ShowPrint() { PrintPage::Ask(*page_); }
void GtkBrowser::ShowProperties() { PageProperties::Show(*page_); }

void GtkBrowser::Zoom(int step) {
  WebKitWebView* view = page_->PresentView();
  if (!view) return;
  const ElementSettings& settings = world_.Settings();
  const int now = static_cast<int>(std::lround(webkit_web_view_get_zoom_level(view) * 100));
  const int wanted = step == 0
                         ? settings.zoom
                         : std::clamp(now + 10 * step, ElementSettings::LeastZoom, ElementSettings::MostZoom);
  webkit_web_view_set_zoom_level(view, wanted / 100.0);
}

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

void GtkBrowser::ProcessDied() {
  if (watched_) dead_ = true;
}

void GtkBrowser::CloseWanted() {
  page_->Quit();
  Raise(OnQuit);
}

void GtkBrowser::WindowWanted(Page*& taker, bool& cancel) {
  if (NewWindow2) world_.AskProgram(NewWindow2, taker, cancel);
}
