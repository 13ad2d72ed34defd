#pragma once

#include <sys/types.h>

#include <string>

// Whether the engine can keep its pages in a sandbox on this machine. Where it can't, the engine ends the
// whole program, or leaves the sandbox out without a word; so it is found out before.
//
// What was found is kept until the machine or what matters of it changes: an ordinary start only reads it.
// Else the sandbox's program is tried beside the start.
class SandboxCheck {
 public:
  // `folder` is that of the engine's own data. `sandbox` and `filter` are the programs that the engine uses;
  // one that takes longer than `limit`, in milliseconds, is ended and counts as a no.
  explicit SandboxCheck(const std::string& folder, std::string sandbox = "/usr/bin/bwrap",
                        const std::string& filter = "/usr/bin/xdg-dbus-proxy", int limit = 5000);
  SandboxCheck(const SandboxCheck&) = delete;
  ~SandboxCheck();

  // Why there can't be one; empty: there can. Waits for the answer.
  const std::string& WhyNot();

 private:
  void Try();
  // What the trial says until its end; false where that doesn't come in time.
  bool Listen(std::string& said) const;

  const std::string sandbox_, kept_in_, machine_;
  const int limit_;
  std::string why_not_;
  pid_t trial_ = 0;
  int words_ = -1;  // what the trial says
};
