#include "gtk/page/InternetOptions.h"

#include <algorithm>
#include <memory>

#include "gtk/dialog/Notice.h"
#include "gtk/page/BrowserWorld.h"
#include "gtk/page/Page.h"
#include "gtk/page/text/Proxy.h"
#include "platform/Failure.h"

namespace {

constexpr const char* Look = "/marlowick/ui/InternetOptions.ui";
constexpr const char* OpenKey = "internet-options";

// The dialog while it is open; it goes with its window.
class Dialog {
 public:
  explicit Dialog(BrowserWorld& world);
  Dialog(const Dialog&) = delete;
  ~Dialog() {
    g_cancellable_cancel(cancel_.get());
    g_object_set_data(context_, OpenKey, nullptr);
  }

  void Present() { gtk_window_present(GTK_WINDOW(Part("InternetOptions"))); }

 private:
  GtkWidget* Part(const char* name) const { return GTK_WIDGET(gtk_builder_get_object(builder_.get(), name)); }
  GtkEntry* Field(const char* name) const { return GTK_ENTRY(Part(name)); }
  GtkToggleButton* Choice(const char* name) const { return GTK_TOGGLE_BUTTON(Part(name)); }
  GtkSpinButton* Number(const char* name) const { return GTK_SPIN_BUTTON(Part(name)); }
  void Connect(const char* name, const char* signal, GCallback handler) {
    g_signal_connect(Part(name), signal, handler, this);
  }

  void Fill(const ElementSettings& settings);
  ElementSettings Read() const;
  void Update();
  bool Apply();
  void Clear();

  static void OnCurrent(GtkWidget*, gpointer self);
  static void OnBlank(GtkWidget*, gpointer self) {
    gtk_entry_set_text(This(self)->Field("home"), "about:blank");
  }
  static void OnStartPage(GtkWidget*, gpointer self) { gtk_entry_set_text(This(self)->Field("home"), ""); }
  static void OnToggled(GtkWidget*, gpointer self) { This(self)->Update(); }
  static void OnClear(GtkWidget*, gpointer self) { This(self)->Clear(); }
  static void OnCleared(GObject* manager, GAsyncResult* result, gpointer self);
  static void OnResponse(GtkDialog*, int response, gpointer self);
  static void OnDestroyed(GtkWidget*, gpointer self) { delete This(self); }
  static Dialog* This(gpointer self) { return static_cast<Dialog*>(self); }

  BrowserWorld& world_;
  GObject* context_;  // remembers that the dialog is open
  Owned<GtkBuilder> builder_;
  Owned<GCancellable> cancel_;
};

Dialog::Dialog(BrowserWorld& world)
    : world_(world),
      context_(G_OBJECT(world.Base().Context())),
      builder_(gtk_builder_new_from_resource(Look)),
      cancel_(g_cancellable_new()) {
  using S = ElementSettings;
  gtk_spin_button_set_range(Number("font_size"), S::LeastFontSize, S::MostFontSize);
  gtk_spin_button_set_range(Number("zoom"), S::LeastZoom, S::MostZoom);
  gtk_spin_button_set_increments(Number("font_size"), 1, 4);
  gtk_spin_button_set_increments(Number("zoom"), 10, 50);
  atk_object_set_name(gtk_widget_get_accessible(Part("proxy_address")), "Address of the proxy");
  Fill(world.Settings());
  Connect("use_current", "clicked", G_CALLBACK(OnCurrent));
  Connect("use_blank", "clicked", G_CALLBACK(OnBlank));
  Connect("use_start", "clicked", G_CALLBACK(OnStartPage));
  Connect("proxy_by_hand", "toggled", G_CALLBACK(OnToggled));
  Connect("clear_cache", "toggled", G_CALLBACK(OnToggled));
  Connect("clear_data", "toggled", G_CALLBACK(OnToggled));
  Connect("clear", "clicked", G_CALLBACK(OnClear));
  Connect("InternetOptions", "response", G_CALLBACK(OnResponse));
  Connect("InternetOptions", "destroy", G_CALLBACK(OnDestroyed));
  if (GtkWindow* parent = world.MainWindow()) {
    gtk_window_set_transient_for(GTK_WINDOW(Part("InternetOptions")), parent);
    gtk_window_set_destroy_with_parent(GTK_WINDOW(Part("InternetOptions")), TRUE);
  }
  g_object_set_data(context_, OpenKey, this);
  Update();
}

void Dialog::Fill(const ElementSettings& settings) {
  constexpr const char* proxies[] = {"proxy_system", "proxy_none", "proxy_by_hand"};
  gtk_entry_set_text(Field("home"), settings.home.c_str());
  gtk_toggle_button_set_active(Choice(proxies[static_cast<int>(settings.proxy)]), TRUE);
  gtk_entry_set_text(Field("proxy_address"), settings.proxy_address.c_str());
  gtk_toggle_button_set_active(Choice("scripts"), settings.scripts);
  gtk_spin_button_set_value(Number("font_size"), settings.minimum_font_size);
  gtk_spin_button_set_value(Number("zoom"), settings.zoom);
}

ElementSettings Dialog::Read() const {
  using Proxy = ElementSettings::Proxy;
  ElementSettings settings;
  settings.home = gtk_entry_get_text(Field("home"));
  settings.proxy = gtk_toggle_button_get_active(Choice("proxy_by_hand")) ? Proxy::ByHand
                   : gtk_toggle_button_get_active(Choice("proxy_none"))  ? Proxy::None
                                                                         : Proxy::System;
  settings.proxy_address = gtk_entry_get_text(Field("proxy_address"));
  settings.scripts = gtk_toggle_button_get_active(Choice("scripts"));
  settings.minimum_font_size = gtk_spin_button_get_value_as_int(Number("font_size"));
  settings.zoom = gtk_spin_button_get_value_as_int(Number("zoom"));
  return settings;
}

void Dialog::Update() {
  gtk_widget_set_sensitive(Part("proxy_address"), gtk_toggle_button_get_active(Choice("proxy_by_hand")));
  gtk_widget_set_sensitive(Part("clear"), gtk_toggle_button_get_active(Choice("clear_cache")) ||
                                              gtk_toggle_button_get_active(Choice("clear_data")));
}

bool Dialog::Apply() {
  const ElementSettings settings = Read();
  if (settings.proxy == ElementSettings::Proxy::ByHand && settings.proxy_address.empty()) {
    Notice::Show(
        GTK_WINDOW(Part("InternetOptions")), "No proxy is named",
        "Type the proxy's address, such as proxy.example.org:8080, or choose another kind of connection.");
    gtk_widget_grab_focus(Part("proxy_address"));
    return false;
  }
  if (settings.proxy == ElementSettings::Proxy::ByHand && Proxy::FromTyped(settings.proxy_address).empty()) {
    Notice::Show(
        GTK_WINDOW(Part("InternetOptions")), "This is no proxy",
        "No proxy can have the address \"" + settings.proxy_address +
            "\". Type a host and a port, such as proxy.example.org:8080, or a full address that begins "
            "with http, https, socks, socks4 or socks5.");
    gtk_widget_grab_focus(Part("proxy_address"));
    return false;
  }
  try {
    world_.Change(settings);
  } catch (const Failure& failure) {
    Notice::Show(world_.MainWindow(), "The settings weren't kept",
                 std::string(failure.what()) + ". They hold until the program ends.");
  }
  return true;
}

void Dialog::Clear() {
  guint types = 0;
  if (gtk_toggle_button_get_active(Choice("clear_cache")))
    types |=
        WEBKIT_WEBSITE_DATA_MEMORY_CACHE | WEBKIT_WEBSITE_DATA_DISK_CACHE | WEBKIT_WEBSITE_DATA_DOM_CACHE;
  if (gtk_toggle_button_get_active(Choice("clear_data")))
    types |= WEBKIT_WEBSITE_DATA_ALL & ~(WEBKIT_WEBSITE_DATA_MEMORY_CACHE | WEBKIT_WEBSITE_DATA_DISK_CACHE);
  gtk_widget_set_sensitive(Part("clear"), FALSE);
  gtk_spinner_start(GTK_SPINNER(Part("progress")));
  gtk_label_set_text(GTK_LABEL(Part("clear_result")), "Clearing…");
  webkit_website_data_manager_clear(webkit_web_context_get_website_data_manager(world_.Base().Context()),
                                    static_cast<WebKitWebsiteDataTypes>(types), 0, cancel_.get(), OnCleared,
                                    this);
}

void Dialog::OnCleared(GObject* manager, GAsyncResult* result, gpointer data) {
  GError* error = nullptr;
  webkit_website_data_manager_clear_finish(WEBKIT_WEBSITE_DATA_MANAGER(manager), result, &error);
  const OwnedError reason(error);
  // The dialog may be gone where it was cancelled.
  if (g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CANCELLED)) return;
  Dialog* self = This(data);
  gtk_spinner_stop(GTK_SPINNER(self->Part("progress")));
  const std::string text = reason ? std::string("It wasn't cleared: ") + reason->message : "Cleared";
  gtk_label_set_text(GTK_LABEL(self->Part("clear_result")), text.c_str());
  self->Update();
}

void Dialog::OnCurrent(GtkWidget*, gpointer data) {
  // The page on show is the one whose view is mapped.
  const auto& pages = This(data)->world_.Pages();
  const auto shown = std::find_if(pages.begin(), pages.end(), [](Page* page) {
    return page->Element() && gtk_widget_get_mapped(page->Widget());
  });
  if (shown != pages.end()) gtk_entry_set_text(This(data)->Field("home"), (*shown)->Address().c_str());
}

void Dialog::OnResponse(GtkDialog* dialog, int response, gpointer data) {
  if (response == GTK_RESPONSE_OK && !This(data)->Apply()) return;
  g_signal_handlers_disconnect_matched(dialog, G_SIGNAL_MATCH_FUNC, 0, 0, nullptr,
                                       reinterpret_cast<gpointer>(OnResponse), nullptr);
  gtk_widget_destroy(GTK_WIDGET(dialog));
}

}  // namespace

namespace InternetOptions {

void Show(BrowserWorld& world) {
  auto* open = static_cast<Dialog*>(g_object_get_data(G_OBJECT(world.Base().Context()), OpenKey));
  if (!open) open = new Dialog(world);
  open->Present();
}

}  // namespace InternetOptions
