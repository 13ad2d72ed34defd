#pragma once

#include <sys/types.h>
#include <sys/un.h>

#include <filesystem>
#include <string>

// The one thing that decides which process is the program of a folder: a lock on a file in it, which the
// system takes back however that process ends. Beside it lies the socket to that process.
class FolderLock {
 public:
  // Fails where the folder can't be locked by anybody.
  explicit FolderLock(std::filesystem::path folder);
  FolderLock(const FolderLock&) = delete;
  ~FolderLock();

  // Takes the lock, until this object's end. False: another process has it. Fails where there are no locks.
  bool Take();
  // The process that has it, 0 where it isn't known.
  pid_t Owner() const;

  const std::filesystem::path& Folder() const { return folder_; }
  // Where the socket is. The name is short, whatever the folder's is, and good while this object lives.
  sockaddr_un Socket() const;

 private:
  const std::filesystem::path folder_;
  int folder_handle_ = -1, file_ = -1;
};
