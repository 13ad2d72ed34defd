#pragma once

#include <string>

// International names of hosts, which engines write as "xn--…".
namespace HostName {

// A web address with its host as people read it: each part of an international name is in its own script
// where it can't be mistaken for another one and stands where it belongs, and in its ASCII form otherwise.
// Any other text stays as it is.
std::string Shown(const std::string& address);

}  // namespace HostName
