#pragma once

#include <stdexcept>
#include <string>

namespace embedded {

// Input that cannot be used. The text is one sentence for the user: what is wrong, where, and what
// would be right.
class InputError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace embedded
