#include <boost/pool/pool.hpp>
#include <cstddef>
#include <cstdlib>
#include <new>
#include <sys/mman.h>

#include "embedded/model/Activity.h"
#include "host/component/Allocation.h"
#include "host/component/LiveObjects.h"

namespace embedded {

#ifdef TUV_SANITIZE

// Each a block of its own, so that the sanitizers see who loses it or reads it too late.
void* Activity::operator new(std::size_t iSize) noexcept { return AllocateObject(iSize); }
void Activity::operator delete(void* iActivity) noexcept { FreeObject(iActivity); }

#else

namespace {

constexpr std::size_t kLine = 64;
constexpr std::size_t kLargePage = std::size_t{2} << 20;

constexpr std::size_t RoundUp(std::size_t size, std::size_t unit) {
  return (size + unit - 1) / unit * unit;
}

// An odd number of lines: with an even one the same parts of all activities would crowd in half of
// the cache.
constexpr std::size_t kSlot =
    kLine * (RoundUp(kObjectRecord + sizeof(Activity), kLine) / kLine | 1);

// Where the pool has its memory from: large pages once there is enough for them, as walks over many
// activities else wait for the translation of addresses.
struct LargePages {
  using size_type = std::size_t;
  using difference_type = std::ptrdiff_t;

  static char* malloc(size_type size) {
    const bool isLarge = size >= kLargePage;
    const size_type unit = isLarge ? kLargePage : kLine;
    void* const memory = std::aligned_alloc(unit, RoundUp(size, unit));
    if (memory && isLarge) MakeLarge(memory, RoundUp(size, unit));
    return static_cast<char*>(memory);
  }
  static void free(char* memory) { std::free(memory); }

 private:
  // Memory that was used before has small pages, which must go first. A system without large pages
  // refuses, and small ones do as well.
  static void MakeLarge(void* memory, size_type size) {
    ::madvise(memory, size, MADV_DONTNEED);
    ::madvise(memory, size, MADV_HUGEPAGE);
  }
};

using Pool = boost::pool<LargePages>;

Pool& Memory() {
  constexpr std::size_t kFirstBlock = 32;
  // Fills four large pages, but for what the pool notes in each block.
  constexpr std::size_t kLargestBlock = (4 * kLargePage - kLine) / kSlot;
  // Never ended: an activity may outlive everything static.
  alignas(Pool) static std::byte place[sizeof(Pool)];
  static Pool& pool = *::new (place) Pool(kSlot, kFirstBlock, kLargestBlock);
  return pool;
}

std::size_t alive = 0;

}  // namespace

void* Activity::operator new(std::size_t) noexcept {
  void* const block = AllocationFails() ? nullptr : Memory().malloc();
  block ? static_cast<void>(++alive) : NoteFailedAllocation();
  return RecordObject(block);
}

void Activity::operator delete(void* iActivity) noexcept {
  if (!iActivity) return;
  Memory().free(ForgetObject(iActivity));
  if (--alive == 0) Memory().purge_memory();
}

#endif

}  // namespace embedded
