#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

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

  // Keeps an earlier position of the same pointer. False when the table is too full.
  template <class At>
  bool Add(const void* iPointer, int iPosition, const At& at) {
    const std::size_t slot = Probe(iPointer, at);
    if (slots_[slot] != kFree) return true;
    slots_[slot] = iPosition;
    return ++used_ * 4 <= slots_.size() * 3;
  }

  // Forgets that the pointer stands at the position. The slot stays in use when others were put
  // behind it, which must still be found.
  template <class At>
  void Drop(const void* iPointer, int iPosition, const At& at) {
    const std::size_t slot = Probe(iPointer, at);
    if (slots_[slot] != iPosition) return;
    const bool isLast = slots_[(slot + 1) & (slots_.size() - 1)] == kFree;
    slots_[slot] = isLast ? kFree : kDropped;
    used_ -= isLast;
  }

 private:
  static constexpr int kFree = 0;
  static constexpr int kDropped = -1;

  template <class At>
  std::size_t Probe(const void* iPointer, const At& at) const {
    const std::size_t mask = slots_.size() - 1;
    std::size_t slot = Hash(iPointer) & mask;
    while (slots_[slot] != kFree && (slots_[slot] == kDropped || at(slots_[slot]) != iPointer)) {
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
