// A page is asked before it is closed.

#include <algorithm>
#include <utility>

#include "gtk/page/BrowserWorld.h"
#include "gtk/page/HangWatch.h"
#include "gtk/page/Page.h"
#include "gtk/page/text/SiteName.h"

namespace {

// What a page may take to say that it has nothing against being closed, or left, or to ask its question. Who
// goes elsewhere doesn't wait for a page that is busy.
constexpr unsigned PatienceMilliseconds = 2000, PatienceOfLeavers = 500;

}  // namespace

void Page::AskToClose(std::function<void(bool agreed)> answered) {
  const bool nobody = world_.Base().Driven() || !view_ || blank_ || died_ || load_.ShowsOwnPage() ||
                      !webkit_web_view_get_is_web_process_responsive(view_);
  leaving_ = false;
  if (nobody) return answered(true);
  // What else it has asked, be it about leaving by itself, would keep it from answering, and is no answer.
  if (!closing_) dialogs_.Refuse();
  const bool asked = std::exchange(closing_, std::move(answered)) != nullptr;
  if (asked && dialogs_.Up()) return Tell([](PageOwner& owner) { owner.QuestionUp(); });
  if (asked) return;
  ++closings_;
  webkit_web_view_try_close(view_);
  BePatient(PatienceMilliseconds);
}

void Page::BePatient(unsigned milliseconds) {
  callbacks_.Cancel(std::exchange(patience_, 0));
  patience_ = callbacks_.After(milliseconds, [this] {
    patience_ = 0;
    if (!dialogs_.Up()) AnswerClosing(true);
  });
}

void Page::AnswerClosing(bool agreed) {
  callbacks_.Cancel(std::exchange(patience_, 0));
  leaving_ = false;
  // The engine's own handler still runs, and the answer may be the page's end.
  if (const auto answered = std::exchange(closing_, nullptr)) callbacks_.Later([=] { answered(agreed); });
}

// A page that nobody has touched has nothing to lose, and may not ask.
bool Page::LeavesUnasked(const std::string& uri) const {
  const std::string from = SiteName::Of(load_.DocumentAddress()), to = SiteName::Of(uri);
  // The engine doesn't look at the scheme.
  const bool same =
      from.substr(std::min(from.find("://"), from.size())) == to.substr(std::min(to.find("://"), to.size()));
  return !same && presses_ != presses_before_ && !left_anyway_ && !opened_by_page_ && !process_.Tied() &&
         !hang_->Hung();
}

void Page::AskToLeave(const std::string& uri, std::function<void(bool agreed)> answered) {
  if (!LeavesUnasked(uri)) return answered(true);
  AskToClose([this, answered = std::move(answered)](bool agreed) {
    // The load may go on to another address by itself.
    if (agreed) left_anyway_ = true;
    answered(agreed);
  });
  leaving_ = closing_ != nullptr;
  if (leaving_ && patience_) BePatient(PatienceOfLeavers);
}

void Page::AskToFollow(const std::string& uri, std::function<void(bool agreed)> answered) {
  const char* script = "/^(I?FRAME|OBJECT|EMBED)$/.test(document.activeElement?.tagName)";
  webkit_web_view_evaluate_javascript(
      view_, script, -1, "marlowick", nullptr, nullptr, Callbacks::Ended,
      callbacks_.Ending([this, uri, answered = std::move(answered)](GObject* view, GAsyncResult* result) {
        const Owned<JSCValue> in_frame(
            webkit_web_view_evaluate_javascript_finish(WEBKIT_WEB_VIEW(view), result, nullptr));
        if (in_frame && jsc_value_to_boolean(in_frame.get())) return answered(true);
        AskToLeave(uri, answered);
      }));
}

// The user wants another page, or none: nobody is to be closed or left any more. Who was asked about leaving
// isn't asked a second time.
void Page::GoElsewhere() {
  left_anyway_ = leaving_;
  if (closing_) AnswerClosing(false);
}

// The engine takes a page for one that agrees when it hasn't answered within a twentieth of a second. By the
// time a script of ours runs, it has answered, or its question is up.
void Page::HearOut() {
  webkit_web_view_evaluate_javascript(view_, "0", -1, "marlowick", nullptr, nullptr, Callbacks::Ended,
                                      callbacks_.Ending([this, closing = closings_](auto*, auto*) {
                                        if (closing == closings_ && !dialogs_.Up()) AnswerClosing(true);
                                      }));
}

// Unasked, a page may close only what a page opened.
void Page::TakeClose() {
  if (closing_)
    HearOut();
  else if (opened_by_page_ || world_.Base().Driven())
    Tell([](PageOwner& owner) { owner.CloseWanted(); });
}

void Page::TakeDialog(WebKitScriptDialog* dialog) {
  dialogs_.Ask(dialog, Asker());
  const bool leaves =
      webkit_script_dialog_get_dialog_type(dialog) == WEBKIT_SCRIPT_DIALOG_BEFORE_UNLOAD_CONFIRM;
  if (leaves && closing_ && dialogs_.Up()) Tell([](PageOwner& owner) { owner.QuestionUp(); });
}
