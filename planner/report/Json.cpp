#include "planner/report/Json.h"

#include <cstdlib>
#include <functional>
#include <utility>

namespace biwplan {

namespace {

// Enough for 65,536 values inside one. Pages that nobody needs are never touched.
constexpr std::size_t kReserve = std::size_t{1} << 20;
alignas(std::max_align_t) std::byte reserve[kReserve];
std::size_t used = 0;
int users = 0;

bool IsReserve(const void* memory) {
  const auto* const byte = static_cast<const std::byte*>(memory);
  return !std::less<>()(byte, reserve) && std::less<>()(byte, reserve + kReserve);
}

}  // namespace

void* AllocateForEndOfJson(std::size_t iBytes) {
  if (void* const memory = std::malloc(iBytes)) return memory;
  constexpr std::size_t kUnit = alignof(std::max_align_t);
  const std::size_t wanted = (iBytes + kUnit - 1) / kUnit * kUnit;
  if (wanted < iBytes || wanted > kReserve - used) throw std::bad_alloc();
  ++users;
  return reserve + std::exchange(used, used + wanted);
}

void FreeAfterEndOfJson(void* iMemory) noexcept {
  if (!IsReserve(iMemory)) return std::free(iMemory);
  if (--users == 0) used = 0;
}

}  // namespace biwplan
