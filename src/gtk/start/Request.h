#pragma once

#include <optional>
#include <string>

// What a start asks of the program that has its folder already.
struct Request {
  enum class What { Tab, PlainWindow };

  What what = What::Tab;
  std::string address;  // empty: none, and the program only comes to the front; or the home page in a window
  std::string startup_id;  // of the desktop's start-up notification, with the time of the user's press

  // As bytes to be handed over, and back; nothing for what is no request.
  std::string Packed() const;
  static std::optional<Request> Unpack(const std::string& bytes);
};

// What has become of a request.
enum class Reception { Taken, Later, Closing };
