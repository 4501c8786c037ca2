#include "host/component/Allocation.h"

#include <cstdlib>

#include "host/component/ZefBaseUnknown.h"

namespace {
int allocationsUntilFailure = 0;
}

void FailAllocation(int iNth) { allocationsUntilFailure = iNth; }

void* AllocateOrNull(std::size_t iSize) noexcept {
  if (allocationsUntilFailure > 0 && --allocationsUntilFailure == 0) return nullptr;
  return std::malloc(iSize);
}
