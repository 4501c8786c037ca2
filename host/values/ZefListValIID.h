#pragma once

#include <cstddef>
#include <vector>

#include "host/component/Identifier.h"

// List of interface identifiers, positions from 1. Reading past either end answers all zeros.
class ZefListValIID {
 public:
  int Size() const { return static_cast<int>(identifiers_.size()); }
  _GUID operator[](int iPosition) const {
    if (iPosition < 1 || iPosition > Size()) return {};
    return identifiers_[static_cast<std::size_t>(iPosition - 1)];
  }
  void Append(const _GUID& iIdentifier) { identifiers_.push_back(iIdentifier); }

 private:
  std::vector<_GUID> identifiers_;
};
