#pragma once

#include <cstddef>

// Memory for the objects whose creation may answer null, and the switch that makes it do so.
void* AllocateOrNull(std::size_t iSize) noexcept;

// For memory that comes from elsewhere: true when the switch has this allocation fail.
bool AllocationFails() noexcept;

// An operation that fails for want of memory answers like one that finds nothing: whoever must know
// compares the count before and after. What is answered null above is counted; a host notes what
// else it keeps to itself.
long CountFailedAllocations() noexcept;
void NoteFailedAllocation() noexcept;
