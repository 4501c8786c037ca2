#include "host/component/Allocation.h"

#include <cstdlib>

#include "host/component/ZefBaseUnknown.h"

namespace {
int allocationsUntilFailure = 0;
long failed = 0;
}  // namespace

void FailAllocation(int iNth) { allocationsUntilFailure = iNth; }

bool AllocationFails() noexcept {
  return allocationsUntilFailure > 0 && --allocationsUntilFailure == 0;
}

long CountFailedAllocations() noexcept { return failed; }
void NoteFailedAllocation() noexcept { ++failed; }

void* AllocateOrNull(std::size_t iSize) noexcept {
  void* const memory = AllocationFails() ? nullptr : std::malloc(iSize);
  if (!memory) NoteFailedAllocation();
  return memory;
}
