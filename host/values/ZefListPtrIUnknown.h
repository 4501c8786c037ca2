#pragma once

#include <cstddef>
#include <vector>

class IUnknown;

// List of raw pointers, positions from 1. By convention it holds one reference per element, but no
// operation of the list takes or gives one back: whoever empties it releases the elements first.
class ZefListPtrIUnknown {
 public:
  int Size() const { return static_cast<int>(elements_.size()); }
  // Null past either end.
  IUnknown* operator[](int iPosition) const {
    if (iPosition < 1 || iPosition > Size()) return nullptr;
    return elements_[static_cast<std::size_t>(iPosition - 1)];
  }
  void Append(IUnknown* iElement) { elements_.push_back(iElement); }
  void RemoveAll() { elements_.clear(); }

 private:
  std::vector<IUnknown*> elements_;
};
