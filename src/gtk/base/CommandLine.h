#pragma once

#include <optional>
#include <string>
#include <vector>

// What the command line asks for.
struct CommandLine {
  // What belongs on the terminal instead of a start, with the status to end with.
  struct Answer {
    std::string text;
    int status = 0;  // 2: the text is a complaint
  };

  std::string address;      // one address, its words joined by blanks; empty: none
  bool new_window = false;  // a plain window, where the program runs already
  bool service = false;     // started by the session's bus, which says what is wanted
  std::optional<Answer> answer;
  bool automation = false;  // a tool drives this start

  // `arguments` are those behind the program's name. A relative name of a file that is there becomes an
  // absolute one, since the program's own working directory is nobody's business.
  static CommandLine Read(const std::vector<std::string>& arguments);
};
