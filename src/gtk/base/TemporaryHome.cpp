#include "gtk/base/TemporaryHome.h"

#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <filesystem>

#include "platform/Failure.h"

namespace {

// The engine's processes end a little behind the program's, and may still write.
constexpr int Attempts = 50;
constexpr useconds_t Pause = 100 * 1000;  // microseconds

// Waits for the end of the process that holds the pipe's other end, and removes the folder.
[[noreturn]] void Watch(int end, const std::filesystem::path& folder) {
  ::setsid();
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) ::signal(signal, SIG_IGN);
  const int nothing = ::open("/dev/null", O_RDWR);
  for (const int standard : {0, 1, 2}) ::dup2(nothing, standard);
  char byte = 0;
  while (::read(end, &byte, 1) < 0 && errno == EINTR) {
  }
  for (int i = 0; i < Attempts; ++i) {
    std::error_code error;
    std::filesystem::remove_all(folder, error);
    ::usleep(Pause);
    if (!std::filesystem::exists(folder, error)) break;
  }
  ::_exit(0);
}

}  // namespace

namespace TemporaryHome {

std::string Make() {
  std::error_code unknown;
  std::string folder = std::filesystem::temp_directory_path(unknown) / "marlowick-driven-XXXXXX";
  const auto fail = [&folder](const char* what) {
    throw Failure("The folder \"" + folder + "\" can't be " + what + ": " + std::strerror(errno));
  };
  if (!::mkdtemp(folder.data())) fail("made");
  // The writing end stays open in this process alone, to its end.
  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) fail("watched");
  const pid_t child = ::fork();
  if (child < 0) fail("watched");
  if (child == 0) {
    ::close(ends[1]);
    Watch(ends[0], folder);
  }
  ::close(ends[0]);
  return folder;
}

}  // namespace TemporaryHome
