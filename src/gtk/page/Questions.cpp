#include "gtk/page/Questions.h"

#include <algorithm>
#include <utility>

namespace {

// From this question on the user can tell the page to stop.
constexpr int PatientQuestions = 3;
constexpr int MostLines = 3;  // of a text: names can be long, and a bar doesn't push the page away

Owned<GtkWidget> Keep(GtkWidget* widget) { return Owned<GtkWidget>(GTK_WIDGET(g_object_ref_sink(widget))); }

GtkWidget* MakeLabel(const std::string& text) {
  GtkWidget* label = gtk_label_new(text.c_str());
  gtk_label_set_line_wrap(GTK_LABEL(label), TRUE);
  gtk_label_set_line_wrap_mode(GTK_LABEL(label), PANGO_WRAP_WORD_CHAR);
  gtk_label_set_ellipsize(GTK_LABEL(label), PANGO_ELLIPSIZE_END);
  gtk_label_set_lines(GTK_LABEL(label), MostLines);
  gtk_label_set_xalign(GTK_LABEL(label), 0);
  return label;
}

}  // namespace

Questions::Questions(GtkWidget* place, Callbacks::Runner runner, std::function<size_t()> others)
    : place_(Share(place)), others_(std::move(others)), callbacks_(std::move(runner)) {}

Questions::~Questions() { Forget(); }

void Questions::Ask(const Question& question, Answered answered) {
  Past& past = past_[question.text];
  if (past.refused) return answered(false);
  const auto standing = std::find_if(bars_.begin(), bars_.end(), [&question](const auto& bar) {
    return bar->question.text == question.text;
  });
  if (standing != bars_.end()) return (*standing)->waiting.push_back(std::move(answered));
  const bool barred = std::any_of(bars_.begin(), bars_.end(), [&question](const auto& bar) {
    return !question.alone.empty() && bar->question.alone == question.alone;
  });
  if (barred || Full()) return answered(false);
  ++past.asked;
  AddBar(question, std::move(answered));
}

void Questions::AddBar(const Question& question, Answered answered) {
  const auto bar = std::make_shared<Bar>();
  bar->question = question;
  bar->waiting.push_back(std::move(answered));
  bar->widget = Keep(gtk_info_bar_new_with_buttons(question.yes.c_str(), GTK_RESPONSE_ACCEPT,
                                                   question.no.c_str(), GTK_RESPONSE_REJECT, nullptr));
  auto* info = GTK_INFO_BAR(bar->widget.get());
  gtk_info_bar_set_message_type(info, GTK_MESSAGE_QUESTION);
  gtk_info_bar_set_show_close_button(info, TRUE);
  GtkWidget* rows = gtk_box_new(GTK_ORIENTATION_VERTICAL, 6);
  gtk_widget_set_valign(rows, GTK_ALIGN_CENTER);
  gtk_container_add(GTK_CONTAINER(rows), MakeLabel(question.text));
  if (question.refusal == Refusal::MayBeStopped && past_[question.text].asked >= PatientQuestions) {
    bar->stop = Keep(gtk_check_button_new_with_mnemonic("The page _may not ask again"));
    gtk_container_add(GTK_CONTAINER(rows), bar->stop.get());
  }
  gtk_container_add(GTK_CONTAINER(gtk_info_bar_get_content_area(info)), rows);
  callbacks_.On<void(GtkInfoBar*, int)>(info, "response", [this, text = question.text](auto*, int response) {
    Respond(text, response == GTK_RESPONSE_ACCEPT);
  });
  gtk_box_pack_start(GTK_BOX(place_.get()), bar->widget.get(), FALSE, TRUE, 0);
  gtk_widget_show_all(bar->widget.get());
  bars_.push_back(bar);
}

void Questions::Respond(const std::string& text, bool yes) {
  const auto found = std::find_if(bars_.begin(), bars_.end(),
                                  [&text](const auto& bar) { return bar->question.text == text; });
  if (found == bars_.end()) return;
  const auto bar = *found;
  bars_.erase(found);
  const bool stopped = bar->stop && gtk_toggle_button_get_active(GTK_TOGGLE_BUTTON(bar->stop.get()));
  past_[text].refused = stopped || (!yes && bar->question.refusal == Refusal::Holds);
  End(bar, yes);
}

void Questions::End(const std::shared_ptr<Bar>& bar, bool yes) {
  gtk_widget_destroy(bar->widget.get());
  for (const Answered& answered : std::exchange(bar->waiting, {})) answered(yes);
}

bool Questions::Full() const { return All() >= MostBars; }

void Questions::MakeRoom() {
  while (!bars_.empty() && All() > MostBars) {
    const auto newest = bars_.back();
    bars_.pop_back();
    End(newest, false);
  }
}

void Questions::Forget() {
  past_.clear();
  for (const auto& bar : std::exchange(bars_, {})) End(bar, false);
}
