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
static_assert(sizeof(Block) == kObjectRecord && alignof(Block) == kObjectRecord);

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

void* RecordObject(void* iBlock) noexcept {
  if (!iBlock) return nullptr;
  Block* const block = ::new (iBlock) Block{head.next, Hidden(&head)};
  Chain(block);
  ++live;
  return block + 1;
}

void* ForgetObject(void* iObject) noexcept {
  Block* const block = static_cast<Block*>(iObject) - 1;
  Unchain(block);
  --live;
  return block;
}

void* AllocateObject(std::size_t iSize) noexcept {
  return RecordObject(AllocateOrNull(sizeof(Block) + iSize));
}

void FreeObject(void* iObject) noexcept {
  if (iObject) std::free(ForgetObject(iObject));
}

long CountLiveObjects() { return live; }

std::vector<const std::type_info*> ClassesOfObjectsWithCodeIn(const void* iBegin,
                                                              const void* iEnd) {
  std::vector<const std::type_info*> classes;
  for (const Block* block = Shown(head.next); block; block = Shown(block->next)) {
    const void* const table = VirtualTable(block);
    if (std::less<>()(table, iBegin) || std::less_equal<>()(iEnd, table)) continue;
    // The class's type stands in front of the functions.
    classes.push_back(static_cast<const std::type_info* const*>(table)[-1]);
  }
  return classes;
}
