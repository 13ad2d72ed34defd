#include "gtk/start/HandOver.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <thread>

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

// Between two looks at a folder whose program comes up or goes down.
constexpr milliseconds Pause{10}, PauseWhenSentAway{50};

bool SendAll(int connection, const std::string& bytes) {
  for (size_t sent = 0; sent < bytes.size();) {
    const ssize_t now = ::send(connection, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
    if (now < 0 && errno == EINTR) continue;
    if (now <= 0) return false;
    sent += static_cast<size_t>(now);
  }
  return ::shutdown(connection, SHUT_WR) == 0;
}

}  // namespace

HandOver::HandOver(FolderLock& lock, const Request& request) : lock_(lock), request_(request.Packed()) {}

HandOver::~HandOver() { HangUp(); }

HandOver::Outcome HandOver::Try(milliseconds patience) {
  const auto end = steady_clock::now() + patience;
  for (;;) {
    if (lock_.Take()) {
      HangUp();
      return Outcome::FolderIsOurs;
    }
    const auto left = std::chrono::duration_cast<milliseconds>(end - steady_clock::now());
    if (left <= milliseconds(0)) return Outcome::NoAnswer;
    if (connection_ < 0 && !Connect())
      std::this_thread::sleep_for(Pause);
    else if (Answered(left))
      return Outcome::TakenOver;
  }
}

bool HandOver::Connect() {
  const sockaddr_un address = lock_.Socket();
  connection_ = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  if (connection_ >= 0 &&
      ::connect(connection_, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 &&
      SendAll(connection_, request_))
    return true;
  HangUp();
  return false;
}

void HandOver::HangUp() {
  if (connection_ >= 0) ::close(connection_);
  connection_ = -1;
}

bool HandOver::Answered(milliseconds longest) {
  pollfd waiting{connection_, POLLIN, 0};
  if (::poll(&waiting, 1, static_cast<int>(std::min<milliseconds::rep>(longest.count(), 1000))) <= 0)
    return false;
  char answer = 0;
  if (::recv(connection_, &answer, 1, 0) == 1) return true;
  // It has ended, or is about to.
  HangUp();
  std::this_thread::sleep_for(PauseWhenSentAway);
  return false;
}
