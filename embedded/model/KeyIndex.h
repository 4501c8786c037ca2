#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace embedded {

// Finds objects by their keys, in one flat table: looking up costs little more than one access to
// memory. The keys are the objects' own and stay while the objects are entered.
template <class Object>
class KeyIndex {
 public:
  // Null when no object has the key.
  Object* Find(std::string_view iKey) const {
    return slots_.empty() ? nullptr : slots_[Locate(Hash(iKey), iKey)].object;
  }
  // The key must be new.
  void Add(const std::string& iKey, Object* iObject) {
    if (2 * (count_ + 1) > slots_.size()) Grow();
    const std::size_t hash = Hash(iKey);
    slots_[Locate(hash, iKey)] = {hash, &iKey, iObject};
    ++count_;
  }
  void Remove(std::string_view iKey) {
    if (!Find(iKey)) return;
    std::size_t gap = Locate(Hash(iKey), iKey);
    slots_[gap] = {};
    --count_;
    // What was displaced past the gap moves back into it.
    for (std::size_t at = Next(gap); slots_[at].object; at = Next(at)) {
      const std::size_t home = slots_[at].hash & Mask();
      if (((at - home) & Mask()) < ((at - gap) & Mask())) continue;
      std::swap(slots_[gap], slots_[at]);
      gap = at;
    }
  }

 private:
  struct Slot {
    std::size_t hash = 0;
    const std::string* key = nullptr;
    Object* object = nullptr;
  };
  static constexpr std::size_t kFewestSlots = 16;

  static std::size_t Hash(std::string_view key) { return std::hash<std::string_view>()(key); }
  std::size_t Mask() const { return slots_.size() - 1; }
  std::size_t Next(std::size_t at) const { return (at + 1) & Mask(); }

  // Where the key is or would be.
  std::size_t Locate(std::size_t hash, std::string_view key) const {
    std::size_t at = hash & Mask();
    while (slots_[at].object && (slots_[at].hash != hash || *slots_[at].key != key)) at = Next(at);
    return at;
  }
  void Grow() {
    const std::vector<Slot> former =
        std::exchange(slots_, std::vector<Slot>(std::max(kFewestSlots, 2 * slots_.size())));
    for (const Slot& slot : former) {
      if (slot.object) slots_[Locate(slot.hash, *slot.key)] = slot;
    }
  }

  std::vector<Slot> slots_;  // a power of two, at most half of them taken
  std::size_t count_ = 0;
};

}  // namespace embedded
