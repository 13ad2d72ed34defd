#include "gtk/page/PlainWindow.h"

#include <utility>

#include "gtk/page/BrowserWorld.h"
#include "gtk/page/FindBar.h"
#include "gtk/page/PageCommands.h"
#include "gtk/page/PageProperties.h"
#include "gtk/page/SavePage.h"
#include "gtk/window/Input.h"
#include "platform/Text.h"
#include "platform/WebAddress.h"

namespace {

constexpr int UsualWidth = 900, UsualHeight = 680;  // pixels
constexpr int LeastWidth = 200, LeastHeight = 150;

constexpr int Ctrl = KeyPress::HeldControl, Shift = KeyPress::HeldShift, Alt = KeyPress::HeldAlt,
              AnyShift = KeyPress::AnyShift;

}  // namespace

struct PlainWindow::Binding {
  const char* Name;
  int Held;
  void (PlainWindow::*Do)();
};

const PlainWindow::Binding PlainWindow::Bindings[] = {
    {"w", Ctrl, &PlainWindow::Close},
    {"F4", Ctrl, &PlainWindow::Close},
    {"Close", 0, &PlainWindow::Close},
    {"n", Ctrl, &PlainWindow::OpenAnother},
    {"l", Ctrl, &PlainWindow::AskForAddress},
    {"d", Alt, &PlainWindow::AskForAddress},
    {"F6", 0, &PlainWindow::AskForAddress},
    {"OpenURL", 0, &PlainWindow::AskForAddress},
    {"k", Ctrl, &PlainWindow::AskForSearch},
    {"e", Ctrl, &PlainWindow::AskForSearch},
    {"Search", 0, &PlainWindow::AskForSearch},
    {"j", Ctrl, &PlainWindow::ShowDownloads},
    {"Left", Alt, &PlainWindow::Back},
    {"Right", Alt, &PlainWindow::Forward},
    {"KP_Left", Alt, &PlainWindow::Back},
    {"KP_Right", Alt, &PlainWindow::Forward},
    {"KP_Home", Alt, &PlainWindow::GoHome},
    {"Back", 0, &PlainWindow::Back},
    {"Forward", 0, &PlainWindow::Forward},
    {"Home", Alt, &PlainWindow::GoHome},
    {"HomePage", 0, &PlainWindow::GoHome},
    {"r", Ctrl, &PlainWindow::Refresh},
    {"F5", 0, &PlainWindow::Refresh},
    {"Refresh", 0, &PlainWindow::Refresh},
    {"Reload", 0, &PlainWindow::Refresh},
    {"r", Ctrl + Shift, &PlainWindow::RefreshPastCache},
    {"F5", Ctrl, &PlainWindow::RefreshPastCache},
    {"Stop", 0, &PlainWindow::Stop},
    {"f", Ctrl, &PlainWindow::Find},
    {"g", Ctrl, &PlainWindow::FindNext},
    {"g", Ctrl + Shift, &PlainWindow::FindPrevious},
    {"F3", 0, &PlainWindow::FindNext},
    {"F3", Shift, &PlainWindow::FindPrevious},
    {"p", Ctrl, &PlainWindow::Print},
    {"s", Ctrl, &PlainWindow::SaveAs},
    {"u", Ctrl, &PlainWindow::Source},
    {"F11", 0, &PlainWindow::SwitchFullScreen},
    {"F12", 0, &PlainWindow::Inspect},
    {"i", Ctrl + Shift, &PlainWindow::Inspect},
    {"F7", 0, &PlainWindow::SwitchCaret},
    {"plus", Ctrl + AnyShift, &PlainWindow::ZoomIn},
    {"equal", Ctrl + AnyShift, &PlainWindow::ZoomIn},
    {"KP_Add", Ctrl + AnyShift, &PlainWindow::ZoomIn},
    {"ZoomIn", AnyShift, &PlainWindow::ZoomIn},
    {"ZoomOut", AnyShift, &PlainWindow::ZoomOut},
    {"minus", Ctrl + AnyShift, &PlainWindow::ZoomOut},
    {"KP_Subtract", Ctrl + AnyShift, &PlainWindow::ZoomOut},
    {"0", Ctrl + AnyShift, &PlainWindow::ZoomNone},
    {"KP_0", Ctrl + AnyShift, &PlainWindow::ZoomNone},
};

PlainWindow::PlainWindow(BrowserWorld& world)
    : world_(world),
      window_(gtk_window_new(GTK_WINDOW_TOPLEVEL)),
      address_(gtk_entry_new()),
      bar_(gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 4)),
      status_(gtk_label_new(nullptr)),
      page_(Page::Open(world, *this)),
      mark_([this] { PageProperties::Show(*page_); }, page_->Runner()),
      callbacks_(page_->Runner()) {
  GtkWidget* rows = gtk_box_new(GTK_ORIENTATION_VERTICAL, 0);
  AddButtons();
  gtk_box_pack_start(GTK_BOX(bar_), mark_.Widget(), FALSE, TRUE, 0);
  gtk_box_pack_start(GTK_BOX(bar_), address_, TRUE, TRUE, 2);
  atk_object_set_name(gtk_widget_get_accessible(address_), "Address");
  gtk_style_context_add_class(gtk_widget_get_style_context(bar_), "toolbar");
  gtk_label_set_ellipsize(GTK_LABEL(status_), PANGO_ELLIPSIZE_MIDDLE);
  gtk_label_set_xalign(GTK_LABEL(status_), 0);
  gtk_widget_set_margin_start(status_, 6);
  gtk_widget_set_margin_end(status_, 6);
  gtk_box_pack_start(GTK_BOX(rows), bar_, FALSE, TRUE, 0);
  gtk_box_pack_start(GTK_BOX(rows), page_->Widget(), TRUE, TRUE, 0);
  gtk_box_pack_start(GTK_BOX(rows), status_, FALSE, TRUE, 2);
  gtk_container_add(GTK_CONTAINER(window_), rows);
  gtk_window_set_default_size(GTK_WINDOW(window_), UsualWidth, UsualHeight);
  gtk_widget_show_all(rows);
  ListenToKeys();
  callbacks_.On<void(GtkEntry*)>(address_, "activate", [this](auto*) { GoToTyped(); });
  callbacks_.On<void(GtkEntry*)>(address_, "changed", [this](auto*) {
    if (setting_) return;
    typing_ = true;
    ShowMark(Safety::Unknown);
  });
  callbacks_.On<gboolean(GtkWidget*, GdkEvent*)>(window_, "delete-event", [this](auto*, auto*) {
    Close();
    return TRUE;
  });
  Update();
}

PlainWindow::~PlainWindow() {
  page_->Close();
  callbacks_.Off(window_);
  side_buttons_.reset();
  gtk_widget_destroy(window_);
}

void PlainWindow::AddButtons() {
  back_ = AddButton("go-previous-symbolic", "Back", &PlainWindow::Back);
  forward_ = AddButton("go-next-symbolic", "Forward", &PlainWindow::Forward);
  refresh_ = AddButton("view-refresh-symbolic", "Refresh", &PlainWindow::Refresh);
  stop_ = AddButton("process-stop-symbolic", "Stop", &PlainWindow::Stop);
}

GtkWidget* PlainWindow::AddButton(const char* icon, const char* name, void (PlainWindow::*pressed)()) {
  GtkWidget* button = gtk_button_new_from_icon_name(icon, GTK_ICON_SIZE_SMALL_TOOLBAR);
  gtk_button_set_relief(GTK_BUTTON(button), GTK_RELIEF_NONE);
  gtk_widget_set_focus_on_click(button, FALSE);
  gtk_widget_set_tooltip_text(button, name);
  atk_object_set_name(gtk_widget_get_accessible(button), name);
  gtk_box_pack_start(GTK_BOX(bar_), button, FALSE, FALSE, 0);
  callbacks_.On<void(GtkWidget*)>(button, "clicked", [this, pressed](auto*) { (this->*pressed)(); });
  return button;
}

// Keys come here before the widgets get them, and the mouse's side buttons are keys.
void PlainWindow::ListenToKeys() {
  callbacks_.On<gboolean(GtkWidget*, GdkEventKey*)>(window_, "key-press-event",
                                                    [this](auto*, GdkEventKey* event) -> gboolean {
                                                      if (TakeKey(*event)) return TRUE;
                                                      if (!gtk_window_get_focus(GTK_WINDOW(window_)))
                                                        FocusPage();
                                                      return FALSE;
                                                    });
  callbacks_.On<gboolean(GtkWidget*, GdkEvent*)>(address_, "focus-out-event", [this](auto*, auto*) {
    // The window may only have gone behind another.
    if (gtk_window_is_active(GTK_WINDOW(window_))) typing_ = false;
    Update();
    return FALSE;
  });
  side_buttons_.reset(gtk_gesture_multi_press_new(window_));
  gtk_gesture_single_set_button(GTK_GESTURE_SINGLE(side_buttons_.get()), 0);
  gtk_event_controller_set_propagation_phase(GTK_EVENT_CONTROLLER(side_buttons_.get()), GTK_PHASE_CAPTURE);
  callbacks_.On<void(GtkGesture*, int, double, double)>(
      side_buttons_.get(), "pressed", [this](GtkGesture* gesture, int, double, double) {
        const guint button = gtk_gesture_single_get_current_button(GTK_GESTURE_SINGLE(gesture));
        const bool side = button == Input::BackButton || button == Input::ForwardButton;
        gtk_gesture_set_state(gesture, side ? GTK_EVENT_SEQUENCE_CLAIMED : GTK_EVENT_SEQUENCE_DENIED);
        if (side) button == Input::BackButton ? Back() : Forward();
      });
}

bool PlainWindow::TakeKey(const GdkEventKey& event) {
  const std::optional<KeyPress> press = Input::PressOf(event);
  if (!press) return false;
  for (const Binding& row : Bindings) {
    if (!press->Is(row.Name, row.Held)) continue;
    (this->*row.Do)();
    return true;
  }
  if (press->Is("Escape", 0)) return Escape();
  // The page itself gets it, whatever stands over it.
  if (press->Is("Escape", Shift)) FocusPage();
  return false;
}

// What is on top goes first; the page knows Escape too.
bool PlainWindow::Escape() {
  if (gtk_widget_has_focus(address_)) {
    typing_ = false;
    Update();
    AskForAddress();
  } else if (page_->CloseTopBar()) {
    return true;
  }
  Stop();
  return false;
}

void PlainWindow::Back() {
  if (webkit_web_view_can_go_back(page_->View())) PageCommands::GoBack(*page_);
  FocusPage();
}

void PlainWindow::Forward() {
  if (webkit_web_view_can_go_forward(page_->View())) PageCommands::GoForward(*page_);
  FocusPage();
}

void PlainWindow::Refresh() {
  page_->Command();
  page_->Load().Again();
  FocusPage();
}

void PlainWindow::RefreshPastCache() {
  PageCommands::RefreshPastCache(*page_);
  FocusPage();
}

void PlainWindow::Stop() {
  if (page_->Load().Busy()) page_->Load().Stop();
}

void PlainWindow::GoHome() {
  page_->Load().Start(Address::FromTyped(world_.Home()));
  FocusPage();
}

void PlainWindow::Find() { page_->Find().Show(); }
void PlainWindow::FindNext() { page_->Find().Again(true); }
void PlainWindow::FindPrevious() { page_->Find().Again(false); }
void PlainWindow::Print() { page_->Print(); }
void PlainWindow::SaveAs() { SavePage::Ask(*page_); }
void PlainWindow::Source() { page_->Load().Start({"view-source:" + page_->Address(), {}, true}); }
void PlainWindow::Inspect() { PageCommands::SwitchInspector(*page_); }
void PlainWindow::SwitchCaret() { PageCommands::SwitchCaret(*page_); }
void PlainWindow::ZoomIn() { PageCommands::Zoom(*page_, 1); }
void PlainWindow::ZoomOut() { PageCommands::Zoom(*page_, -1); }
void PlainWindow::ZoomNone() { PageCommands::Zoom(*page_, 0); }

void PlainWindow::OpenAnother() {
  PlainWindow& window = world_.OpenPlainWindow();
  window.Show(page_->Address());
  window.AskForAddress();
}

void PlainWindow::AskForAddress() {
  page_->LeaveFullScreen();
  gtk_widget_grab_focus(address_);
  gtk_editable_select_region(GTK_EDITABLE(address_), 0, -1);
}

// The mark says that what follows is searched for, be it an address.
void PlainWindow::AskForSearch() {
  gtk_entry_grab_focus_without_selecting(GTK_ENTRY(address_));
  gtk_entry_set_text(GTK_ENTRY(address_), "? ");
  gtk_editable_set_position(GTK_EDITABLE(address_), -1);
}

void PlainWindow::ShowDownloads() { world_.ShowDownloads(); }

void PlainWindow::FocusPage() {
  if (!page_->Closed()) gtk_widget_grab_focus(GTK_WIDGET(page_->View()));
}

void PlainWindow::Show(const std::string& uri) {
  page_->Load().Start({uri, {}, true});
  gtk_window_present(GTK_WINDOW(window_));
  FocusPage();
}

GtkWindow* PlainWindow::Open(const std::string& typed) {
  page_->Load().Start(Address::FromTyped(typed.empty() ? world_.Home() : typed));
  gtk_widget_grab_focus(GTK_WIDGET(page_->View()));
  return GTK_WINDOW(window_);
}

void PlainWindow::ReadyToShow() {
  // The size that the page asked for, as far as it is one that users can work with.
  GdkRectangle wanted{};
  webkit_window_properties_get_geometry(webkit_web_view_get_window_properties(page_->View()), &wanted);
  if (wanted.width >= LeastWidth && wanted.height >= LeastHeight)
    gtk_window_set_default_size(GTK_WINDOW(window_), wanted.width, wanted.height);
  gtk_window_present(GTK_WINDOW(window_));
  FocusPage();
}

void PlainWindow::StatusChanged(const std::string& text) {
  gtk_label_set_text(GTK_LABEL(status_), Text::Valid(text).c_str());
}

void PlainWindow::Update() {
  if (page_->Closed()) return;
  WebKitWebView* view = page_->View();
  const std::string title = Text::ForTitleBar(page_->Title());
  gtk_window_set_title(GTK_WINDOW(window_), title.empty() ? "New window" : title.c_str());
  if (!typing_) ShowAddress();
  if (!typing_) ShowMark(page_->Security());
  gtk_widget_set_sensitive(back_, webkit_web_view_can_go_back(view));
  gtk_widget_set_sensitive(forward_, webkit_web_view_can_go_forward(view));
  gtk_widget_set_sensitive(stop_, page_->Load().Busy());
}

// What was selected whole stays so.
void PlainWindow::ShowAddress() {
  const std::string address = page_->ShownAddress();
  if (address == gtk_entry_get_text(GTK_ENTRY(address_))) return;
  int start = 0, end = 0;
  gtk_editable_get_selection_bounds(GTK_EDITABLE(address_), &start, &end);
  const bool whole = end - start == gtk_entry_get_text_length(GTK_ENTRY(address_));
  setting_ = true;
  gtk_entry_set_text(GTK_ENTRY(address_), address.c_str());
  setting_ = false;
  if (whole && gtk_widget_is_focus(address_)) gtk_editable_select_region(GTK_EDITABLE(address_), 0, -1);
}

void PlainWindow::ShowMark(Safety safety) {
  mark_.Show(safety, !world_.Base().Sandboxed());
  gtk_widget_set_size_request(mark_.Widget(), FieldMark::Width * mark_.Count(), -1);
}

void PlainWindow::Close() {
  page_->AskToClose([this](bool agreed) {
    if (agreed) End();
  });
}

// The handler that asked for it still runs in the page.
void PlainWindow::End() {
  // The page and the user may both close it at once.
  if (std::exchange(ended_, true)) return;
  gtk_widget_hide(window_);
  page_->Quit();
  callbacks_.Later([this] { world_.Forget(*this); });
}

void PlainWindow::WindowWanted(const std::string& asker, Page*& taker, bool& cancel) {
  world_.AskProgram(world_.PlainWindowPolicy(), asker, taker, cancel);
}

void PlainWindow::LinkChosen(const std::string& address, bool in_front) {
  world_.ChooseLink(address, in_front);
}

void PlainWindow::GoToTyped() {
  typing_ = false;
  const std::string typed = gtk_entry_get_text(GTK_ENTRY(address_));
  FocusPage();
  page_->Load().Start(world_.FromTyped(typed));
}
