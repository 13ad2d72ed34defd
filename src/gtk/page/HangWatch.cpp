#include "gtk/page/HangWatch.h"

#include <string>

#include "gtk/page/Page.h"

namespace {

// Milliseconds: how long a page may take to answer, how long the user waits who said so, and how long a page
// may take to let go.
constexpr unsigned Answers = 4000, Patience = 10000, LetsGo = 800;

}  // namespace

HangWatch::HangWatch(Page& page, GtkWidget* place)
    : page_(page), place_(Share(place)), calls_(page.Runner()) {}

void HangWatch::Attach(WebKitWebView* view) {
  view_ = view;
  for (const char* doing : {"button-press-event", "key-press-event", "scroll-event"})
    calls_.On<gboolean(GtkWidget*, GdkEvent*)>(view, doing, [this](auto*, auto*) {
      Watch();
      return FALSE;
    });
}

void HangWatch::Detach() {
  Taken();
  Answered();
  if (view_) calls_.Off(view_);
  view_ = nullptr;
}

bool HangWatch::Hung() const { return view_ && hung_ && !page_.ScriptAsks(); }

void HangWatch::Ask() {
  if (!view_ || std::exchange(asked_, true)) return;
  webkit_web_view_evaluate_javascript(view_, "0", -1, "marlowick", nullptr, nullptr, Callbacks::Ended,
                                      calls_.Ending([this](GObject* view, GAsyncResult*) {
                                        if (view_ && G_OBJECT(view_) == view) Answered();
                                      }));
}

void HangWatch::Answered() {
  asked_ = hung_ = false;
  calls_.Cancel(std::exchange(silent_, 0));
  calls_.Cancel(std::exchange(stopping_, 0));
  TakeBack();
}

// What has shown nothing yet may take its time to start.
void HangWatch::Watch() {
  if (!view_ || page_.Blank() || silent_ || hung_) return;
  Ask();
  silent_ = calls_.After(Answers, [this] {
    silent_ = 0;
    // A script that asks waits for the user, not the user for it.
    if (page_.ScriptAsks()) return Watch();
    hung_ = true;
    Offer();
  });
}

void HangWatch::Offer() {
  bar_.reset(GTK_WIDGET(g_object_ref_sink(
      gtk_info_bar_new_with_buttons("_Wait", GTK_RESPONSE_REJECT, "_End It", GTK_RESPONSE_ACCEPT, nullptr))));
  auto* info = GTK_INFO_BAR(bar_.get());
  gtk_info_bar_set_message_type(info, GTK_MESSAGE_WARNING);
  const std::string who = page_.Site().empty() ? "This page" : page_.Site();
  GtkWidget* label = gtk_label_new((who + " doesn't answer.").c_str());
  gtk_label_set_ellipsize(GTK_LABEL(label), PANGO_ELLIPSIZE_MIDDLE);
  gtk_label_set_xalign(GTK_LABEL(label), 0);
  gtk_container_add(GTK_CONTAINER(gtk_info_bar_get_content_area(info)), label);
  calls_.On<void(GtkInfoBar*, int)>(info, "response", [this](auto*, int response) {
    TakeBack();
    if (response == GTK_RESPONSE_ACCEPT) return End();
    silent_ = calls_.After(Patience, [this] {
      silent_ = 0;
      Offer();
    });
  });
  gtk_box_pack_start(GTK_BOX(place_.get()), bar_.get(), FALSE, TRUE, 0);
  gtk_widget_show_all(bar_.get());
}

void HangWatch::TakeBack() {
  if (const auto bar = std::move(bar_)) gtk_widget_destroy(bar.get());
}

void HangWatch::End() {
  Answered();
  if (view_) webkit_web_view_terminate_web_process(view_);
}

// Other pages may live in the process, and only the user ends those.
void HangWatch::MakeWay() {
  makes_way_ = true;
  Answered();
  page_.LeaveProcess();
  makes_way_ = false;
}

void HangWatch::EndPage() {
  Answered();
  page_.EndHere();
}

void HangWatch::Stop() {
  if (!view_ || page_.Blank()) return;
  if (Hung()) return EndPage();
  Ask();
  if (!stopping_)
    stopping_ = calls_.After(LetsGo, [this] {
      stopping_ = 0;
      if (!page_.ScriptAsks()) EndPage();
    });
}

void HangWatch::Leave(std::function<void()> load) {
  Taken();
  if (Hung()) MakeWay();
  load();
  if (!view_ || page_.Blank()) return;
  leaving_ = calls_.After(LetsGo, [this, load = std::move(load)] {
    leaving_ = 0;
    if (!view_ || page_.ScriptAsks()) return;
    MakeWay();
    load();
  });
}
