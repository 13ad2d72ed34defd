// A page is asked before it is closed.

#include <utility>

#include "gtk/page/BrowserWorld.h"
#include "gtk/page/Page.h"

namespace {

// What a page may take to say that it has nothing against it, or to ask its question.
constexpr unsigned PatienceMilliseconds = 2000;

}  // namespace

void Page::AskToClose(std::function<void(bool agreed)> answered) {
  const bool nobody = world_.Base().Driven() || !view_ || blank_ || died_ || load_.ShowsOwnPage() ||
                      !webkit_web_view_get_is_web_process_responsive(view_);
  if (nobody) return answered(true);
  // What else it has asked, be it about leaving by itself, would keep it from answering, and is no answer.
  if (!closing_) dialogs_.Refuse();
  const bool asked = std::exchange(closing_, std::move(answered)) != nullptr;
  if (asked && dialogs_.Up()) return Tell([](PageOwner& owner) { owner.QuestionUp(); });
  if (asked) return;
  ++closings_;
  webkit_web_view_try_close(view_);
  patience_ = callbacks_.After(PatienceMilliseconds, [this] {
    patience_ = 0;
    if (!dialogs_.Up()) AnswerClosing(true);
  });
}

void Page::AnswerClosing(bool agreed) {
  callbacks_.Cancel(std::exchange(patience_, 0));
  // The engine's own handler still runs, and the answer may be the page's end.
  if (const auto answered = std::exchange(closing_, nullptr)) callbacks_.Later([=] { answered(agreed); });
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
