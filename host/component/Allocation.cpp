#include "host/component/Allocation.h"

#include <cstdlib>

#include "host/component/ZefBaseUnknown.h"

namespace {
int allocationsUntilFailure = 0;
}

void FailAllocation(int iNth) { allocationsUntilFailure = iNth; }

bool AllocationFails() noexcept {
  return allocationsUntilFailure > 0 && --allocationsUntilFailure == 0;
}

void* AllocateOrNull(std::size_t iSize) noexcept {
  return AllocationFails() ? nullptr : std::malloc(iSize);
}
