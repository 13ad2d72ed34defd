#pragma once

#include <stdexcept>
#include <string>

// A failed operation. The text names what failed and which file, index or value it was about.
class Failure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Runs one statement and goes on where it fails.
template <class Statement>
void Skipping(Statement&& statement) {
  try {
    statement();
  } catch (const Failure&) {
  }
}
