#pragma once

#include <cstdint>
#include <map>
#include <unordered_map>
#include <utility>

namespace embedded {

// Values by the address of what they belong to, kept in the order in which they were added.
template <class T>
class Attachments {
 public:
  T* Find(const void* iKey) {
    const auto place = places_.find(iKey);
    return place == places_.end() ? nullptr : &values_.at(place->second);
  }
  // The value of the key, made when there is none.
  T& operator[](const void* iKey) {
    const auto [place, isNew] = places_.try_emplace(iKey, next_);
    if (isNew) ++next_;
    return values_[place->second];
  }
  void Remove(const void* iKey) {
    const auto place = places_.extract(iKey);
    // The value goes last: what it releases may come back here.
    const auto value = place ? values_.extract(place.mapped()) : typename Values::node_type();
  }
  void Clear() {
    places_.clear();
    const Values released = std::exchange(values_, {});
  }

  int Size() const { return static_cast<int>(values_.size()); }
  using Values = std::map<std::uint64_t, T>;
  // Pairs whose second member is the value.
  const Values& InOrder() const { return values_; }

 private:
  std::unordered_map<const void*, std::uint64_t> places_;
  Values values_;
  std::uint64_t next_ = 0;
};

}  // namespace embedded
