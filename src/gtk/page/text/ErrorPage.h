#pragma once

#include <string>
#include <vector>

// The browser element's own page in place of one that can't be shown.
struct ErrorPage {
  struct Action {
    enum class Kind { Open, GoOn, Openly };

    std::string text;
    std::string address;  // what the button opens
    // GoOn: opens it in spite of the certificate that was refused. Openly: even without encryption.
    Kind kind = Kind::Open;
  };

  std::string title;    // what happened, in a few words
  std::string address;  // of the page that was wanted
  std::string reason;   // why, in a sentence
  std::string advice;   // what the user can do
  std::vector<Action> actions;

  // The whole page; every text in it escaped. Button n leads to `buttons` followed by n, so that only the
  // program knows what a press does; where that is empty, straight to its address.
  std::string Html(const std::string& buttons = {}) const;
};
