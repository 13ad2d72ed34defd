#include "gtk/page/HeldWindows.h"

#include <algorithm>
#include <utility>

#include "gtk/page/BrowserWorld.h"
#include "gtk/page/Page.h"
#include "gtk/page/text/SiteName.h"

namespace {

// What one press on the bar opens at the most.
constexpr size_t MostHeld = 5;
constexpr int AllowSite = 1;

}  // namespace

void HeldWindows::Hold(const std::string& uri) {
  if (!bar_ && page_.Asks().Full()) return;
  if (!bar_) {
    site_ = SiteName::Of(page_.Load().DocumentAddress());
    asker_ = page_.Asker();
    wanted_.clear();
    MakeBar();
  }
  if (wanted_.size() == MostHeld || std::find(wanted_.begin(), wanted_.end(), uri) != wanted_.end()) return;
  wanted_.push_back(uri);
  Tell(asker_ + " wants to open " +
       (wanted_.size() == 1 ? "a new window." : std::to_string(wanted_.size()) + " new windows."));
}

void HeldWindows::Forget() {
  if (bar_) gtk_widget_destroy(bar_);
}

void HeldWindows::MakeBar() {
  bar_ = gtk_info_bar_new_with_buttons("_Open", GTK_RESPONSE_ACCEPT, nullptr);
  auto* bar = GTK_INFO_BAR(bar_);
  if (!site_.empty()) gtk_info_bar_add_button(bar, "_Allow for This Site", AllowSite);
  gtk_info_bar_set_message_type(bar, GTK_MESSAGE_QUESTION);
  gtk_info_bar_set_show_close_button(bar, TRUE);
  label_ = gtk_label_new(nullptr);
  gtk_label_set_line_wrap(GTK_LABEL(label_), TRUE);
  gtk_label_set_xalign(GTK_LABEL(label_), 0);
  gtk_container_add(GTK_CONTAINER(gtk_info_bar_get_content_area(bar)), label_);
  page_.Calls().On<void(GtkWidget*, int)>(bar_, "response",
                                          [this](auto*, int response) { Respond(response); });
  page_.Calls().On<void(GtkWidget*)>(bar_, "destroy", [this](auto*) { bar_ = label_ = nullptr; });
  page_.AddBar(bar_);
  gtk_widget_show_all(bar_);
}

void HeldWindows::Tell(const std::string& text) { gtk_label_set_text(GTK_LABEL(label_), text.c_str()); }

void HeldWindows::Respond(int response) {
  const std::vector<std::string> wanted = std::exchange(wanted_, {});
  // The page may go while its windows come; what there is of the bar tells where it stands.
  const auto keep = page_.shared_from_this();
  if (response == AllowSite) page_.World().AllowWindows(site_);
  std::string why;
  if (response == AllowSite || response == GTK_RESPONSE_ACCEPT)
    for (const std::string& uri : wanted) {
      if (!page_.MayLeadTo(uri))
        why = "It wasn't opened: an address that begins with \"" + Address::Scheme(uri) +
              ":\" is opened only where you press for it in the page.";
      else if (!page_.OpenWanted(uri))
        why = "It wasn't opened: Browser Options say which new windows are.";
    }
  if (!bar_) return;
  if (why.empty()) return gtk_widget_destroy(bar_);
  Tell(why);
}
