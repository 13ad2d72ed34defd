#include "gtk/page/LogIn.h"

#include <memory>
#include <utility>

#include "platform/Text.h"

namespace {

constexpr size_t MostOfRealm = 200;  // characters
constexpr guint UsualPort = 80, UsualSecurePort = 443;

struct FreeCredential {
  void operator()(WebKitCredential* credential) const { webkit_credential_free(credential); }
};
using Credential = std::unique_ptr<WebKitCredential, FreeCredential>;

Owned<GtkWidget> Keep(GtkWidget* widget) { return Owned<GtkWidget>(GTK_WIDGET(g_object_ref_sink(widget))); }

bool IsEncrypted(WebKitAuthenticationRequest* request) {
  WebKitSecurityOrigin* origin = webkit_authentication_request_get_security_origin(request);
  const bool encrypted = TextOf(webkit_security_origin_get_protocol(origin)) == "https";
  webkit_security_origin_unref(origin);
  return encrypted;
}

std::string ServerOf(WebKitAuthenticationRequest* request) {
  const std::string host = TextOf(webkit_authentication_request_get_host(request));
  const guint port = webkit_authentication_request_get_port(request);
  const bool usual = !webkit_authentication_request_is_for_proxy(request) &&
                     port == (IsEncrypted(request) ? UsualSecurePort : UsualPort);
  return usual || port == 0 ? host : host + ":" + std::to_string(port);
}

std::string Heading(WebKitAuthenticationRequest* request, const std::string& page_site) {
  std::string who = ServerOf(request);
  if (webkit_authentication_request_is_for_proxy(request))
    who = "The proxy " + who;
  else if (!page_site.empty())
    who += ", for a part of the page of " + page_site + ",";
  return who + " asks for a name and a password.";
}

std::string Details(WebKitAuthenticationRequest* request) {
  const std::string realm = Text::Left(TextOf(webkit_authentication_request_get_realm(request)), MostOfRealm);
  std::string text;
  if (webkit_authentication_request_is_retry(request)) text += "The name or the password was wrong.\n";
  if (!realm.empty()) text += "The server says: \"" + realm + "\"\n";
  if (!webkit_authentication_request_is_for_proxy(request) && !IsEncrypted(request))
    text += "What you enter is sent without encryption.\n";
  if (!text.empty()) text.pop_back();
  return text;
}

void AddText(GtkWidget* rows, const std::string& text, bool bold) {
  GtkWidget* label = gtk_label_new(text.c_str());
  gtk_label_set_line_wrap(GTK_LABEL(label), TRUE);
  gtk_label_set_line_wrap_mode(GTK_LABEL(label), PANGO_WRAP_WORD_CHAR);
  gtk_label_set_xalign(GTK_LABEL(label), 0);
  PangoAttrList* look = pango_attr_list_new();
  if (bold) pango_attr_list_insert(look, pango_attr_weight_new(PANGO_WEIGHT_BOLD));
  gtk_label_set_attributes(GTK_LABEL(label), look);
  pango_attr_list_unref(look);
  gtk_container_add(GTK_CONTAINER(rows), label);
}

Owned<GtkWidget> AddField(GtkWidget* grid, int row, const char* name, const char* mnemonic) {
  GtkWidget* label = gtk_label_new_with_mnemonic(mnemonic);
  gtk_label_set_xalign(GTK_LABEL(label), 0);
  Owned<GtkWidget> field = Keep(gtk_entry_new());
  gtk_widget_set_hexpand(field.get(), TRUE);
  atk_object_set_name(gtk_widget_get_accessible(field.get()), name);
  gtk_label_set_mnemonic_widget(GTK_LABEL(label), field.get());
  gtk_grid_attach(GTK_GRID(grid), label, 0, row, 1, 1);
  gtk_grid_attach(GTK_GRID(grid), field.get(), 1, row, 1, 1);
  return field;
}

bool IsAnswered(WebKitAuthenticationRequest* request) {
  switch (webkit_authentication_request_get_scheme(request)) {
    case WEBKIT_AUTHENTICATION_SCHEME_CLIENT_CERTIFICATE_REQUESTED:
    case WEBKIT_AUTHENTICATION_SCHEME_SERVER_TRUST_EVALUATION_REQUESTED:
    case WEBKIT_AUTHENTICATION_SCHEME_CLIENT_CERTIFICATE_PIN_REQUESTED:
      return false;
    default:
      return true;
  }
}

}  // namespace

LogIn::LogIn(GtkWidget* place, Callbacks::Runner runner)
    : place_(Share(place)), callbacks_(std::move(runner)) {}

bool LogIn::Ask(WebKitAuthenticationRequest* request, const std::string& page_site) {
  if (!IsAnswered(request)) return false;
  const std::string asked = Heading(request, page_site) + "\n" + Details(request);
  if (refused_.contains(asked)) {
    webkit_authentication_request_authenticate(request, nullptr);
    return true;
  }
  if (bar_ && asked != asked_) Dismiss();
  waiting_.push_back(Share(request));
  if (bar_) return true;
  asked_ = asked;
  MakeBar(request, page_site);
  TakeKeyboard();
  return true;
}

void LogIn::MakeBar(WebKitAuthenticationRequest* request, const std::string& page_site) {
  bar_ = Keep(
      gtk_info_bar_new_with_buttons("_Log In", GTK_RESPONSE_ACCEPT, "_Cancel", GTK_RESPONSE_CANCEL, nullptr));
  auto* bar = GTK_INFO_BAR(bar_.get());
  gtk_info_bar_set_message_type(bar, GTK_MESSAGE_QUESTION);
  GtkWidget* rows = gtk_box_new(GTK_ORIENTATION_VERTICAL, 6);
  AddText(rows, Heading(request, page_site), true);
  const std::string details = Details(request);
  if (!details.empty()) AddText(rows, details, false);
  GtkWidget* grid = gtk_grid_new();
  gtk_grid_set_row_spacing(GTK_GRID(grid), 6);
  gtk_grid_set_column_spacing(GTK_GRID(grid), 6);
  name_ = AddField(grid, 0, "Name", "_Name:");
  password_ = AddField(grid, 1, "Password", "_Password:");
  gtk_entry_set_visibility(GTK_ENTRY(password_.get()), FALSE);
  gtk_entry_set_input_purpose(GTK_ENTRY(password_.get()), GTK_INPUT_PURPOSE_PASSWORD);
  if (const Credential known{webkit_authentication_request_get_proposed_credential(request)})
    gtk_entry_set_text(GTK_ENTRY(name_.get()), webkit_credential_get_username(known.get()));
  gtk_container_add(GTK_CONTAINER(rows), grid);
  remember_ = Keep(gtk_check_button_new_with_mnemonic("_Remember it"));
  if (webkit_authentication_request_can_save_credentials(request))
    gtk_container_add(GTK_CONTAINER(rows), remember_.get());
  gtk_container_add(GTK_CONTAINER(gtk_info_bar_get_content_area(bar)), rows);
  callbacks_.On<void(GtkInfoBar*, int)>(bar, "response", [this](auto*, int response) {
    response == GTK_RESPONSE_ACCEPT ? LogOn() : void(Refuse());
  });
  callbacks_.On<void(GtkEntry*)>(name_.get(), "activate",
                                 [this](auto*) { gtk_widget_grab_focus(password_.get()); });
  callbacks_.On<void(GtkEntry*)>(password_.get(), "activate", [this](auto*) { LogOn(); });
  gtk_box_pack_start(GTK_BOX(place_.get()), bar_.get(), FALSE, TRUE, 0);
  gtk_widget_show_all(bar_.get());
}

// A page behind, or beside what the user is typing into, doesn't take the keyboard.
void LogIn::TakeKeyboard() {
  GtkWidget* page = gtk_widget_get_parent(place_.get());
  GtkWidget* top = gtk_widget_get_toplevel(place_.get());
  GtkWidget* focus = GTK_IS_WINDOW(top) ? gtk_window_get_focus(GTK_WINDOW(top)) : nullptr;
  if (!page || !gtk_widget_get_mapped(page) || (focus && !gtk_widget_is_ancestor(focus, page))) return;
  gtk_widget_grab_focus(name_.get());
}

void LogIn::LogOn() {
  if (!bar_) return;
  const bool remembers = gtk_toggle_button_get_active(GTK_TOGGLE_BUTTON(remember_.get()));
  const Credential credential{webkit_credential_new(
      gtk_entry_get_text(GTK_ENTRY(name_.get())), gtk_entry_get_text(GTK_ENTRY(password_.get())),
      remembers ? WEBKIT_CREDENTIAL_PERSISTENCE_PERMANENT : WEBKIT_CREDENTIAL_PERSISTENCE_FOR_SESSION)};
  for (const auto& request : End())
    webkit_authentication_request_authenticate(request.get(), credential.get());
}

bool LogIn::Refuse() {
  if (!bar_) return false;
  refused_.insert(asked_);
  for (const auto& request : End()) webkit_authentication_request_authenticate(request.get(), nullptr);
  return true;
}

void LogIn::Dismiss() {
  if (!bar_) return;
  for (const auto& request : End()) webkit_authentication_request_cancel(request.get());
}

void LogIn::Forget() {
  Dismiss();
  refused_.clear();
}

std::vector<Owned<WebKitAuthenticationRequest>> LogIn::End() {
  gtk_widget_destroy(std::exchange(bar_, nullptr).get());
  for (auto* part : {&name_, &password_, &remember_}) part->reset();
  return std::exchange(waiting_, {});
}
