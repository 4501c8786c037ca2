#pragma once

#include <stdexcept>

// A file that cannot be loaded. The text is one sentence for the user: what is wrong, where, and
// what would be right.
class LibraryUnusable : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};
