#pragma once

#include <chrono>
#include <deque>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "gtk/base/CommandLine.h"
#include "gtk/start/BusName.h"
#include "gtk/start/Door.h"
#include "gtk/start/FolderLock.h"
#include "gtk/start/HandOver.h"
#include "gtk/start/Leftovers.h"
#include "gtk/start/ProgramFiles.h"
#include "gtk/start/SandboxCheck.h"
#include "platform/Failure.h"

// How a process comes to be the program of its folder, or hands what it was started with over to the one that
// is. Needs no display.
class Entry {
 public:
  enum class Way { Run, Done, NoAnswer };

  explicit Entry(const CommandLine& line);

  // Goes on for so long at most. NoAnswer: another process has the folder and takes nothing over; a further
  // call goes on where this one ended. What can't be done at all becomes `Trouble`, and the way is to run:
  // the program tells it.
  Way Knock(std::chrono::milliseconds patience);

  // For Run: what earlier runs left damaged, and whether there can be a sandbox, none where there is to be
  // none. Both wait for what was begun beside the start.
  std::vector<Leftovers::Damaged> Damaged() {
    return damaged_.valid() ? damaged_.get() : std::vector<Leftovers::Damaged>();
  }
  SandboxCheck* Sandbox() { return sandbox_.get(); }

  // For Run: what the first tab shows, the folder, and where other starts come.
  std::string Address() const { return request_.address; }
  const HomeFolder& Folder() const { return folder_; }
  bool Driven() const { return driven_; }  // by a tool
  const std::optional<Failure>& Trouble() const { return trouble_; }
  // Takes requests from now on.
  void Open(const Door::Receive& receive);

  // For NoAnswer: the process that has the folder, 0 where it isn't known.
  pid_t Owner() const { return lock_->Owner(); }

 private:
  void Begin();
  void WaitForSummons();
  void FindOut();
  // Whether there was one that is still to be dealt with.
  bool TakeNext();

  Request request_;
  const bool service_, driven_;
  bool begun_ = false;
  std::deque<Request> further_;
  HomeFolder folder_;
  std::optional<Failure> trouble_;
  std::unique_ptr<FolderLock> lock_;
  std::unique_ptr<HandOver> hand_over_;
  std::unique_ptr<Door> door_;
  std::unique_ptr<BusName> bus_;
  std::unique_ptr<SandboxCheck> sandbox_;
  std::future<std::vector<Leftovers::Damaged>> damaged_;
  std::future<void> old_cache_;
};
