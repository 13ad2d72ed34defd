#include "gtk/page/Page.h"

#include <utility>

#include "gtk/engine/BrowserWorld.h"
#include "gtk/page/DownloadBar.h"
#include "gtk/page/FindBar.h"
#include "gtk/page/PagePolicy.h"
#include "gtk/page/PlainWindow.h"
#include "platform/Failure.h"
#include "platform/Text.h"

namespace {

// Longer titles are cut: characters. Nobody reads them, and every one is handed about whole.
constexpr size_t MostTitle = 20000;

// Windows that one page may ask for with less than a second between them.
constexpr int MostInARow = 20;

void DestroyLater(WebKitWebView* view) {
  Later([held = std::make_shared<Owned<WebKitWebView>>(Share(view))] {
    gtk_widget_destroy(GTK_WIDGET(held->get()));
  });
}

GtkWidget* MakeBox(GtkWidget* parent, bool grows, bool at_end) {
  GtkWidget* box = gtk_box_new(GTK_ORIENTATION_VERTICAL, 0);
  if (parent && at_end)
    gtk_box_pack_end(GTK_BOX(parent), box, grows, TRUE, 0);
  else if (parent)
    gtk_box_pack_start(GTK_BOX(parent), box, grows, TRUE, 0);
  gtk_widget_show(box);
  return GTK_WIDGET(g_object_ref_sink(box));
}

}  // namespace

std::shared_ptr<Page> Page::Open(BrowserWorld& world, PageOwner& owner) {
  std::shared_ptr<Page> page(new Page(world, owner));
  page->MakeView(nullptr);
  return page;
}

Page::Page(BrowserWorld& world, PageOwner& owner)
    : world_(world),
      owner_(&owner),
      box_(MakeBox(nullptr, true, false)),
      bars_(MakeBox(box_.get(), false, false)),
      feet_(MakeBox(box_.get(), false, true)),
      load_(*this),
      dialogs_(*this) {
  world_.Add(*this);
}

Page::~Page() { Close(); }

void Page::Close() {
  owner_ = nullptr;
  if (!box_) return;
  world_.Remove(*this);
  if (downloads_) downloads_->HandOver();
  DropView();
  quit_ = false;
  gtk_widget_destroy(box_.get());
  downloads_.reset();
}

void Page::Quit() {
  last_address_ = Address();
  last_title_ = Title();
  owner_ = nullptr;
  // The view's own handler still runs.
  Later([weak = weak_from_this()] {
    const auto page = weak.lock();
    if (!page || page->Closed()) return;
    page->quit_ = true;
    page->DropView();
  });
}

WebKitWebView* Page::View() {
  if (Closed()) throw Failure("The page is closed");
  if (!view_) MakeView(nullptr);
  return view_;
}

void Page::MakeView(WebKitWebView* opener) {
  GtkWidget* view = GTK_WIDGET(opener ? g_object_new(WEBKIT_TYPE_WEB_VIEW, "related-view", opener, "settings",
                                                     world_.ViewSettings(), nullptr)
                                      : G_OBJECT(world_.MakeView()));
  view_ = WEBKIT_WEB_VIEW(view);
  gtk_box_pack_start(GTK_BOX(box_.get()), view, TRUE, TRUE, 0);
  gtk_widget_show(view);
  webkit_web_view_set_zoom_level(view_, world_.Settings().zoom / 100.0);
  load_.Attach(view_);
  PagePolicy::Attach(*this, view_);
  dialogs_.Attach(view_);
  g_signal_connect(view, "notify::title", G_CALLBACK(OnTitle), this);
  g_signal_connect(view, "notify::uri", G_CALLBACK(OnAddress), this);
  g_signal_connect(view, "mouse-target-changed", G_CALLBACK(OnHover), this);
  g_signal_connect(view, "close", G_CALLBACK(OnClose), this);
  g_signal_connect(view, "ready-to-show", G_CALLBACK(OnReady), this);
  g_signal_connect(view, "create", G_CALLBACK(OnCreate), this);
  g_signal_connect(view, "destroy", G_CALLBACK(OnDestroyed), this);
}

void Page::LetGoOfView() {
  // It searches by the view.
  find_.reset();
  WebKitWebView* view = view_;
  view_ = nullptr;
  load_.Detach(view);
  dialogs_.Dismiss();
  g_signal_handlers_disconnect_by_data(view, &dialogs_);
  g_signal_handlers_disconnect_by_data(view, this);
}

// The view leaves the screen at once, but ends only when none of its own handlers can be running any more:
// the engine doesn't bear the end of a view within them.
void Page::DropView() {
  if (!view_) return;
  const auto view = Share(view_);
  LetGoOfView();
  gtk_container_remove(GTK_CONTAINER(box_.get()), GTK_WIDGET(view.get()));
  if (asking_ == 0) DestroyLater(view.get());
}

GtkWidget* Page::TakeNewWindow(WebKitWebView* opener) {
  DropView();
  MakeView(opener);
  opened_by_page_ = true;
  return GTK_WIDGET(view_);
}

void Page::OpenElsewhere(const std::string& uri) {
  Page* taker = nullptr;
  bool cancel = false;
  const auto keep = shared_from_this();
  Tell([&](PageOwner& owner) { owner.WindowWanted(taker, cancel); });
  if (cancel) return;
  if (taker)
    taker->Load().Start({uri, {}, true});
  else
    world_.OpenPlainWindow().Show(uri);
}

FindBar& Page::Find() {
  if (!find_) find_ = std::make_unique<FindBar>(*this);
  return *find_;
}

void Page::SearchAgain() {
  if (find_) find_->Renew();
}

DownloadBar& Page::Downloads() {
  if (!downloads_) downloads_ = std::make_unique<DownloadBar>(*this);
  return *downloads_;
}

std::string Page::Address() const {
  const std::string own = load_.KnownAddress();
  if (!own.empty()) return own;
  return view_ ? TextOf(webkit_web_view_get_uri(view_)) : last_address_;
}

std::string Page::Title() const {
  if (!view_) return last_title_;
  const std::string title = Text::Left(TextOf(webkit_web_view_get_title(view_)), MostTitle);
  return title.empty() ? Address::ShortName(Address()) : title;
}

void Page::AddBar(GtkWidget* bar) { gtk_box_pack_start(GTK_BOX(bars_.get()), bar, FALSE, TRUE, 0); }
void Page::AddFoot(GtkWidget* bar) { gtk_box_pack_start(GTK_BOX(feet_.get()), bar, FALSE, TRUE, 0); }

void Page::ClearBars() {
  gtk_container_foreach(
      GTK_CONTAINER(bars_.get()), [](GtkWidget* bar, gpointer) { gtk_widget_destroy(bar); }, nullptr);
}

GtkWindow* Page::Window() {
  GtkWidget* top = gtk_widget_get_toplevel(box_.get());
  return GTK_IS_WINDOW(top) ? GTK_WINDOW(top) : world_.MainWindow();
}

void Page::SetLoadStatus(const std::string& text) {
  load_status_ = text;
  ShowStatus();
}

void Page::ShowStatus() {
  const std::string& text = hovered_.empty() ? load_status_ : hovered_;
  if (text == shown_status_) return;
  shown_status_ = text;
  Tell([shown = text](PageOwner& owner) { owner.StatusChanged(shown); });
}

void Page::OnTitle(GObject*, GParamSpec*, gpointer data) {
  const auto keep = static_cast<Page*>(data)->shared_from_this();
  // It is empty while the next page comes.
  if (TextOf(webkit_web_view_get_title(keep->view_)).empty()) return;
  keep->Tell([](PageOwner& owner) { owner.NameChanged(); });
  keep->load_.Titled();
}

// A page may change its address without a load.
void Page::OnAddress(GObject*, GParamSpec*, gpointer data) {
  const auto keep = static_cast<Page*>(data)->shared_from_this();
  if (!keep->load_.Busy()) keep->Tell([](PageOwner& owner) { owner.NameChanged(); });
}

void Page::OnHover(WebKitWebView*, WebKitHitTestResult* hit, guint, gpointer data) {
  const auto keep = static_cast<Page*>(data)->shared_from_this();
  const bool link = webkit_hit_test_result_context_is_link(hit);
  keep->hovered_ = link ? TextOf(webkit_hit_test_result_get_link_uri(hit)) : std::string();
  keep->ShowStatus();
}

void Page::OnClose(WebKitWebView*, gpointer data) {
  const auto keep = static_cast<Page*>(data)->shared_from_this();
  // Only what a page opened may a page close.
  if (keep->opened_by_page_) keep->Tell([](PageOwner& owner) { owner.CloseWanted(); });
}

void Page::OnReady(WebKitWebView*, gpointer data) {
  const auto keep = static_cast<Page*>(data)->shared_from_this();
  keep->Tell([](PageOwner& owner) { owner.ReadyToShow(); });
}

GtkWidget* Page::OnCreate(WebKitWebView* view, WebKitNavigationAction*, gpointer data) {
  const auto keep = static_cast<Page*>(data)->shared_from_this();
  // The question may take long, and the page that asks may be gone when it is answered.
  const auto opener = Share(view);
  // Whatever the user's choice is, a page in a loop doesn't fill the machine with windows.
  const gint64 now = g_get_monotonic_time();
  if (now - std::exchange(keep->last_request_, now) > G_USEC_PER_SEC) keep->requests_ = 0;
  if (++keep->requests_ > MostInARow) return nullptr;
  Page* taker = nullptr;
  bool cancel = false;
  ++keep->asking_;
  keep->Tell([&](PageOwner& owner) { owner.WindowWanted(taker, cancel); });
  --keep->asking_;
  const bool gone = keep->view_ != view;
  if (gone && keep->asking_ == 0) DestroyLater(view);
  if (cancel || gone || taker == keep.get()) return nullptr;
  if (!taker) taker = &keep->world_.OpenPlainWindow().Shown();
  return taker->TakeNewWindow(view);
}

// The window around the page may go first.
void Page::OnDestroyed(GtkWidget*, gpointer data) {
  auto* self = static_cast<Page*>(data);
  const auto keep = self->shared_from_this();
  self->LetGoOfView();
}
