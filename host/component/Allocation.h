#pragma once

#include <cstddef>

// Memory for the objects whose creation may answer null, and the switch that makes it do so.
void* AllocateOrNull(std::size_t iSize) noexcept;

// For memory that comes from elsewhere: true when the switch has this allocation fail.
bool AllocationFails() noexcept;
