#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "host/values/FetchAhead.h"

// Finds the first position of a pointer in a list that keeps the pointers themselves: a hash table
// of positions with linear probing. Four bytes an entry keep it in the processor's caches where
// a map of nodes would not be.
class PositionIndex {
 public:
  // Not before Reset, nor after the index was moved from.
  bool IsBuilt() const { return !slots_.empty(); }
  void Clear() { slots_.clear(); }
  // Empties the index and makes room for `iSize` pointers.
  void Reset(std::size_t iSize) {
    slots_.assign(std::bit_ceil(2 * iSize + 64), kFree);
    used_ = 0;
  }

  // Counted from 1; 0 when there is none. `at(position)` answers the pointer at a position.
  template <class At>
  int Find(const void* iPointer, const At& at) const {
    return slots_[Probe(iPointer, at)];
  }

  // Has the place where Find begins fetched from memory.
  void Fetch(const void* iPointer) const {
    FetchBytes(&slots_[Hash(iPointer) & (slots_.size() - 1)], sizeof(int));
  }

  // Answers the earlier position of the same pointer, which it keeps, or 0.
  template <class At>
  int Add(const void* iPointer, int iPosition, const At& at) {
    int& slot = slots_[Probe(iPointer, at)];
    if (slot != kFree) return slot;
    slot = iPosition;
    ++used_;
    return 0;
  }
  // Time to build it anew, larger.
  bool IsCrowded() const { return 2 * used_ > slots_.size(); }

  // Forgets the greatest position, at which the pointer stands. None was added after it, so no
  // probe leads across its slot.
  template <class At>
  void DropLast(const void* iPointer, int iPosition, const At& at) {
    const std::size_t slot = Probe(iPointer, at);
    if (slots_[slot] != iPosition) return;
    slots_[slot] = kFree;
    --used_;
  }

 private:
  static constexpr int kFree = 0;

  template <class At>
  std::size_t Probe(const void* iPointer, const At& at) const {
    const std::size_t mask = slots_.size() - 1;
    std::size_t slot = Hash(iPointer) & mask;
    while (slots_[slot] != kFree && at(slots_[slot]) != iPointer) {
      slot = (slot + 1) & mask;
    }
    return slot;
  }
  static std::size_t Hash(const void* iPointer) {
    const auto number = reinterpret_cast<std::uintptr_t>(iPointer);
    return static_cast<std::size_t>((number * 0x9E3779B97F4A7C15u) >> 24);
  }

  std::vector<int> slots_;
  std::size_t used_ = 0;
};
