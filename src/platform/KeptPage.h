#pragma once

#include <string>

// A page as it can be made again: what its tab showed, and where it has been.
struct KeptPage {
  // InMemory for as long as the program runs. OnDisk nothing is kept of addresses with a user's name or
  // password.
  enum class Where { InMemory, OnDisk };

  std::string Address;
  std::string Title;
  // The pages before and behind it with their places, as the engine's bytes; empty where there is no more to
  // tell than the address. Never what was sent with a form: making the page again sends nothing twice.
  std::string History;
};
