#pragma once

#include <algorithm>
#include <cstddef>
#include <span>

// Has memory fetched that is read soon: objects of a large plant lie far apart, and a walk would
// wait for each of them. An address is never looked at, so what was there may have ended.

// How many elements ahead of its turn a walk over a list has an object fetched.
inline constexpr std::size_t kFetchedAhead = 32;

inline void FetchBytes(const void* iBegin, std::size_t iSize) {
  constexpr std::size_t kLine = 64;
  const auto* const bytes = static_cast<const char*>(iBegin);
  for (std::size_t byte = 0; byte < iSize; byte += kLine) __builtin_prefetch(bytes + byte);
  __builtin_prefetch(bytes + iSize - 1);
  // Else the compiler drops a call that does nothing else.
  asm volatile("");
}

// What queries of an object read: its beginning, up to the first of its further interfaces.
inline void FetchAhead(const void* iObject) { FetchBytes(iObject, 4 * sizeof(void*)); }

// The same for the element that is so far behind the index in an array of pointers, or of what has
// `Get`.
template <class Elements>
void FetchAhead(const Elements& iElements, std::size_t iIndex) {
  if (iIndex + kFetchedAhead >= iElements.size()) return;
  const auto& element = iElements[iIndex + kFetchedAhead];
  if constexpr (requires { element.Get(); }) {
    FetchAhead(element.Get());
  } else {
    FetchAhead(element);
  }
}

// The count of a handle's object alone, for passes that only take or give back references. Nothing
// for an index beyond the end, or before the beginning and so very large.
template <class Handles>
void FetchCount(const Handles& iHandles, std::size_t iIndex) {
  if (iIndex < iHandles.size()) FetchBytes(iHandles[iIndex].Get(), 1);
}

// The first elements of an array: a walk that may go on to any of its elements has these fetched.
template <class Elements>
auto FirstFew(const Elements& iElements) {
  constexpr std::size_t kFew = 4;
  return std::span(iElements.data(), std::min(iElements.size(), kFew));
}
