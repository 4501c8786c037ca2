#pragma once

#include <cstddef>

// Memory for the objects whose creation may answer null, and the switch that makes it do so.
void* AllocateOrNull(std::size_t iSize) noexcept;
