#pragma once

#include <string>
#include <vector>

// The browser element's own page in place of one that can't be shown.
struct ErrorPage {
  struct Action {
    std::string text;
    std::string address;  // where the button leads
  };

  std::string title;    // what happened, in a few words
  std::string address;  // of the page that was wanted
  std::string reason;   // why, in a sentence
  std::string advice;   // what the user can do
  std::vector<Action> actions;

  // The whole page; every text in it escaped.
  std::string Html() const;
};
