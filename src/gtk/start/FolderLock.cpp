#include "gtk/start/FolderLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "platform/Failure.h"

namespace {

constexpr const char *LockName = ".lock", *SocketName = ".socket";

[[noreturn]] void Fail(const std::filesystem::path& folder) {
  throw Failure("The program's folder \"" + folder.string() + "\" can't be locked, by its file \"" +
                LockName + "\": " + std::strerror(errno));
}

}  // namespace

FolderLock::FolderLock(std::filesystem::path folder)
    : folder_(std::move(folder)),
      folder_handle_(::open(folder_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
  if (folder_handle_ >= 0)
    file_ = ::openat(folder_handle_, LockName, O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
  if (file_ >= 0) return;
  if (folder_handle_ >= 0) ::close(folder_handle_);
  Fail(folder_);
}

FolderLock::~FolderLock() {
  ::close(file_);
  ::close(folder_handle_);
}

bool FolderLock::Take() {
  while (::flock(file_, LOCK_EX | LOCK_NB) != 0) {
    if (errno == EWOULDBLOCK) return false;
    if (errno != EINTR) Fail(folder_);
  }
  // For people's eyes and the message of a start that waits.
  const std::string own = std::to_string(::getpid()) + "\n";
  if (::ftruncate(file_, 0) != 0 ||
      ::pwrite(file_, own.data(), own.size(), 0) < 0) { /* it holds all the same */
  }
  return true;
}

pid_t FolderLock::Owner() const {
  char text[32] = {};
  return ::pread(file_, text, sizeof text - 1, 0) > 0 ? std::atoi(text) : 0;
}

sockaddr_un FolderLock::Socket() const {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::snprintf(address.sun_path, sizeof address.sun_path, "/proc/self/fd/%d/%s", folder_handle_, SocketName);
  return address;
}
