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
  // `folder` is that of the engine's own data. `sandbox` and `filter` are the programs that the engine uses.
  explicit SandboxCheck(const std::string& folder, std::string sandbox = "/usr/bin/bwrap",
                        const std::string& filter = "/usr/bin/xdg-dbus-proxy");
  SandboxCheck(const SandboxCheck&) = delete;
  ~SandboxCheck();

  // Why there can't be one; empty: there can. Waits for the answer.
  const std::string& WhyNot();

 private:
  void Try();

  const std::string sandbox_, kept_in_, machine_;
  std::string why_not_;
  pid_t trial_ = 0;
  int words_ = -1;  // what the trial says
};
