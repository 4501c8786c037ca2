#include "tests/memory/FailingMemory.h"

#include <cstdlib>
#include <new>

namespace tests {

namespace {

constinit long untilFailure = 0;
constinit bool failsAllAfter = false;
constinit bool hasStruck = false;
constinit long blocks = 0;

bool IsRefused() {
  if (untilFailure <= 0 || --untilFailure > 0) return false;
  hasStruck = true;
  if (failsAllAfter) untilFailure = 1;
  return true;
}

}  // namespace

FailingMemory::FailingMemory(long iNth, bool iAllAfter) {
  untilFailure = iNth;
  failsAllAfter = iAllAfter;
  hasStruck = false;
}

FailingMemory::~FailingMemory() { untilFailure = 0; }

bool FailingMemory::HasStruck() { return hasStruck; }
long FailingMemory::CountBlocks() { return blocks; }

void* Take(std::size_t size) {
  void* const block = IsRefused() ? nullptr : std::malloc(size);
  if (!block) throw std::bad_alloc();
  ++blocks;
  return block;
}

void GiveBack(void* block) noexcept {
  if (block) --blocks;
  std::free(block);
}

}  // namespace tests

// In place of the ones of the whole process, its libraries included.
void* operator new(std::size_t size) { return tests::Take(size); }
void* operator new[](std::size_t size) { return tests::Take(size); }
void operator delete(void* block) noexcept { tests::GiveBack(block); }
void operator delete[](void* block) noexcept { tests::GiveBack(block); }
void operator delete(void* block, std::size_t) noexcept { tests::GiveBack(block); }
void operator delete[](void* block, std::size_t) noexcept { tests::GiveBack(block); }
