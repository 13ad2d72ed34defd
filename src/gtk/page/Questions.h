#pragma once

#include <gtk/gtk.h>

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "gtk/base/Callbacks.h"
#include "gtk/base/GObjects.h"

// What a page wants of the user, each wish in a bar above the page. A page waits for the answer, the rest of
// the program doesn't. Equal questions share one bar, few bars stand at once, and what the user refuses the
// page isn't asked for again: a page can't wear anybody down.
class Questions {
 public:
  static constexpr size_t MostBars = 3;

  // What becomes of a refusal: it holds until the page is left; or the user's own press may bring the
  // question again, and from the third on a box in it offers to stop the page.
  enum class Refusal { Holds, MayBeStopped };
  struct Question {
    std::string text;
    std::string yes, no;  // of the buttons, "_" before the mnemonic's letter
    Refusal refusal = Refusal::Holds;
    // Of the questions of one such kind only one stands at a time, and others aren't asked meanwhile.
    std::string alone = {};
  };
  // Called once for each that was asked: at once where nobody is asked.
  using Answered = std::function<void(bool yes)>;

  // The bars are made in `place`, a box. `others` tells how many bars stand besides, which count as well.
  Questions(GtkWidget* place, Callbacks::Runner runner, std::function<size_t()> others = {});
  Questions(const Questions&) = delete;
  ~Questions();

  void Ask(const Question& question, Answered answered);
  // The page is left: whatever stands is refused, and the next page begins anew.
  void Forget();
  // No further bar may stand.
  bool Full() const;
  // A bar has come that can't wait: the newest questions make room for it, as if refused this once.
  void MakeRoom();
  // The questions that stand.
  size_t Standing() const { return bars_.size(); }

 private:
  struct Bar {
    Question question;
    std::vector<Answered> waiting;
    Owned<GtkWidget> widget, stop;
  };
  struct Past {
    int asked = 0;
    bool refused = false;
  };

  void AddBar(const Question& question, Answered answered);
  void Respond(const std::string& text, bool yes);
  // Takes the bar away, and only then tells: whoever hears it may ask or leave the page.
  static void End(const std::shared_ptr<Bar>& bar, bool yes);

  size_t All() const { return bars_.size() + (others_ ? others_() : 0); }

  Owned<GtkWidget> place_;
  std::function<size_t()> others_;
  std::vector<std::shared_ptr<Bar>> bars_;
  std::map<std::string, Past> past_;  // by the question's text
  Callbacks callbacks_;
};
