#include "gtk/page/InternetOptions.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "gtk/base/DefaultBrowser.h"
#include "gtk/dialog/Notice.h"
#include "gtk/dialog/OwnDialog.h"
#include "gtk/page/BrowserWorld.h"
#include "gtk/page/Page.h"
#include "gtk/page/text/Proxy.h"
#include "gtk/page/text/Search.h"
#include "platform/Failure.h"
#include "platform/WebAddress.h"
#include "platform/dialog/Controls.h"

namespace {

constexpr const char* OpenKey = "internet-options";

// With blanks between.
std::string Joined(const std::vector<std::string>& sites) {
  std::string text;
  for (const std::string& site : sites) text += (text.empty() ? "" : " ") + site;
  return text;
}

std::vector<std::string> Split(const std::string& text) {
  std::istringstream parts(text);
  return {std::istream_iterator<std::string>(parts), {}};
}

class OptionsDialog : public OwnDialog {
 public:
  explicit OptionsDialog(BrowserWorld& world);
  ~OptionsDialog() override { g_cancellable_cancel(cancel_.get()); }

  Controls::TextBox home{*this, "home"};
  Controls::TextBox search{*this, "search"}, keywords{*this, "keywords"};
  Controls::CommandButton use_current{*this, "use_current"}, use_start{*this, "use_start"},
      use_blank{*this, "use_blank"};
  Controls::Group proxies;
  Controls::OptionButton proxy_system{*this, "proxy_system", proxies},
      proxy_none{*this, "proxy_none", proxies}, proxy_by_hand{*this, "proxy_by_hand", proxies};
  Controls::TextBox proxy_address{*this, "proxy_address"};
  Controls::CheckBox scripts{*this, "scripts"}, https_only{*this, "https_only"},
      tracking_prevention{*this, "tracking_prevention"};
  Controls::TextBox window_sites{*this, "window_sites"};
  Controls::NumberBox font_size{*this, "font_size", ElementSettings::LeastFontSize,
                                ElementSettings::MostFontSize};
  Controls::NumberBox zoom{*this, "zoom", ElementSettings::LeastZoom, ElementSettings::MostZoom};
  Controls::CheckBox clear_cache{*this, "clear_cache"}, clear_data{*this, "clear_data"};
  Controls::CommandButton clear{*this, "clear"};
  Controls::Label clear_result{*this, "clear_result"};
  Controls::Label default_browser{*this, "default_browser"};
  Controls::CommandButton become_default{*this, "become_default"}, never_default{*this, "never_default"};
  Controls::CommandButton cancel{*this, "cancel"}, ok{*this, "ok"};

 private:
  void Fill(const ElementSettings& settings);
  ElementSettings Read() const;
  void Update();
  bool SearchFits(const ElementSettings& settings);
  // Says whether other programs' addresses come here, and offers it to who hasn't refused it.
  void ShowDefaultBrowser();
  void BecomeDefault();
  void NeverDefault();
  bool ProxyFits(const ElementSettings& settings);
  void Apply();
  void Clear();
  void Cleared(GObject* manager, GAsyncResult* result);
  std::string PageOnShow() const;
  void End();

  BrowserWorld& world_;
  std::string shown_sites_;  // those that may open windows, as the dialog came up
  bool clearing_ = false;
  Owned<GCancellable> cancel_{g_cancellable_new()};
  Callbacks callbacks_;
};

OptionsDialog::OptionsDialog(BrowserWorld& world)
    : OwnDialog(world.MainWindow(), "InternetOptions"),
      world_(world),
      callbacks_([&gate = world.Gate()](const std::function<void()>& handler) { gate.Run(handler); }) {
  Fill(world.Settings());
  clear_cache.Value = 1;
  use_current.Click = [this] { home.Text = PageOnShow(); };
  use_start.Click = [this] { home.Text = ""; };
  use_blank.Click = [this] { home.Text = "about:blank"; };
  for (Controls::OptionButton* option : proxies.Members()) option->Click = [this] { Update(); };
  clear_cache.Click = clear_data.Click = [this] { Update(); };
  clear.Click = [this] { Clear(); };
  become_default.Click = [this] { BecomeDefault(); };
  never_default.Click = [this] { NeverDefault(); };
  ShowDefaultBrowser();
  ok.Click = [this] { Apply(); };
  cancel.Click = QueryUnload = [this] { End(); };
  Update();
}

void OptionsDialog::Fill(const ElementSettings& settings) {
  home.Text = settings.home;
  search.Text = settings.search;
  keywords.Text = settings.keywords;
  proxies.Members()[static_cast<size_t>(settings.proxy)]->Value = true;
  proxy_address.Text = settings.proxy_address;
  scripts.Value = settings.scripts ? 1 : 0;
  https_only.Value = settings.https_only ? 1 : 0;
  tracking_prevention.Value = settings.tracking_prevention ? 1 : 0;
  font_size.Value = settings.minimum_font_size;
  zoom.Value = settings.zoom;
  window_sites.Text = shown_sites_ = Joined(settings.window_sites);
}

ElementSettings OptionsDialog::Read() const {
  using Proxy = ElementSettings::Proxy;
  ElementSettings settings = world_.Settings();
  settings.home = home.Text;
  settings.search = search.Text;
  settings.keywords = keywords.Text;
  settings.proxy = proxy_by_hand.Value ? Proxy::ByHand : proxy_none.Value ? Proxy::None : Proxy::System;
  settings.proxy_address = proxy_address.Text;
  settings.scripts = scripts.Value != 0;
  settings.https_only = https_only.Value != 0;
  settings.tracking_prevention = tracking_prevention.Value != 0;
  settings.minimum_font_size = font_size.Value;
  settings.zoom = zoom.Value;
  // What the user allows in a page while the dialog is open stays, unless this was changed.
  if (window_sites.Text() != shown_sites_) settings.window_sites = Split(window_sites.Text);
  return settings;
}

void OptionsDialog::Update() {
  proxy_address.Enabled = proxy_by_hand.Value;
  clear.Enabled = !clearing_ && (clear_cache.Value || clear_data.Value);
}

bool OptionsDialog::SearchFits(const ElementSettings& settings) {
  std::string wrong;
  if (Search::Fit({settings.search, settings.keywords}, wrong)) return true;
  Notice::Show(
      world_.MainWindow(), "This is no search",
      "\"" + wrong +
          "\" can't be searched by. Type an address of the web with %s where the words belong, such as "
          "https://search.example.org/?q=%s; in front of each further one its keyword.");
  (wrong == settings.search ? search : keywords).SetFocus();
  return false;
}

void OptionsDialog::ShowDefaultBrowser() {
  using State = DefaultBrowser::State;
  const State state = DefaultBrowser::Now();
  const bool refused = world_.Settings().no_default_browser;
  const bool offers = state == State::Other && !refused;
  become_default.Visible = never_default.Visible = offers;
  if (state == State::Ours)
    default_browser.Caption = "Addresses in other programs open in Marlowick.";
  else if (state == State::NotInstalled)
    default_browser.Caption = "Marlowick isn't installed, so addresses in other programs open elsewhere.";
  else
    default_browser.Caption = offers ? "Addresses in other programs don't open in Marlowick. Shall they?"
                                     : "Addresses in other programs don't open in Marlowick. The desktop's "
                                       "settings can change that.";
}

void OptionsDialog::BecomeDefault() {
  try {
    DefaultBrowser::BecomeIt();
  } catch (const Failure& failure) {
    Notice::Show(world_.MainWindow(), "Marlowick isn't the default browser",
                 std::string(failure.what()) + ". Try it in the desktop's settings.");
  }
  ShowDefaultBrowser();
}

void OptionsDialog::NeverDefault() {
  ElementSettings settings = world_.Settings();
  settings.no_default_browser = true;
  try {
    world_.Change(settings);
  } catch (const Failure& failure) {
    Notice::Show(world_.MainWindow(), "The answer wasn't kept",
                 std::string(failure.what()) + ". It holds until the program ends.");
  }
  ShowDefaultBrowser();
}

bool OptionsDialog::ProxyFits(const ElementSettings& settings) {
  if (settings.proxy != ElementSettings::Proxy::ByHand) return true;
  if (settings.proxy_address.empty())
    Notice::Show(
        world_.MainWindow(), "No proxy is named",
        "Type the proxy's address, such as proxy.example.org:8080, or choose another kind of connection.");
  else if (Proxy::FromTyped(settings.proxy_address).empty())
    Notice::Show(world_.MainWindow(), "This is no proxy",
                 "No proxy can have the address \"" + settings.proxy_address +
                     "\". Type a host and a port, such as proxy.example.org:8080, or a full address that "
                     "begins with http, https, socks, socks4 or socks5.");
  else
    return true;
  proxy_address.SetFocus();
  return false;
}

void OptionsDialog::Apply() {
  const ElementSettings settings = Read();
  if (!SearchFits(settings) || !ProxyFits(settings)) return;
  try {
    world_.Change(settings);
  } catch (const Failure& failure) {
    Notice::Show(world_.MainWindow(), "The settings weren't kept",
                 std::string(failure.what()) + ". They hold until the program ends.");
  }
  End();
}

void OptionsDialog::Clear() {
  guint types = 0;
  if (clear_cache.Value)
    types |=
        WEBKIT_WEBSITE_DATA_MEMORY_CACHE | WEBKIT_WEBSITE_DATA_DISK_CACHE | WEBKIT_WEBSITE_DATA_DOM_CACHE;
  if (clear_data.Value)
    types |= WEBKIT_WEBSITE_DATA_ALL & ~(WEBKIT_WEBSITE_DATA_MEMORY_CACHE | WEBKIT_WEBSITE_DATA_DISK_CACHE);
  clearing_ = true;
  clear_result.Caption = "Clearing…";
  Update();
  webkit_website_data_manager_clear(
      webkit_web_context_get_website_data_manager(world_.Base().Context()),
      static_cast<WebKitWebsiteDataTypes>(types), 0, cancel_.get(), Callbacks::Ended,
      callbacks_.Ending([this](GObject* manager, GAsyncResult* result) { Cleared(manager, result); }));
}

void OptionsDialog::Cleared(GObject* manager, GAsyncResult* result) {
  GError* error = nullptr;
  webkit_website_data_manager_clear_finish(WEBKIT_WEBSITE_DATA_MANAGER(manager), result, &error);
  const OwnedError reason(error);
  clear_result.Caption = reason ? std::string("It wasn't cleared: ") + reason->message : "Cleared";
  clearing_ = false;
  Update();
}

// The page on show is the one whose view is mapped.
std::string OptionsDialog::PageOnShow() const {
  for (Page* page : world_.Pages())
    if (page->Element() && gtk_widget_get_mapped(page->Widget()))
      return WebAddress::WithoutUser(page->Address());
  return home.Text;
}

void OptionsDialog::End() {
  g_object_set_data(G_OBJECT(world_.Base().Context()), OpenKey, nullptr);
  Close();
}

}  // namespace

namespace InternetOptions {

void Show(BrowserWorld& world) {
  auto* context = G_OBJECT(world.Base().Context());
  if (auto* open = static_cast<OptionsDialog*>(g_object_get_data(context, OpenKey))) return open->SetFocus();
  const auto dialog = std::make_shared<OptionsDialog>(world);
  g_object_set_data(context, OpenKey, dialog.get());
  OwnDialog::Open(dialog);
}

}  // namespace InternetOptions
