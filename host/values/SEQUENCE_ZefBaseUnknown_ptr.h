#pragma once

#include <cstddef>
#include <vector>

#include "host/values/FetchAhead.h"

class ZefBaseUnknown;

// Sequence of raw pointers, indexed from 0. Whoever fills it hands over one reference per element;
// the receiver gives each back. The sequence itself takes and releases nothing. A slot may be set
// to null.
class _SEQUENCE_ZefBaseUnknown_ptr {
 public:
  ZefBaseUnknown*& operator[](int iIndex) {
    const auto index = static_cast<std::size_t>(iIndex);
    FetchAhead(elements_, index);
    return elements_[index];
  }
  ZefBaseUnknown* operator[](int iIndex) const {
    return elements_[static_cast<std::size_t>(iIndex)];
  }
  int length() const { return static_cast<int>(elements_.size()); }

  // Takes over the reference that comes with the element.
  void append(ZefBaseUnknown* iElement) { elements_.push_back(iElement); }

 private:
  std::vector<ZefBaseUnknown*> elements_;
};
