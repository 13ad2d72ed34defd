#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "gtk/start/FolderLock.h"
#include "gtk/start/Request.h"

// A start's way to its folder: it gets the folder, or the program that has it takes the request over.
class HandOver {
 public:
  enum class Outcome { FolderIsOurs, TakenOver, NoAnswer };

  // The lock isn't taken yet.
  HandOver(FolderLock& lock, const Request& request);
  HandOver(const HandOver&) = delete;
  ~HandOver();

  // Goes on for so long at most. NoAnswer: somebody has the folder and hasn't taken the request; a further
  // call goes on where this one ended. A program that goes down isn't waited for longer than it takes.
  // Fails as the lock does.
  Outcome Try(std::chrono::milliseconds patience);

 private:
  bool Connect();
  void HangUp();
  // Whether the request has been taken; waits for an answer.
  bool Answered(std::chrono::milliseconds longest);

  FolderLock& lock_;
  const std::string request_;
  int connection_ = -1;
};
