#include "host/component/LiveObjects.h"

#include <cstdint>
#include <cstdlib>
#include <functional>
#include <new>

#include "host/component/Allocation.h"

namespace {

// Stands in front of each object and chains the blocks. The addresses are kept inverted: a leak
// checker that followed the chain would take every lost object for a held one.
struct alignas(std::max_align_t) Block {
  std::uintptr_t next;
  std::uintptr_t previous;
};

std::uintptr_t Hidden(const Block* block) { return ~reinterpret_cast<std::uintptr_t>(block); }
Block* Shown(std::uintptr_t hidden) { return reinterpret_cast<Block*>(~hidden); }

constinit Block head{~std::uintptr_t{0}, ~std::uintptr_t{0}};
constinit long live = 0;

void Chain(Block* block) {
  if (Block* const next = Shown(head.next)) next->previous = Hidden(block);
  head.next = Hidden(block);
}

void Unchain(const Block* block) {
  Shown(block->previous)->next = block->next;
  if (Block* const next = Shown(block->next)) next->previous = block->previous;
}

// The first word of a polymorphic object.
const void* VirtualTable(const Block* block) {
  return *reinterpret_cast<const void* const*>(block + 1);
}

}  // namespace

void* AllocateObject(std::size_t iSize) noexcept {
  void* const memory = AllocateOrNull(sizeof(Block) + iSize);
  if (!memory) return nullptr;
  Block* const block = ::new (memory) Block{head.next, Hidden(&head)};
  Chain(block);
  ++live;
  return block + 1;
}

void FreeObject(void* iObject) noexcept {
  if (!iObject) return;
  Block* const block = static_cast<Block*>(iObject) - 1;
  Unchain(block);
  --live;
  std::free(block);
}

long CountLiveObjects() { return live; }

int CountObjectsWithCodeIn(const void* iBegin, const void* iEnd) {
  int count = 0;
  for (const Block* block = Shown(head.next); block; block = Shown(block->next)) {
    const void* const table = VirtualTable(block);
    count += std::less_equal<>()(iBegin, table) && std::less<>()(table, iEnd);
  }
  return count;
}
