#pragma once

#include <string>

namespace embedded {

// A lock on a file carries the time when it was taken, for those who wait. Times are lost, not
// locks, where that is impossible.
void NoteLockTime(int iDescriptor);

// Who has the lock on the open file since when, as far as this machine knows.
std::string DescribeLockHolder(int iDescriptor);

}  // namespace embedded
