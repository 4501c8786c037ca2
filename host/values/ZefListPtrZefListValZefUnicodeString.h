#pragma once

#include <cstddef>
#include <vector>

#include "host/values/ZefListValZefUnicodeString.h"

// List of lists of texts, positions from 1. It may hold nulls. Whoever receives the list deletes
// its elements; the list itself deletes none.
class ZefListPtrZefListValZefUnicodeString {
 public:
  int Size() const { return static_cast<int>(lists_.size()); }
  // Null past either end.
  ZefListValZefUnicodeString* operator[](int iPosition) const {
    if (iPosition < 1 || iPosition > Size()) return nullptr;
    return lists_[static_cast<std::size_t>(iPosition - 1)];
  }
  void Append(ZefListValZefUnicodeString* iList) { lists_.push_back(iList); }
  void RemoveAll() { lists_.clear(); }

 private:
  std::vector<ZefListValZefUnicodeString*> lists_;
};
