#pragma once

#include <cstddef>

// How many elements ahead of its turn a walk over a list has an object fetched from memory. Objects
// of a large plant lie far apart, and a walk would wait for each of them.
inline constexpr std::size_t kFetchedAhead = 8;

inline void FetchAhead(const void* iObject) { __builtin_prefetch(iObject); }
