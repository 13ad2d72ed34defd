#include "gtk/start/SandboxCheck.h"

#include <glib.h>
#include <poll.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <utility>

#include "gtk/base/GObjects.h"

namespace {

// With this file the engine takes the whole machine for the inside of a sandbox that is there already.
constexpr const char* Pretence = "/.flatpak-info";

std::string Content(const char* path) {
  std::ifstream file(path);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

std::string Identity(const std::string& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) return path + " missing\n";
  std::ostringstream text;
  text << path << ' ' << status.st_dev << ' ' << status.st_ino << ' ' << status.st_mtim.tv_sec << '.'
       << status.st_mtim.tv_nsec << ' ' << status.st_mode << '\n';
  return text.str();
}

// What decides whether a sandbox can be made: this boot, who asks from where, and what the system forbids.
std::string Machine(const std::string& sandbox, const std::string& filter) {
  std::string all = Content("/proc/sys/kernel/random/boot_id") + std::to_string(::geteuid()) + '\n';
  for (const std::string& path : {std::string("/"), sandbox, filter}) all += Identity(path);
  for (const char* rule : {"/proc/sys/user/max_user_namespaces", "/proc/sys/kernel/unprivileged_userns_clone",
                           "/proc/sys/kernel/apparmor_restrict_unprivileged_userns"})
    all += Content(rule);
  std::istringstream status(Content("/proc/self/status"));
  for (std::string line; std::getline(status, line);)
    if (line.starts_with("Cap") || line.starts_with("NoNewPrivs") || line.starts_with("Seccomp"))
      all += line + '\n';
  return all;
}

std::string Missing(const std::string& program, const char* package) {
  if (::access(program.c_str(), X_OK) == 0) return "";
  return program + " can't be run: " + std::strerror(errno) + " (package " + package + ")";
}

}  // namespace

SandboxCheck::SandboxCheck(const std::string& folder, std::string sandbox, const std::string& filter,
                           int limit)
    : sandbox_(std::move(sandbox)),
      kept_in_(folder + "/sandbox"),
      machine_(Machine(sandbox_, filter)),
      limit_(limit) {
  if (::access(Pretence, F_OK) == 0)
    why_not_ = std::string("the file ") + Pretence +
               " makes the engine think that there is one around the whole program";
  if (why_not_.empty()) why_not_ = Missing(sandbox_, "bubblewrap");
  if (why_not_.empty()) why_not_ = Missing(filter, "xdg-dbus-proxy");
  if (why_not_.empty() && Content(kept_in_.c_str()) != machine_) Try();
}

SandboxCheck::~SandboxCheck() { WhyNot(); }

// As the engine does, with nothing in it.
void SandboxCheck::Try() {
  std::array<std::string, 13> words = {sandbox_,
                                       "--die-with-parent",
                                       "--unshare-pid",
                                       "--unshare-uts",
                                       "--unshare-net",
                                       "--ro-bind",
                                       "/",
                                       "/",
                                       "--proc",
                                       "/proc",
                                       "--dev",
                                       "/dev",
                                       "/bin/true"};
  std::array<char*, words.size() + 1> arguments{};
  for (size_t i = 0; i < words.size(); ++i) arguments[i] = words[i].data();
  GError* error = nullptr;
  if (!g_spawn_async_with_pipes(nullptr, arguments.data(), nullptr, G_SPAWN_DO_NOT_REAP_CHILD, nullptr,
                                nullptr, &trial_, nullptr, nullptr, &words_, &error))
    why_not_ = OwnedError(error)->message;
}

bool SandboxCheck::Listen(std::string& said) const {
  const gint64 end = g_get_monotonic_time() + limit_ * gint64{1000};
  for (;;) {
    const gint64 left = (end - g_get_monotonic_time()) / 1000;
    struct pollfd words {
      words_, POLLIN, 0
    };
    const int ready = left > 0 ? ::poll(&words, 1, static_cast<int>(left)) : 0;
    if (ready == 0) return false;
    char piece[1024];
    const ssize_t got = ready < 0 ? ready : ::read(words_, piece, sizeof piece);
    if (got > 0) said.append(piece, static_cast<size_t>(got));
    if (got == 0 || (got < 0 && errno != EINTR)) return true;
  }
}

const std::string& SandboxCheck::WhyNot() {
  if (words_ < 0) return why_not_;
  std::string said;
  const bool ended = Listen(said);
  if (!ended) ::kill(trial_, SIGKILL);
  ::close(std::exchange(words_, -1));
  int status = 0;
  while (::waitpid(trial_, &status, 0) < 0 && errno == EINTR) {
  }
  if (!ended) {
    why_not_ = sandbox_ + " doesn't come to an end";
  } else if (status == 0) {
    std::error_code ignored;
    std::filesystem::create_directory(std::filesystem::path(kept_in_).parent_path(), ignored);
    // Where it can't be kept, the next start tries again.
    g_file_set_contents_full(kept_in_.c_str(), machine_.data(), static_cast<gssize>(machine_.size()),
                             G_FILE_SET_CONTENTS_CONSISTENT, 0600, nullptr);
  } else {
    while (!said.empty() && g_ascii_isspace(said.back())) said.pop_back();
    why_not_ = said.empty() ? sandbox_ + " failed" : said;
  }
  return why_not_;
}
