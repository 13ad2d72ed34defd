#include "gtk/page/PlainWindow.h"

#include <utility>

#include "gtk/page/BrowserWorld.h"
#include "platform/Text.h"
#include "platform/WebAddress.h"

namespace {

constexpr int UsualWidth = 900, UsualHeight = 680;  // pixels
constexpr int LeastWidth = 200, LeastHeight = 150;

}  // namespace

PlainWindow::PlainWindow(BrowserWorld& world)
    : world_(world),
      window_(gtk_window_new(GTK_WINDOW_TOPLEVEL)),
      address_(gtk_entry_new()),
      bar_(gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 4)),
      page_(Page::Open(world, *this)),
      callbacks_(page_->Runner()) {
  GtkWidget* rows = gtk_box_new(GTK_ORIENTATION_VERTICAL, 0);
  back_ = AddButton("go-previous-symbolic", "Back", webkit_web_view_go_back);
  forward_ = AddButton("go-next-symbolic", "Forward", webkit_web_view_go_forward);
  gtk_box_pack_start(GTK_BOX(bar_), address_, TRUE, TRUE, 2);
  atk_object_set_name(gtk_widget_get_accessible(address_), "Address");
  gtk_style_context_add_class(gtk_widget_get_style_context(bar_), "toolbar");
  gtk_box_pack_start(GTK_BOX(rows), bar_, FALSE, TRUE, 0);
  gtk_box_pack_start(GTK_BOX(rows), page_->Widget(), TRUE, TRUE, 0);
  gtk_container_add(GTK_CONTAINER(window_), rows);
  gtk_window_set_default_size(GTK_WINDOW(window_), UsualWidth, UsualHeight);
  gtk_widget_show_all(rows);
  callbacks_.On<void(GtkEntry*)>(address_, "activate", [this](auto*) { GoToTyped(); });
  callbacks_.On<gboolean(GtkWidget*, GdkEvent*)>(window_, "delete-event", [this](auto*, auto*) {
    End();
    return TRUE;
  });
  Update();
}

PlainWindow::~PlainWindow() {
  page_->Close();
  callbacks_.Off(window_);
  gtk_widget_destroy(window_);
}

GtkWidget* PlainWindow::AddButton(const char* icon, const char* name,
                                  std::function<void(WebKitWebView*)> pressed) {
  GtkWidget* button = gtk_button_new_from_icon_name(icon, GTK_ICON_SIZE_SMALL_TOOLBAR);
  gtk_button_set_relief(GTK_BUTTON(button), GTK_RELIEF_NONE);
  gtk_widget_set_tooltip_text(button, name);
  atk_object_set_name(gtk_widget_get_accessible(button), name);
  gtk_box_pack_start(GTK_BOX(bar_), button, FALSE, FALSE, 0);
  callbacks_.On<void(GtkWidget*)>(button, "clicked", [this, pressed = std::move(pressed)](auto*) {
    page_->Command();
    pressed(page_->View());
  });
  return button;
}

void PlainWindow::Show(const std::string& uri) {
  page_->Load().Start({uri, {}, true});
  gtk_window_present(GTK_WINDOW(window_));
  gtk_widget_grab_focus(GTK_WIDGET(page_->View()));
}

void PlainWindow::ReadyToShow() {
  // The size that the page asked for, as far as it is one that users can work with.
  GdkRectangle wanted{};
  webkit_window_properties_get_geometry(webkit_web_view_get_window_properties(page_->View()), &wanted);
  if (wanted.width >= LeastWidth && wanted.height >= LeastHeight)
    gtk_window_set_default_size(GTK_WINDOW(window_), wanted.width, wanted.height);
  gtk_window_present(GTK_WINDOW(window_));
  gtk_widget_grab_focus(GTK_WIDGET(page_->View()));
}

void PlainWindow::Update() {
  if (page_->Closed()) return;
  WebKitWebView* view = page_->View();
  const std::string title = Text::ForTitleBar(page_->Title());
  gtk_window_set_title(GTK_WINDOW(window_), title.empty() ? "New window" : title.c_str());
  if (!gtk_widget_has_focus(address_))
    gtk_entry_set_text(GTK_ENTRY(address_), WebAddress::WithoutUser(page_->Address()).c_str());
  gtk_widget_set_sensitive(back_, webkit_web_view_can_go_back(view));
  gtk_widget_set_sensitive(forward_, webkit_web_view_can_go_forward(view));
}

// The handler that asked for it still runs in the page.
void PlainWindow::End() {
  // The page and the user may both close it at once.
  if (std::exchange(ended_, true)) return;
  gtk_widget_hide(window_);
  page_->Quit();
  callbacks_.Later([this] { world_.Forget(*this); });
}

void PlainWindow::WindowWanted(Page*& taker, bool& cancel) {
  world_.AskProgram(world_.PlainWindowPolicy(), taker, cancel);
}

void PlainWindow::GoToTyped() {
  gtk_widget_grab_focus(GTK_WIDGET(page_->View()));
  page_->Load().Start(Address::FromTyped(gtk_entry_get_text(GTK_ENTRY(address_))));
}
