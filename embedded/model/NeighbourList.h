#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <utility>

namespace embedded {

class Activity;

// Pointers to activities, not counted, in an order of their own. Holds the first few in itself:
// walks over many activities then touch little memory of each.
class NeighbourList {
 public:
  using iterator = Activity**;
  using const_iterator = Activity* const*;
  using value_type = Activity*;

  NeighbourList() = default;
  NeighbourList(const NeighbourList&) = delete;
  NeighbourList& operator=(const NeighbourList&) = delete;

  iterator begin() { return data_; }
  iterator end() { return data_ + size_; }
  const_iterator begin() const { return data_; }
  const_iterator end() const { return data_ + size_; }
  auto rbegin() const { return std::make_reverse_iterator(end()); }
  auto rend() const { return std::make_reverse_iterator(begin()); }
  const_iterator data() const { return data_; }
  std::size_t size() const { return size_; }
  std::size_t capacity() const { return capacity_; }
  bool empty() const { return size_ == 0; }
  Activity* operator[](std::size_t iPosition) const { return data_[iPosition]; }
  Activity* front() const { return *data_; }

  // std::bad_alloc leaves the list as it was.
  void push_back(Activity* iActivity) {
    if (size_ == capacity_) reserve(std::size_t{capacity_} * 2);
    data_[size_++] = iActivity;
  }
  void reserve(std::size_t iCapacity) {
    if (iCapacity <= capacity_) return;
    auto larger = std::make_unique<Activity*[]>(iCapacity);
    std::copy(data_, data_ + size_, larger.get());
    outside_ = std::move(larger);
    data_ = outside_.get();
    capacity_ = static_cast<std::uint32_t>(iCapacity);
  }
  void erase(iterator iPlace) {
    std::copy(iPlace + 1, end(), iPlace);
    --size_;
  }
  void clear() { size_ = 0; }

 private:
  static constexpr std::uint32_t kInside = 3;

  Activity** data_ = inside_;
  std::uint32_t size_ = 0;
  std::uint32_t capacity_ = kInside;
  Activity* inside_[kInside] = {};
  std::unique_ptr<Activity*[]> outside_;
};

}  // namespace embedded
