#pragma once

namespace tests {

// While it lives, the n-th block asked for is refused, and with it all later ones or none.
class FailingMemory {
 public:
  FailingMemory(long iNth, bool iAllAfter);
  ~FailingMemory();
  FailingMemory(const FailingMemory&) = delete;
  FailingMemory& operator=(const FailingMemory&) = delete;

  // Whether a block was refused, also by the one before.
  static bool HasStruck();
  // The blocks that nobody has given back yet.
  static long CountBlocks();
};

}  // namespace tests
