#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace biwplan {

// What the values of an answer lie in.
template <class T>
struct JsonMemory {
  using value_type = T;

  JsonMemory() = default;
  template <class U>
  JsonMemory(const JsonMemory<U>&) noexcept {}
  T* allocate(std::size_t iCount) { return static_cast<T*>(::operator new(iCount * sizeof(T))); }
  void deallocate(T* iValues, std::size_t) noexcept { ::operator delete(iValues); }
  friend bool operator==(const JsonMemory&, const JsonMemory&) { return true; }
};

// Answers keep their fields in the order in which they were given.
using Json = nlohmann::basic_json<nlohmann::ordered_map, std::vector, std::string, bool,
                                  std::int64_t, std::uint64_t, double, JsonMemory>;

// A value that ends asks for memory to line up the values inside it, and there may be none left.
// Then this comes from a reserve, and beyond it is std::bad_alloc.
void* AllocateForEndOfJson(std::size_t iBytes);
void FreeAfterEndOfJson(void* iMemory) noexcept;

}  // namespace biwplan

// What the values inside one that ends are lined up in; values that live lie elsewhere.
template <>
struct std::allocator<biwplan::Json> {
  using value_type = biwplan::Json;

  allocator() = default;
  template <class U>
  allocator(const allocator<U>&) noexcept {}
  biwplan::Json* allocate(std::size_t iCount) {
    return static_cast<biwplan::Json*>(
        biwplan::AllocateForEndOfJson(iCount * sizeof(biwplan::Json)));
  }
  void deallocate(biwplan::Json* iValues, std::size_t) noexcept {
    biwplan::FreeAfterEndOfJson(iValues);
  }
  friend bool operator==(const allocator&, const allocator&) { return true; }
};
